#include "addin/shell/commands.h"

#include <ProMenuBar.h>
#include <ProNotify.h>
#include <ProPopupmenu.h>

#include <string>

#include "addin/companion/companion_app.h"
#include "addin/companion/find_component.h"
#include "addin/companion/replacement_commands.h"
#include "addin/host/show_message.h"
#include "addin/host/text_buffer.h"
#include "addin/platform/log.h"
#include "addin/shell/helper_process.h"
#include "addin/shell/host_guard.h"
#include "addin/text/format.h"

namespace vek {
namespace {

constexpr int kPriority = 2;
constexpr int kAvailable = 3;
constexpr int kPopupMenuBuilt = 72;

// The toolkit takes its texts writable.
char menuName[] = "VekCreoAddin";
char treeMenuName[] = "ActionMenu";
char neighbourName[] = "Help";
wchar_t messageFile[] = L"VekCreoAddin.txt";

void OpenVekApp() {
  if (IsCompanionRunning())
    ShowMessage(L"Vek app is already running.");
  else
    LaunchCompanion();
}

void AboutVek() {
  if (!RunHelper(L"--about", true)) ShowMessage(L"Could not open About dialog.");
}

// The function that the host calls for a command.
template <void (*Command)()>
int Act(uiCmdCmdId, void*, void*) {
  KeepFromHost(L"running a command", Command);
  return 0;
}

struct Action {
  const char* name;
  const char* label;
  const char* icon;
  const char* tree_button;  // the entry in the menu of the tree; null for none
  uiCmdCmdActFn act;
  const wchar_t* popup_label;  // null for an action that stands in no popup menu
  const wchar_t* popup_help;
  uiCmdCmdId id = 0;
};

Action actions[] = {
    {"OpenVekApp_Act", "OpenVekMenuItem", "vekApp.png", nullptr, Act<OpenVekApp>, nullptr, nullptr},
    {"FindVekComponent_Act", "FindComponentMenuItem", "findComponent.png", nullptr, Act<CommandFindComponent>,
     L"Find Component", L"Find Component in Assembly"},
    {"ReplaceVekPart_Act", "ReplaceVekPartMenuItem", "partReplacer.png", "ReplaceVekPartMenuItemTreeView",
     Act<CommandReplacePart>, L"Replace Part", L"Replace Part"},
    {"InspectAssembly_Act", "InspectAssemblyMenuItem", "assemblyInspector.png",
     "InspectAssemblyMenuItemTreeView", Act<CommandInspectAssembly>, L"Inspect Assembly",
     L"Inspect Assembly"},
    {"AboutVek_Act", "AboutVekMenuItem", "about.png", nullptr, Act<AboutVek>, nullptr, nullptr},
};

uiCmdAccessState AlwaysAvailable(uiCmdAccessMode) {
  return static_cast<uiCmdAccessState>(kAvailable);
}

void AddToMenu(char* menu, const char* button, const Action& action) {
  std::string name = button, label = action.label, help = label + "tips";
  ProMenubarmenuPushbuttonAdd(menu, name.data(), label.data(), help.data(), nullptr, PRO_B_TRUE, action.id,
                              messageFile);
}

void RegisterAction(Action& action) {
  std::string name = action.name, label = action.label, help = label + "tips", icon = action.icon;
  ProCmdActionAdd(name.data(), action.act, static_cast<uiCmdPriority>(kPriority), AlwaysAvailable, PRO_B_TRUE,
                  PRO_B_TRUE, &action.id);
  AddToMenu(menuName, action.label, action);
  if (action.tree_button) AddToMenu(treeMenuName, action.tree_button, action);
  ProCmdIconSet(action.id, icon.data());
  ProCmdDesignate(action.id, label.data(), label.data(), help.data(), messageFile);
}

bool FindCommand(const char* name, uiCmdCmdId& id) {
  std::string writable = name;
  return ProCmdCmdIdFind(writable.data(), &id) == PRO_TK_NO_ERROR;
}

// What the popup menus will look for must be there.
void CheckCommands() {
  for (const Action& action : actions) {
    uiCmdCmdId id = 0;
    if (!action.popup_label || FindCommand(action.name, id)) continue;
    LogShell(Format(L"ERROR: Failed to find %S command", action.name));
    LogShell(L"WARNING: Failed to create Find Component toolbar button");
    return;
  }
}

void AddPopupEntries(ProName menu) {
  ProPopupMenuId popup = 0;
  if (ProPopupmenuIdGet(menu, &popup) != PRO_TK_NO_ERROR) return;
  constexpr int kAtTheEnd = -1;
  for (const Action& action : actions) {
    uiCmdCmdId id = 0;
    if (!action.popup_label || !FindCommand(action.name, id)) continue;
    ProName button;
    CopyCut(button, std::wstring(action.name, action.name + std::char_traits<char>::length(action.name)));
    std::wstring label = action.popup_label, help = action.popup_help;
    ProPopupmenuButtonAdd(popup, kAtTheEnd, button, label.data(), help.data(), id, AlwaysAvailable, nullptr);
  }
}

ProError PopupMenuNotify(ProName menu) {
  KeepFromHost(L"building a popup menu", [menu] { AddPopupEntries(menu); });
  return PRO_TK_NO_ERROR;
}

}  // namespace

void RegisterCommands() {
  ProMenubarMenuAdd(menuName, menuName, neighbourName, PRO_B_TRUE, messageFile);
  for (Action& action : actions) RegisterAction(action);
  CheckCommands();
  // By way of the one function type that may be cast to any other: the host casts it back by the kind of
  // notification.
  ProNotificationSet(static_cast<ProNotifyType>(kPopupMenuBuilt),
                     reinterpret_cast<ProFunction>(reinterpret_cast<void (*)()>(&PopupMenuNotify)));
}

void UnregisterPopupMenus() {
  ProNotificationUnset(static_cast<ProNotifyType>(kPopupMenuBuilt));
}

}  // namespace vek
