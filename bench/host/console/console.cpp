#include "bench/host/console/console.h"

#include <windows.h>

#include <algorithm>
#include <charconv>
#include <exception>
#include <sstream>

#include "bench/host/host.h"

namespace bench {
namespace {

constexpr std::size_t kJournalLines = 20;
constexpr std::size_t kPathWords = 64;  // of a path with blanks

int ReadInteger(const std::string& text, const char* what) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc{} || stop != end) throw ConsoleError(std::string(what) + " is no number: " + text);
  return number;
}

int ReadCount(const std::string& text, const char* what) {
  const int number = ReadInteger(text, what);
  if (number < 1) throw ConsoleError(std::string(what) + " must be 1 or more: " + text);
  return number;
}

// A misspelt call would never be met, and its script wait for good.
void RequireCall(const std::string& name) {
  HMODULE module = nullptr;
  constexpr DWORD kByAddress =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  GetModuleHandleExW(kByAddress, reinterpret_cast<const wchar_t*>(&TheHost), &module);
  if (!name.starts_with("Pro") || !GetProcAddress(module, name.c_str()))
    throw ConsoleError("there is no call " + name);
}

// Calls that repeat, as those of an idle timer do, take one line together.
void ShowJournal(ConsoleWords arguments, const ConsoleSay& say) {
  const std::size_t wanted =
      arguments.empty() ? kJournalLines : static_cast<std::size_t>(ReadCount(arguments[0], "N"));
  for (const auto& [entry, times] : TheHost().journal.LastRuns(wanted))
    say(std::to_string(entry.number) + " " + entry.name + "(" + entry.arguments +
        ") = " + std::to_string(entry.status) + (times > 1 ? ", " + std::to_string(times) + " times" : ""));
}

void ScriptFault(ConsoleWords arguments, const ConsoleSay&) {
  const std::string& call = arguments[0];
  RequireCall(call);
  int first = 1;
  int last = 1;
  if (arguments.size() > 2) {
    const std::string& range = arguments[2];
    const auto dash = range.find('-');
    first = last = ReadCount(range.substr(0, dash), "NTH");
    if (dash != std::string::npos) last = ReadCount(range.substr(dash + 1), "MTH");
    if (last < first) throw ConsoleError("MTH comes before NTH: " + range);
  }
  if (arguments[1] == "noeffect") return TheHost().faults.NoEffect(call, first, last);
  const int status = ReadInteger(arguments[1], "STATUS");
  if (status == 0) throw ConsoleError("the status of success is asked for with noeffect");
  TheHost().faults.Fail(call, status, first, last);
}

void ScriptDelay(ConsoleWords arguments, const ConsoleSay&) {
  RequireCall(arguments[0]);
  TheHost().faults.Delay(arguments[0], ReadCount(arguments[1], "MS"));
}

void ShowLedger(ConsoleWords, const ConsoleSay& say) {
  for (const auto& [kind, count] : TheHost().ledger.OutstandingWithSections())
    say("outstanding: " + std::to_string(count) + " " + Name(kind));
  for (const std::string& violation : TheHost().ledger.Violations()) say("violation: " + violation);
}

void RestartAddin(ConsoleWords, const ConsoleSay&) {
  if (!TheHost().restart_addin) throw ConsoleError("no add-in is loaded");
  TheHost().restart_addin();
}

void ShowHelp(ConsoleWords arguments, const ConsoleSay& say);
void End(ConsoleWords, const ConsoleSay&) {}

constexpr ConsoleCommand kCommands[] = {
    {"help", "lists these", ShowHelp},
    {"journal [N]", "the last N toolkit calls (20 if not told)", ShowJournal, 0, 1},
    {"fault CALL STATUS|noeffect [NTH[-MTH]]",
     "the NTH next call of that name (the first, if not told), or all up to the MTH, fails or does nothing",
     ScriptFault, 2, 3},
    {"delay CALL MS", "the next call of that name takes that much longer", ScriptDelay, 2, 2},
    {"ledger", "what is outstanding, by kind, and every violation since the start", ShowLedger},
    {"resources", "the process's handles, threads and memory, and what of it is allocated", ShowResources},
    {"plot FILE.svg", "draws the current sheet of the active drawing", PlotCurrentDrawing, 1, kPathWords},
    {"pause", "holds back the timers, as a modal state does",
     [](ConsoleWords, const ConsoleSay&) { TheHost().ui.Pause(); }},
    {"resume", "lets the timers go", [](ConsoleWords, const ConsoleSay&) { TheHost().ui.Resume(); }},
    {"restart", "stops the add-in and starts it again in the same process", RestartAddin},
    {"quit", "stops the add-in and the host; end of input means the same", End},
};

std::string NameOf(const ConsoleCommand& command) {
  const std::string usage = command.usage;
  return usage.substr(0, usage.find(' '));
}

void ShowHelp(ConsoleWords, const ConsoleSay& say) {
  const auto show = [&say](const ConsoleCommand& command) {
    say(std::string(command.usage) + ": " + command.does);
  };
  for (const ConsoleCommand& command : ModelCommands()) show(command);
  for (const ConsoleCommand& command : UserCommands()) show(command);
  for (const ConsoleCommand& command : kCommands) show(command);
}

const ConsoleCommand& FindCommand(const std::string& name) {
  for (const std::span<const ConsoleCommand> commands :
       {std::span<const ConsoleCommand>(kCommands), ModelCommands(), UserCommands()})
    for (const ConsoleCommand& command : commands)
      if (NameOf(command) == name) return command;
  throw ConsoleError("there is no command " + name + "; help lists them");
}

std::vector<std::string> WordsOf(const std::string& line) {
  std::vector<std::string> words;
  std::istringstream stream(line);
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

}  // namespace

bool Console::IsForMacros(const std::string& line) {
  const std::vector<std::string> words = WordsOf(line);
  return !words.empty() && std::ranges::any_of(ModelCommands(), [&](const ConsoleCommand& command) {
    return NameOf(command) == words[0] && words.size() > command.least && words.size() <= command.most + 1;
  });
}

bool Console::Run(const std::string& line) {
  const std::vector<std::string> words = WordsOf(line);
  try {
    if (!words.empty()) {
      const ConsoleCommand& command = FindCommand(words[0]);
      const ConsoleWords arguments = ConsoleWords(words).subspan(1);
      if (arguments.size() < command.least || arguments.size() > command.most)
        throw ConsoleError(std::string("usage: ") + command.usage);
      command.run(arguments, say_);
    }
    say_("ok");
    return words.empty() || words[0] != "quit";
  } catch (const std::exception& failure) {
    say_(std::string("error: ") + failure.what());
    return true;
  }
}

}  // namespace bench
