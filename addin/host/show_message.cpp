#include "addin/host/show_message.h"

#include <ProUI.h>

#include <string>

#include "addin/host/owned.h"

namespace vek {

void ShowMessage(std::wstring_view text) {
  constexpr int kOkButton = 6;
  constexpr int kInformation = 2;
  OwnedArray<int> buttons;
  if (buttons.Allocate(1) != PRO_TK_NO_ERROR || !buttons) return;
  buttons[0] = kOkButton;
  std::wstring title = L"Information";
  std::wstring message(text);
  ProUIMessageButton answer = static_cast<ProUIMessageButton>(kOkButton);
  ProUIMessageDialogDisplay(static_cast<ProUIMessageType>(kInformation), title.data(), message.data(),
                            buttons.As<ProUIMessageButton>(), static_cast<ProUIMessageButton>(kOkButton),
                            &answer);
}

}  // namespace vek
