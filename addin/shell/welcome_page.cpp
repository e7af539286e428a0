#include "addin/shell/welcome_page.h"

#include "addin/text/utf8.h"

namespace vek {
namespace {

// What stands for itself in the path of an address: the unreserved characters, the slash and a drive's colon.
bool StandsForItself(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
         std::string_view("-._~/:").find(byte) != std::string_view::npos;
}

std::wstring PercentEncoded(std::wstring_view path) {
  constexpr wchar_t kHexDigits[] = L"0123456789ABCDEF";
  std::wstring encoded;
  for (const char byte : EncodeUtf8(path)) {
    if (StandsForItself(byte)) {
      encoded += static_cast<wchar_t>(byte);
      continue;
    }
    const auto value = static_cast<unsigned char>(byte);
    encoded += {L'%', kHexDigits[value >> 4], kHexDigits[value & 0xF]};
  }
  return encoded;
}

}  // namespace

std::wstring WelcomePageUrl(std::wstring_view directory) {
  std::wstring path = std::wstring(directory).append(L"\\welcome.html");
  for (wchar_t& c : path)
    if (c == L'\\') c = L'/';
  // A UNC path brings its host and with it the two slashes in front.
  const std::wstring_view head = path.starts_with(L"//") ? L"file:" : L"file:///";
  return std::wstring(head) + PercentEncoded(path);
}

}  // namespace vek
