#include "addin/platform/http_client.h"

#include <windows.h>

#include <winhttp.h>

#include <vector>

#include "addin/text/utf8.h"

namespace vek {
namespace {

class OwnedInternetHandle {
 public:
  OwnedInternetHandle() = default;
  ~OwnedInternetHandle() {
    if (handle_) ::WinHttpCloseHandle(handle_);
  }
  OwnedInternetHandle(const OwnedInternetHandle&) = delete;
  OwnedInternetHandle& operator=(const OwnedInternetHandle&) = delete;

  bool Hold(HINTERNET handle) {
    handle_ = handle;
    return handle_ != nullptr;
  }
  HINTERNET get() const { return handle_; }

 private:
  HINTERNET handle_ = nullptr;
};

void SetTimeouts(HINTERNET session, int milliseconds) {
  DWORD timeout = static_cast<DWORD>(milliseconds);
  for (const DWORD option :
       {WINHTTP_OPTION_CONNECT_TIMEOUT, WINHTTP_OPTION_RECEIVE_TIMEOUT, WINHTTP_OPTION_SEND_TIMEOUT})
    ::WinHttpSetOption(session, option, &timeout, sizeof timeout);
}

int StatusCode(HINTERNET request) {
  DWORD code = 0, size = sizeof code;
  if (!::WinHttpQueryHeaders(request, WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                             WINHTTP_HEADER_NAME_BY_INDEX, &code, &size, WINHTTP_NO_HEADER_INDEX))
    return 0;
  return static_cast<int>(code);
}

std::wstring ReadBody(HINTERNET request) {
  std::wstring body;
  for (DWORD available = 0; ::WinHttpQueryDataAvailable(request, &available) && available > 0;) {
    std::vector<char> part(available + 1);
    DWORD count = 0;
    if (!::WinHttpReadData(request, part.data(), available, &count)) break;
    body += DecodeUtf8({part.data(), count});
  }
  return body;
}

}  // namespace

HttpAnswer Post(const HttpPost& post) {
  // Closed in the reverse order: request, connection, session.
  OwnedInternetHandle session, connection, request;
  if (!session.Hold(::WinHttpOpen(post.agent.c_str(), WINHTTP_ACCESS_TYPE_DEFAULT_PROXY,
                                  WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, 0)))
    return {HttpPhase::kSession, 0, {}};
  SetTimeouts(session.get(), post.timeout_ms);
  if (!connection.Hold(
          ::WinHttpConnect(session.get(), post.host.c_str(), static_cast<INTERNET_PORT>(post.port), 0)))
    return {HttpPhase::kConnection, 0, {}};
  constexpr DWORD kPlain = 0;
  if (!request.Hold(::WinHttpOpenRequest(connection.get(), L"POST", post.path.c_str(), nullptr,
                                         WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES, kPlain)))
    return {HttpPhase::kRequest, 0, {}};
  constexpr DWORD kUpToItsEnd = static_cast<DWORD>(-1);
  if (!::WinHttpAddRequestHeaders(request.get(), post.header.c_str(), kUpToItsEnd,
                                  WINHTTP_ADDREQ_FLAG_ADD | WINHTTP_ADDREQ_FLAG_REPLACE))
    return {HttpPhase::kHeaders, 0, {}};
  const DWORD length = static_cast<DWORD>(post.body.size());
  if (!::WinHttpSendRequest(request.get(), WINHTTP_NO_ADDITIONAL_HEADERS, 0,
                            const_cast<char*>(post.body.data()), length, length, 0))
    return {HttpPhase::kSending, 0, {}};
  if (!::WinHttpReceiveResponse(request.get(), nullptr)) return {HttpPhase::kReceiving, 0, {}};
  const int status_code = StatusCode(request.get());
  return {HttpPhase::kAnswered, status_code, ReadBody(request.get())};
}

}  // namespace vek
