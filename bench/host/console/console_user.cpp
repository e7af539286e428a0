// The console's commands that do what a user does: selecting, picking, answering, choosing from menus.
#include <numeric>
#include <utility>

#include "bench/host/console/console.h"
#include "bench/host/host.h"
#include "bench/host/text.h"

namespace bench {
namespace {

Picked RequirePick(const std::string& text) {
  if (auto picked = ReadPick(text)) return *picked;
  throw ConsoleError("the current model has no face or component " + text);
}

void Select(ConsoleWords arguments, const ConsoleSay&) {
  std::vector<Picked> items;
  if (arguments.size() > 1 || arguments[0] != "none")
    for (const std::string& text : arguments) items.push_back(RequirePick(text));
  TheHost().picks.Select(std::move(items));
}

void Pick(ConsoleWords arguments, const ConsoleSay&) {
  if (arguments[0] == "none") return TheHost().picks.PickNext(std::nullopt);
  TheHost().picks.PickNext(RequirePick(arguments[0]));
}

void Answer(ConsoleWords arguments, const ConsoleSay&) {
  std::string text;
  for (const std::string& word : arguments) text += (text.empty() ? "" : " ") + word;
  TheHost().ui.AnswerNext(FromUtf8(text));
}

std::string Show(const std::wstring& label, const std::wstring& help, uiCmdCmdId id) {
  const Menus::Command* command = TheHost().menus.Find(id);
  std::string line = ToUtf8(label) + " (" + ToUtf8(help) + ")";
  if (command) line += ": " + command->name;
  if (command && !command->icon.empty()) line += ", " + command->icon;
  return line;
}

void ShowMenus(ConsoleWords, const ConsoleSay& say) {
  for (const Menus::Menu& menu : TheHost().menus.All()) {
    say("menu " + menu.name + ": " + ToUtf8(menu.label));
    for (const Menus::Button& button : menu.buttons)
      say("  " + Show(button.label, button.help, button.command));
  }
}

void RunCommand(ConsoleWords arguments, const ConsoleSay&) {
  if (!TheHost().menus.Run(arguments[0]))
    throw ConsoleError("there is no command " + arguments[0] + " that is to be had now");
}

void ShowPopup(ConsoleWords arguments, const ConsoleSay& say) {
  for (const Menus::PopupEntry& entry : TheHost().menus.BuildPopup(FromUtf8(arguments[0])))
    say(Show(entry.label, entry.help, entry.command));
}

constexpr std::size_t kAnyNumber = 1'000;

constexpr ConsoleCommand kUserCommands[] = {
    {"select ID…|none",
     "fills or empties the selection buffer; COMP/ID is a face of a component, COMP the component", Select, 1,
     kAnyNumber},
    {"pick ID|none", "what the next interactive selection gives; none cancels it", Pick, 1, 1},
    {"answer TEXT", "what the next dialog answers: ok, cancel, or a path", Answer, 1, kAnyNumber},
    {"menus", "the menus with their buttons", ShowMenus},
    {"command NAME", "runs a command", RunCommand, 1, 1},
    {"popup MENU", "builds a popup menu and shows its entries", ShowPopup, 1, 1},
};

}  // namespace

std::span<const ConsoleCommand> UserCommands() {
  return kUserCommands;
}

}  // namespace bench
