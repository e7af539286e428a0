#include "addin/shell/welcome_page.h"

#include <gtest/gtest.h>

namespace vek {
namespace {

TEST(WelcomePage, IsAFileAddress) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"C:\\Vek\\bin-64_x.y~", L"file:///C:/Vek/bin-64_x.y~/welcome.html"},
      {L"C:\\Program Files\\Vek", L"file:///C:/Program%20Files/Vek/welcome.html"},
      // U+00E9 is C3 A9 in UTF-8, U+20AC is E2 82 AC, and the pair for U+1F527 is F0 9F 94 A7.
      {L"D:\\caf\u00e9\\\u20ac\\\U0001F527", L"file:///D:/caf%C3%A9/%E2%82%AC/%F0%9F%94%A7/welcome.html"},
      {L"C:\\a%20b#c?d+e&f", L"file:///C:/a%2520b%23c%3Fd%2Be%26f/welcome.html"},
      {L"\\\\server\\share\\Vek", L"file://server/share/Vek/welcome.html"}};
  for (const auto& [directory, url] : cases) EXPECT_EQ(WelcomePageUrl(directory), url);
}

}  // namespace
}  // namespace vek
