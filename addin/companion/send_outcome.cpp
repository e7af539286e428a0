#include "addin/companion/send_outcome.h"

#include "addin/companion/companion_app.h"
#include "addin/host/show_message.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek {

VekWebClient::SuccessCallback LogSuccess(const wchar_t* line) {
  return [line](const HttpResponse& response) {
    LogShell(line);
    LogShell(Format(L"Response: %s", response.body));
  };
}

VekWebClient::ErrorCallback LogError(const wchar_t* head) {
  return [head](const std::wstring& error) { LogShell(head + error); };
}

void TurnOnCompanion() {
  LaunchCompanion();
  ShowMessage(L"Turning on the Vek app, try again after Vek is running");
}

}  // namespace vek
