// Names for imported models: pure.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vek {

// What the host's buffer for model names holds beside the terminator.
inline constexpr std::size_t kLongestModelName = 179;

// Lower-case letters, digits and "_", at most `longest` characters; "_" in the place of all else.
// "import_model" for an empty text.
std::wstring ImportName(std::wstring_view text, std::size_t longest = kLongestModelName);

// The name to try when `taken` names were taken before: the name itself, then with "_1" behind it, and so on,
// cut so that the whole has at most 179 characters.
std::wstring ImportCandidate(std::wstring_view name, int taken);

}  // namespace vek
