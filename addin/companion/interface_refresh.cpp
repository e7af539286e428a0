#include "addin/companion/interface_refresh.h"

#include <ProMdl.h>
#include <ProTreetool.h>
#include <ProWindows.h>

#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek {
namespace {

constexpr int kNoWindow = -1;
constexpr int kCurrentWindow = -1;

void LogSuccess(ProError status, const wchar_t* line) {
  if (status == PRO_TK_NO_ERROR) LogShell(line);
}

void LogOutcome(ProError status, const wchar_t* success, const wchar_t* warning) {
  LogShell(status == PRO_TK_NO_ERROR ? success : warning);
}

}  // namespace

void RefreshInterface(ProMdl assembly) {
  LogShell(L"=== Starting comprehensive UI refresh ===");
  int window = kNoWindow;
  if (ProWindowCurrentGet(&window) != PRO_TK_NO_ERROR) window = kNoWindow;
  const bool has_window = window != kNoWindow;
  if (has_window) LogShell(Format(L"Current window ID: %d", window));
  LogOutcome(ProWindowRepaint(kCurrentWindow), L"SUCCESS: ProWindowRepaint - Model tree refreshed",
             L"WARNING: ProWindowRepaint failed, but component is replaced");
  if (has_window)
    LogSuccess(ProWindowRepaint(window), L"SUCCESS: ProWindowRepaint(currentWindow) - Model tree refreshed");
  LogOutcome(ProTreetoolRefresh(assembly), L"SUCCESS: ProTreetoolRefresh - Model tree refreshed",
             L"WARNING: ProTreetoolRefresh failed, but component is replaced");
  LogOutcome(ProMdlDisplay(assembly), L"SUCCESS: ProMdlDisplay - Assembly display refreshed",
             L"WARNING: ProMdlDisplay failed, but component is replaced");
  if (has_window) {
    LogSuccess(ProWindowActivate(window), L"SUCCESS: ProWindowActivate - Window brought to front");
    LogSuccess(ProWindowRepaint(window), L"SUCCESS: ProWindowRepaint - Additional window refresh");
  }
  LogSuccess(ProWindowRepaint(kCurrentWindow), L"SUCCESS: Final ProWindowRepaint - Complete refresh done");
  LogShell(L"SUCCESS: Component replaced with enhanced refresh - Should be immediately visible");
  LogShell(L"=== Comprehensive UI refresh completed ===");
}

}  // namespace vek
