#include "addin/server/json_writer.h"

#include "addin/text/format.h"

namespace vek {

std::wstring JsonEscape(std::wstring_view text) {
  constexpr std::size_t kRoomForEscapes = 8;
  std::wstring escaped;
  escaped.reserve(text.size() + kRoomForEscapes);
  for (const wchar_t c : text) {
    switch (c) {
      case L'\\':
        escaped += L"\\\\";
        break;
      case L'"':
        escaped += L"\\\"";
        break;
      case L'\b':
        escaped += L"\\b";
        break;
      case L'\f':
        escaped += L"\\f";
        break;
      case L'\n':
        escaped += L"\\n";
        break;
      case L'\r':
        escaped += L"\\r";
        break;
      case L'\t':
        escaped += L"\\t";
        break;
      default:
        if (static_cast<char32_t>(c) < U' ') {
          escaped += Format(L"\\u%04x", static_cast<unsigned>(c));
        } else {
          escaped.push_back(c);
        }
    }
  }
  return escaped;
}

std::wstring EncodeBatchResults(const BatchResults& results) {
  std::wstring body = L"{\"results\":{";
  bool first = true;
  for (const auto& [name, result] : results) {
    if (!first) body.push_back(L',');
    first = false;
    body.append(1, L'"').append(JsonEscape(name)).append(L"\":");
    body += Format(L"{\"success\":%s,\"message\":\"%s\",\"data\":%s}", result.success ? L"true" : L"false",
                   JsonEscape(result.message), result.dataJson);
  }
  return body.append(L"}}");
}

std::wstring EncodeError(std::wstring_view text) {
  return Format(L"{\"error\":\"%s\"}", JsonEscape(text));
}

std::wstring EncodeHealth(const std::vector<std::wstring>& names, int port) {
  std::wstring array = L"[";
  for (const std::wstring& name : names) {
    if (array.size() > 1) array.push_back(L',');
    array.append(1, L'"').append(JsonEscape(name)).append(1, L'"');
  }
  array.push_back(L']');
  return Format(
      L"{\"status\":\"ok\",\"addinReachable\":true,\"provider\":\"creo\",\"server\":\"VekAI.CreoAddin\","
      L"\"listenPort\":%d,\"registeredOperations\":%s}",
      port, array);
}

}  // namespace vek
