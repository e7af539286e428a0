// The input is what one connection has sent.
#include "addin/server/http_message.h"
#include "addin/text/utf8.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring text = vek::fuzz::Widened(vek::fuzz::Bytes(data, size));
  vek::IsCompleteRequest(text);
  vek::HttpServerRequest request;
  if (!vek::ParseRequest(text, request)) return 0;
  Require(request.method.find(L' ') == std::wstring::npos);
  Require(request.path.find(L' ') == std::wstring::npos);

  const std::wstring path = vek::NormalisePath(request.path);
  Require(!path.empty() && path.find(L'?') == std::wstring::npos);
  Require(path == L"/" || path.back() != L'/');

  vek::HttpServerResponse response;
  response.body = request.body;
  const std::string bytes = vek::EncodeUtf8(vek::ComposeResponse(response));
  const std::size_t body = bytes.find("\r\n\r\n") + 4;
  const std::string length = "Content-Length: " + std::to_string(bytes.size() - body) + "\r\n";
  Require(bytes.find(length) < body);
  return 0;
}
