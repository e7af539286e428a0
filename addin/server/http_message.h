// HTTP messages as text: what a request is cut into, and what a response is put together from.
//
// A request is read leniently: one request line, of the headers the content length alone, and a body that is
// whatever stands behind the blank line.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace vek {

struct HttpServerRequest {
  std::wstring method;
  std::wstring path;  // as on the request line
  std::wstring body;
  // Left empty: the content length is the one header that counts, and it is looked up in the raw text.
  std::map<std::wstring, std::wstring> headers;
};

struct HttpServerResponse {
  int statusCode = 200;
  std::wstring body;
  std::wstring contentType = L"text/html";
};

// Whether `text`, what has arrived so far, holds the whole request. The announced length counts bytes and is
// held against characters, so a body with characters of several bytes is never complete: its end is the
// client's silence.
bool IsCompleteRequest(std::wstring_view text);

// Cuts `text` into a request; false when it has no line or its first line has fewer than two blanks.
bool ParseRequest(std::wstring_view text, HttpServerRequest& request);

// The path as the routes compare it: without blanks at its ends, query and closing slashes; never empty.
std::wstring NormalisePath(std::wstring_view path);

// The words that go with a status code.
const wchar_t* ReasonPhrase(int status_code);

// The whole response: status line, headers and body.
std::wstring ComposeResponse(const HttpServerResponse& response);

}  // namespace vek
