#include "addin/server/http_message.h"

#include <cstdint>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr std::wstring_view kBlankLine = L"\r\n\r\n";
constexpr std::size_t kNone = std::wstring_view::npos;

// The two forms of the header's name that clients send. Others count as no length at all.
constexpr std::wstring_view kContentLength = L"Content-Length:";
constexpr std::wstring_view kContentLengthLowered = L"content-length:";

std::int32_t ContentLength(std::wstring_view text) {
  std::size_t name = text.find(kContentLength);
  if (name == kNone) name = text.find(kContentLengthLowered);
  if (name == kNone) return 0;
  const std::wstring_view rest = text.substr(name + kContentLength.size());
  return ReadLeadingInteger(Trim(rest.substr(0, rest.find(kLineEnd))));
}

}  // namespace

bool IsCompleteRequest(std::wstring_view text) {
  const std::size_t blank_line = text.find(kBlankLine);
  if (blank_line == kNone) return false;
  const std::int32_t content_length = ContentLength(text);
  return content_length < 1 ||
         text.size() - blank_line - kBlankLine.size() >= static_cast<std::size_t>(content_length);
}

bool ParseRequest(std::wstring_view text, HttpServerRequest& request) {
  std::size_t line_end = text.find(kLineEnd);
  if (line_end == kNone) line_end = text.find(L'\n');
  if (line_end == kNone) return false;

  const std::wstring_view line = text.substr(0, line_end);
  const std::size_t first = line.find(L' ');
  if (first == kNone) return false;
  const std::size_t second = line.find(L' ', first + 1);
  if (second == kNone) return false;
  request.method = line.substr(0, first);
  request.path = line.substr(first + 1, second - first - 1);

  const std::size_t blank_line = text.find(kBlankLine);
  if (blank_line != kNone) request.body = text.substr(blank_line + kBlankLine.size());
  return true;
}

std::wstring NormalisePath(std::wstring_view path) {
  path = Trim(path);
  path = path.substr(0, path.find(L'?'));
  while (path.size() > 1 && path.back() == L'/') path.remove_suffix(1);
  return path.empty() ? L"/" : std::wstring(path);
}

const wchar_t* ReasonPhrase(int status_code) {
  switch (status_code) {
    case 200:
      return L"OK";
    case 204:
      return L"No Content";
    case 400:
      return L"Bad Request";
    case 404:
      return L"Not Found";
    case 500:
      return L"Internal Server Error";
    case 503:
      return L"Service Unavailable";
    case 504:
      return L"Gateway Timeout";
    default:
      return L"Unknown";
  }
}

std::wstring ComposeResponse(const HttpServerResponse& response) {
  std::wstring text = Format(L"HTTP/1.1 %d %s\r\n", response.statusCode, ReasonPhrase(response.statusCode));
  text.append(L"Content-Type: ").append(response.contentType).append(kLineEnd);
  text.append(L"Access-Control-Allow-Origin: *\r\n");
  text.append(L"Access-Control-Allow-Methods: GET, POST, OPTIONS\r\n");
  text.append(L"Access-Control-Allow-Headers: Content-Type\r\n");
  text.append(L"Content-Length: ").append(Format(L"%u", Utf8Length(response.body))).append(kLineEnd);
  text.append(L"Connection: close\r\n");
  return text.append(kLineEnd).append(response.body);
}

}  // namespace vek
