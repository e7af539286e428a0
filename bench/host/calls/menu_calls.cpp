// Commands, menus, popup menus, and the notification that one is being built.
#include <ProMenuBar.h>
#include <ProNotify.h>
#include <ProPopupmenu.h>

#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/storage/message_file.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kPopupMenuBuilt = 72;

bool IsText(const char* text) {
  return text && *text;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProCmdActionAdd(char* name, uiCmdCmdActFn action, uiCmdPriority priority, uiCmdAccessFn access,
                         ProBoolean, ProBoolean, uiCmdCmdId* command) {
  HOST_CALL(static_cast<const char*>(name), static_cast<int>(priority)) {
    if (!IsText(name) || !action || !command) return PRO_TK_BAD_INPUTS;
    *command = TheHost().menus.Add(name, action, access).id;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProCmdCmdIdFind(char* name, uiCmdCmdId* command) {
  HOST_CALL(static_cast<const char*>(name)) {
    if (!IsText(name) || !command) return PRO_TK_BAD_INPUTS;
    const Menus::Command* found = TheHost().menus.Find(name);
    if (!found) return PRO_TK_E_NOT_FOUND;
    *command = found->id;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProCmdIconSet(uiCmdCmdId command, char* icon) {
  HOST_CALL(command, static_cast<const char*>(icon)) {
    if (!IsText(icon)) return PRO_TK_BAD_INPUTS;
    Menus::Command* found = TheHost().menus.Find(command);
    if (!found) return PRO_TK_E_NOT_FOUND;
    found->icon = icon;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProCmdDesignate(uiCmdCmdId command, char* label, char* one_line_help, char*, wchar_t* message_file) {
  HOST_CALL(command, static_cast<const char*>(label), static_cast<const char*>(one_line_help)) {
    if (!IsText(label) || !message_file) return PRO_TK_BAD_INPUTS;
    Menus::Command* found = TheHost().menus.Find(command);
    if (!found) return PRO_TK_E_NOT_FOUND;
    found->designated = true;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMenubarMenuAdd(char* menu, char* label, char* neighbour, ProBoolean behind,
                           wchar_t* message_file) {
  HOST_CALL(static_cast<const char*>(menu), static_cast<const char*>(label),
            static_cast<const char*>(neighbour), behind) {
    if (!IsText(menu) || !IsText(label) || !IsText(neighbour) || !message_file) return PRO_TK_BAD_INPUTS;
    Menus& menus = TheHost().menus;
    if (menus.FindMenu(menu)) return PRO_TK_E_FOUND;
    return menus.AddMenu({menu, MessageText(message_file, label), {}}, neighbour, behind != PRO_B_FALSE)
               ? PRO_TK_NO_ERROR
               : PRO_TK_E_NOT_FOUND;
  };
}

ProError ProMenubarmenuPushbuttonAdd(char* menu, char* button, char* label, char* one_line_help,
                                     char* neighbour, ProBoolean, uiCmdCmdId command, wchar_t* message_file) {
  HOST_CALL(static_cast<const char*>(menu), static_cast<const char*>(button), static_cast<const char*>(label),
            command) {
    if (!IsText(menu) || !IsText(button) || !IsText(label) || !IsText(one_line_help) || !message_file)
      return PRO_TK_BAD_INPUTS;
    // A place of its own among the buttons is offered by nobody here.
    if (neighbour) return PRO_TK_NOT_IMPLEMENTED;
    Menus& menus = TheHost().menus;
    Menus::Menu* found = menus.FindMenu(menu);
    if (!found || !menus.Find(command)) return PRO_TK_E_NOT_FOUND;
    for (const Menus::Button& each : found->buttons)
      if (each.name == button) return PRO_TK_E_FOUND;
    found->buttons.push_back(
        {button, MessageText(message_file, label), MessageText(message_file, one_line_help), command});
    return PRO_TK_NO_ERROR;
  };
}

ProError ProNotificationSet(ProNotifyType type, ProFunction action) {
  HOST_CALL(static_cast<int>(type)) {
    if (!action) return PRO_TK_BAD_INPUTS;
    if (static_cast<int>(type) != kPopupMenuBuilt) return PRO_TK_NOT_IMPLEMENTED;
    // By way of the one function type that may be cast to any other.
    TheHost().menus.Notify(
        reinterpret_cast<ProPopupmenuCreatePostAction>(reinterpret_cast<void (*)()>(action)));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProNotificationUnset(ProNotifyType type) {
  HOST_CALL_THAT_NEVER_FAILS(static_cast<int>(type)) {
    Menus& menus = TheHost().menus;
    if (static_cast<int>(type) != kPopupMenuBuilt || !menus.IsNotified()) return PRO_TK_E_NOT_FOUND;
    menus.Notify(nullptr);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProPopupmenuIdGet(ProName menu, ProPopupMenuId* id) {
  HOST_CALL(static_cast<const wchar_t*>(menu)) {
    if (!menu || !id) return PRO_TK_BAD_INPUTS;
    const auto popup = TheHost().menus.PopupBeingBuilt(std::wstring(Bounded(menu, PRO_NAME_SIZE)));
    if (!popup) return PRO_TK_E_NOT_FOUND;
    *id = *popup;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProPopupmenuButtonAdd(ProPopupMenuId menu, int position, ProName button, wchar_t* label,
                               wchar_t* help, uiCmdCmdId command, uiCmdAccessFn access, ProAppData) {
  HOST_CALL(menu, position, static_cast<const wchar_t*>(button), static_cast<const wchar_t*>(label),
            command) {
    Menus& menus = TheHost().menus;
    std::vector<Menus::PopupEntry>* entries = menus.EntriesOf(menu);
    if (!button || !*button || !label || !*label || !help) return PRO_TK_BAD_INPUTS;
    if (!entries || !menus.Find(command)) return PRO_TK_E_NOT_FOUND;
    const int count = static_cast<int>(entries->size());
    if (position < -1 || position > count) return PRO_TK_BAD_INPUTS;
    entries->insert(entries->begin() + (position == -1 ? count : position),
                    {std::wstring(Bounded(button, PRO_NAME_SIZE)), label, help, command, access});
    return PRO_TK_NO_ERROR;
  };
}
