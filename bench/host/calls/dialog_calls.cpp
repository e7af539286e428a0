// Dialogs: those of the add-in's own, messages, and the choice of a file.
#include <ProUI.h>
#include <ProUtil.h>

#include <algorithm>
#include <string>

#include "bench/host/calls/array.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/text.h"

using namespace bench;

namespace {

std::string OnOneLine(std::wstring_view text) {
  std::string line;
  for (const char c : ToUtf8(text)) {
    if (c == '\r') continue;
    if (c == '\n')
      line += "\\n";
    else
      line += c;
  }
  return line;
}

}  // namespace

ProError ProUIDialogCreate(char* name, char* resource) {
  HOST_CALL(static_cast<const char*>(name), static_cast<const char*>(resource)) {
    if (!name || !*name) return PRO_TK_BAD_INPUTS;
    return TheHost().ui.OpenDialog(name) ? PRO_TK_NO_ERROR : PRO_TK_E_FOUND;
  };
}

ProError ProUIDialogDestroy(char* name) {
  HOST_CALL_THAT_NEVER_FAILS(static_cast<const char*>(name)) {
    if (!name || !*name) return PRO_TK_BAD_INPUTS;
    return TheHost().ui.CloseDialog(name) ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
  };
}

ProError ProUITimerCreate(ProUITimerAction action, ProAppData data, ProName name, ProUITimer* timer) {
  HOST_CALL(static_cast<const wchar_t*>(name)) {
    if (!action || !name || !*name || !timer) return PRO_TK_BAD_INPUTS;
    if (Bounded(name, PRO_NAME_SIZE).size() == PRO_NAME_SIZE) return PRO_TK_LINE_TOO_LONG;
    *timer = TheHost().ui.CreateTimer(action, data);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProUITimerDestroy(ProUITimer timer) {
  HOST_CALL_THAT_NEVER_FAILS(timer) {
    return TheHost().ui.DestroyTimer(timer) ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
  };
}

ProError ProUIDialogTimerStart(char* dialog, ProUITimer timer, long milliseconds, ProBoolean repeat) {
  // A scripted failure here would end the add-in's life without anyone seeing it.
  HOST_CALL_THAT_NEVER_FAILS(static_cast<const char*>(dialog), timer, static_cast<int>(milliseconds)) {
    if (!dialog || milliseconds < 0) return PRO_TK_BAD_INPUTS;
    UserInterface& ui = TheHost().ui;
    if (!ui.HasDialog(dialog)) return PRO_TK_E_NOT_FOUND;
    const bool started =
        ui.StartTimer(timer, dialog, std::chrono::milliseconds(milliseconds), repeat != PRO_B_FALSE);
    return started ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
  };
}

ProError ProUIDialogTimerStop(ProUITimer timer) {
  HOST_CALL_THAT_NEVER_FAILS(timer) {
    return TheHost().ui.StopTimer(timer) ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
  };
}

ProError ProUIMessageDialogDisplay(ProUIMessageType type, wchar_t* title, wchar_t* text,
                                   ProUIMessageButton* buttons, ProUIMessageButton default_button,
                                   ProUIMessageButton* answer) {
  HOST_CALL(static_cast<int>(type), static_cast<const wchar_t*>(title), static_cast<const wchar_t*>(text)) {
    if (!title || !text || !answer) return PRO_TK_BAD_INPUTS;
    const auto offered = ArrayObjects(buttons);
    if (!offered || std::ranges::find(*offered, default_button) == offered->end()) return PRO_TK_BAD_INPUTS;

    Host& host = TheHost();
    host.announcements.Say("message: " + OnOneLine(text));
    const auto scripted = host.ui.ShowMessage({title, text});
    *answer = default_button;
    return scripted && EqualsIgnoringCase(*scripted, L"cancel") ? PRO_TK_USER_ABORT : PRO_TK_NO_ERROR;
  };
}

ProError ProFileMdlnameOpen(wchar_t* title, wchar_t* filter, ProPath* shortcuts, ProName* shortcut_names,
                            ProPath directory, wchar_t* name, ProPath selected) {
  HOST_CALL(static_cast<const wchar_t*>(title), static_cast<const wchar_t*>(filter),
            static_cast<const wchar_t*>(directory), static_cast<const wchar_t*>(name)) {
    if (!title || !filter || !*filter || !selected) return PRO_TK_BAD_INPUTS;
    if (shortcuts || shortcut_names) return PRO_TK_NOT_IMPLEMENTED;
    Host& host = TheHost();
    host.announcements.Say("file dialog: " + OnOneLine(title) + ", " + OnOneLine(filter));
    std::wstring chosen = directory ? std::wstring(Bounded(directory, PRO_PATH_SIZE)) : WorkingDirectory();
    if (name) chosen += L'\\' + std::wstring(name);
    if (const auto answer = host.ui.TakeAnswer()) {
      if (EqualsIgnoringCase(*answer, L"cancel")) return PRO_TK_USER_ABORT;
      if (!EqualsIgnoringCase(*answer, L"ok")) chosen = *answer;
    }
    // The dialog lets nobody leave with a file that isn't there.
    if (!FileExists(chosen)) return PRO_TK_USER_ABORT;
    return CopyOut(chosen, *reinterpret_cast<ProPath*>(selected)) ? PRO_TK_NO_ERROR : PRO_TK_LINE_TOO_LONG;
  };
}
