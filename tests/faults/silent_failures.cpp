#include "tests/faults/silent_failures.h"

#include <algorithm>
#include <string_view>

namespace vek::support {

bool MayBeSilent(const Failure& failure) {
  constexpr std::string_view kSilent[] = {
      // A command, or an entry of a menu, that isn't there is told by not being there.
      "ProMenubarMenuAdd",
      "ProMenubarmenuPushbuttonAdd",
      "ProCmdActionAdd",
      "ProCmdIconSet",
      "ProCmdDesignate",
      "ProCmdCmdIdFind",
      "ProNotificationSet",
      "ProPopupmenuIdGet",
      "ProPopupmenuButtonAdd",
      // Without its timer the add-in serves no operation; each is told so when its wait is over.
      "ProUIDialogCreate",
      "ProUITimerCreate",
      // Pictures of the model that aren't brought up to date.
      "ProWindowCurrentGet",
      "ProWindowRepaint",
      "ProWindowActivate",
      "ProTreetoolRefresh",
      "ProMdlDisplay",
      // A component without a name is none that is searched for, and a buffer that can't be counted holds
      // nothing.
      "ProMdlMdlnameGet",
      "ProArraySizeGet",
      // The import goes on with a kind of file that isn't known.
      "ProIntfimportSourceTypeGet",
      // No update is installed, and no helper waited for.
      "GetModuleHandleExW",
      "GetModuleFileNameW",
      "CreateProcessW",
      "WaitForSingleObject",
      // The listener asks again, and reads again what it could not make out.
      "select",
      "accept",
      "setsockopt",
      "ioctlsocket",
      "MultiByteToWideChar",
      // The companion's status is what counts, not how long it was waited for nor what it adds.
      "WinHttpSetOption",
      "WinHttpQueryDataAvailable",
      "WinHttpReadData",
      // A program that can't be seen to run counts as one that doesn't.
      "CreateToolhelp32Snapshot",
      "Process32FirstW",
      "Process32NextW",
      // A line of the log is tried again, and lost in silence in the end.
      "CreateFileW",
      "FlushFileBuffers",
  };
  return std::ranges::find(kSilent, failure.call) != std::end(kSilent);
}

}  // namespace vek::support
