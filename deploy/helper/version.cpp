#include "deploy/helper/version.h"

#include <cstddef>

#include "addin/text/format.h"

namespace vek::helper {
namespace {

constexpr std::size_t kMostDigits = 9;

std::optional<unsigned> ReadNumber(std::string_view digits) {
  if (digits.empty() || digits.size() > kMostDigits) return std::nullopt;
  unsigned number = 0;
  for (const char digit : digits) {
    if (digit < '0' || digit > '9') return std::nullopt;
    number = number * 10 + static_cast<unsigned>(digit - '0');
  }
  return number;
}

}  // namespace

std::optional<Version> ReadVersion(std::string_view text) {
  Version version;
  for (unsigned& place : version.numbers) {
    const std::size_t dot = text.find('.');
    const auto number = ReadNumber(text.substr(0, dot));
    if (!number) return std::nullopt;
    place = *number;
    if (dot == std::string_view::npos) return version;
    text.remove_prefix(dot + 1);
  }
  return std::nullopt;
}

std::wstring VersionText(const Version& version) {
  const auto& [major, minor, patch, build] = version.numbers;
  const std::wstring text = Format(L"%u.%u.%u", major, minor, patch);
  return build == 0 ? text : text + Format(L".%u", build);
}

}  // namespace vek::helper
