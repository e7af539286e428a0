#include "deploy/helper/about_window.h"

#include <windows.h>

#include "addin/text/format.h"
#include "deploy/helper/product.h"
#include "deploy/helper/resource_bytes.h"
#include "deploy/helper/resource_ids.h"

namespace vek::helper {
namespace {

constexpr int kIconSize = 32;  // pixels

// The windows' icon and the heading's font, kept as long as the window that shows them.
class Look {
 public:
  Look() {
    const auto picture = ResourceBytes(ID_PRODUCT_ICON);
    auto* bytes = reinterpret_cast<PBYTE>(const_cast<char*>(picture.data()));
    constexpr DWORD kIconFormat = 0x00030000;
    if (!picture.empty())
      icon_ = ::CreateIconFromResourceEx(bytes, static_cast<DWORD>(picture.size()), TRUE, kIconFormat,
                                         kIconSize, kIconSize, LR_DEFAULTCOLOR);
  }
  ~Look() {
    if (icon_) ::DestroyIcon(icon_);
    if (heading_) ::DeleteObject(heading_);
  }
  Look(const Look&) = delete;
  Look& operator=(const Look&) = delete;

  void GiveTo(HWND window) {
    const auto icon = reinterpret_cast<LPARAM>(icon_);
    ::SendMessageW(window, WM_SETICON, ICON_BIG, icon);
    ::SendMessageW(window, WM_SETICON, ICON_SMALL, icon);
    ::SendDlgItemMessageW(window, ID_ABOUT_ICON, STM_SETICON, static_cast<WPARAM>(icon), 0);
    LOGFONTW font{};
    const auto own = reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0));
    if (!own || !::GetObjectW(own, sizeof font, &font)) return;
    font.lfHeight = font.lfHeight * 3 / 2;
    font.lfWeight = FW_SEMIBOLD;
    heading_ = ::CreateFontIndirectW(&font);
    ::SendDlgItemMessageW(window, ID_ABOUT_NAME, WM_SETFONT, reinterpret_cast<WPARAM>(heading_), TRUE);
  }

 private:
  HICON icon_ = nullptr;
  HFONT heading_ = nullptr;
};

INT_PTR CALLBACK AboutProcedure(HWND window, UINT message, WPARAM parameter, LPARAM data) {
  switch (message) {
    case WM_INITDIALOG:
      reinterpret_cast<Look*>(data)->GiveTo(window);
      ::SetDlgItemTextW(window, ID_ABOUT_NAME, kProductName);
      ::SetDlgItemTextW(window, ID_ABOUT_VERSION,
                        Format(L"Version %s", VersionText(InstalledVersion())).c_str());
      ::SetDlgItemTextW(window, ID_ABOUT_LICENCE, LicenceText().c_str());
      // By itself the dialog would mark the licence's text.
      ::SetFocus(::GetDlgItem(window, IDOK));
      return FALSE;
    case WM_COMMAND:
      // Enter is the one, Escape and the window's cross are the other.
      if (LOWORD(parameter) != IDOK && LOWORD(parameter) != IDCANCEL) return FALSE;
      ::EndDialog(window, IDOK);
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace

ExitCode ShowAboutWindow() {
  Look look;
  const INT_PTR answer = ::DialogBoxParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_ABOUT_DIALOG),
                                           nullptr, AboutProcedure, reinterpret_cast<LPARAM>(&look));
  return answer == IDOK ? ExitCode::kDone : ExitCode::kFailed;
}

}  // namespace vek::helper
