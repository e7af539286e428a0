// Macros: lists of the console's commands, queued and carried out one after the other.
#include <ProMacro.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "bench/host/console/console.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/text.h"

namespace bench {
namespace {

std::vector<std::string> SplitCommands(const std::string& text) {
  std::vector<std::string> commands;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(';', begin), text.size());
    const std::string command = text.substr(begin, end - begin);
    if (command.find_first_not_of(" \t") != std::string::npos) commands.push_back(command);
    begin = end + 1;
  }
  return commands;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProMacroLoad(wchar_t* macro) {
  HOST_CALL(macro) {
    if (!macro || !*macro) return PRO_TK_BAD_INPUTS;
    const std::vector<std::string> commands = SplitCommands(ToUtf8(macro));
    for (const std::string& command : commands) {
      if (Console::IsForMacros(command)) continue;
      TheHost().announcements.Say("refused: a macro can't do \"" + command + "\"");
      return PRO_TK_BAD_INPUTS;
    }
    auto& queue = TheHost().macros;
    queue.insert(queue.end(), commands.begin(), commands.end());
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMacroExecute() {
  HOST_CALL() {
    // A macro that another one of its commands would start begins with an empty queue.
    const auto commands = std::exchange(TheHost().macros, {});
    bool failed = false;
    Console console([&](const std::string& line) {
      TheHost().announcements.Say("macro: " + line);
      failed = failed || line.starts_with("error: ");
    });
    for (const std::string& command : commands) {
      console.Run(command);
      if (failed) return PRO_TK_GENERAL_ERROR;
    }
    return PRO_TK_NO_ERROR;
  };
}
