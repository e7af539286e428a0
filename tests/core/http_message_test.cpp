#include "addin/server/http_message.h"

#include <gtest/gtest.h>

namespace vek {
namespace {

TEST(HttpMessage, KnowsWhenARequestIsWhole) {
  const std::pair<const wchar_t*, bool> cases[] = {
      {L"", false},
      {L"GET / HTTP/1.1\r\n", false},
      {L"GET / HTTP/1.1\r\n\r\n", true},
      {L"POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nab", false},
      {L"POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nabc", true},
      {L"POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nabcd", true},
      {L"POST / HTTP/1.1\r\ncontent-length:\t3 \r\n\r\nab", false},
      // Names that the server does not know, and lengths that are none.
      {L"POST / HTTP/1.1\r\nCONTENT-LENGTH: 3\r\n\r\n", true},
      {L"POST / HTTP/1.1\r\nContent-Length: -5\r\n\r\n", true},
      // The usual form of the name wins, wherever it stands.
      {L"POST / HTTP/1.1\r\ncontent-length: 9\r\nContent-Length: 1\r\n\r\na", true},
      {L"POST / HTTP/1.1\r\n\r\nContent-Length: 99", false},
  };
  for (const auto& [text, complete] : cases) EXPECT_EQ(IsCompleteRequest(text), complete) << text;
}

TEST(HttpMessage, CutsARequestIntoMethodPathAndBody) {
  const struct {
    const wchar_t* text;
    const wchar_t* method;
    const wchar_t* path;
    const wchar_t* body;
  } cases[] = {
      {L"GET /health HTTP/1.1\r\n\r\n", L"GET", L"/health", L""},
      {L"POST /execute HTTP/1.1\r\nA: b\r\n\r\n{\r\n\r\n}", L"POST", L"/execute", L"{\r\n\r\n}"},
      {L" /a b\r\n\r\n", L"", L"/a", L""},
      {L"GET /a b c\r\n", L"GET", L"/a", L""},
      {L"GET /a HTTP/1.1\nA: b\n\nbody", L"GET", L"/a", L""},
  };
  for (const auto& [text, method, path, body] : cases) {
    HttpServerRequest request;
    EXPECT_TRUE(ParseRequest(text, request)) << text;
    EXPECT_EQ(request.method, method) << text;
    EXPECT_EQ(request.path, path) << text;
    EXPECT_EQ(request.body, body) << text;
    EXPECT_TRUE(request.headers.empty());
  }
}

TEST(HttpMessage, RefusesALineWithoutTwoBlanks) {
  for (const wchar_t* const text : {L"", L"GET /health HTTP/1.1", L"GET /health\r\n\r\n", L"GET\r\n\r\n",
                                    L"\r\n a b", L"GET /health\nHost: a b"}) {
    HttpServerRequest request;
    EXPECT_FALSE(ParseRequest(text, request)) << text;
  }
}

TEST(HttpMessage, NormalisesPaths) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"/health///", L"/health"},
      {L"/HEALTH?x=1", L"/HEALTH"},
      {L"/health/?x", L"/health"},
      {L"/a/b/?c/", L"/a/b"},
      {L"?x", L"/"},
      {L"", L"/"},
      {L"\t/a\r", L"/a"},
      {L"health", L"health"},
  };
  for (const auto& [path, normal] : cases) EXPECT_EQ(NormalisePath(path), normal) << path;
}

TEST(HttpMessage, AnnouncesTheLengthInBytes) {
  HttpServerResponse response;
  // Two bytes, three bytes, and a pair of units that takes four: nine in all.
  response.body = std::wstring(L"\x00FC\x20AC") + wchar_t(0xD83D) + wchar_t(0xDD29);
  EXPECT_NE(ComposeResponse(response).find(L"Content-Length: 9\r\n"), std::wstring::npos);
}

TEST(HttpMessage, NamesTheStatusCodes) {
  std::wstring phrases;
  for (const int code : {200, 204, 400, 404, 500, 503, 504, 201})
    phrases += ReasonPhrase(code) + std::wstring(L"|");
  EXPECT_EQ(phrases,
            L"OK|No Content|Bad Request|Not Found|Internal Server Error|Service Unavailable|"
            L"Gateway Timeout|Unknown|");
}

}  // namespace
}  // namespace vek
