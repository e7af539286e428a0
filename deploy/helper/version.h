// Versions as numbers with dots between them.
#pragma once

#include <array>
#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace vek::helper {

// Up to four numbers, the weightiest first; those not told are 0, so that 1.2 and 1.2.0 are the same.
struct Version {
  std::array<unsigned, 4> numbers{};
  auto operator<=>(const Version&) const = default;
};

// None for a text that is not one to four decimal numbers, of nine digits at most, with single dots between.
std::optional<Version> ReadVersion(std::string_view text);

// With three numbers, or four when the last is not 0.
std::wstring VersionText(const Version& version);

}  // namespace vek::helper
