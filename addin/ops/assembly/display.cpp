#include "addin/ops/assembly/display.h"

#include <ProSolid.h>
#include <ProTreetool.h>
#include <ProWindows.h>

namespace vek::assembly {
namespace {

constexpr int kRegenerateFlags = 16;
// The window that the host takes for its current one.
constexpr int kCurrentWindow = -1;

void ShowWindow() {
  int window = kCurrentWindow;
  if (ProWindowCurrentGet(&window) != PRO_TK_NO_ERROR) {
    ProWindowRepaint(kCurrentWindow);
    return;
  }
  ProWindowRefresh(window);
  ProWindowRepaint(window);
}

}  // namespace

void ShowAssembly(ProMdl assembly) {
  if (assembly != nullptr) {
    ProTreetoolRefresh(assembly);
    ProMdlDisplay(assembly);
  }
  ShowWindow();
}

void RefreshAssemblyDisplay(ProMdl assembly) {
  if (assembly != nullptr) ProSolidRegenerate(static_cast<ProSolid>(assembly), kRegenerateFlags);
  ShowAssembly(assembly);
}

}  // namespace vek::assembly
