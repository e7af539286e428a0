// Reading poses from the text of a request: pure.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace vek::assembly {

using TransformRows = std::array<std::array<double, 4>, 4>;

// The number behind the blanks and commas at `index`, which then stands behind it. False, with `value` as it
// was, when no number stands there.
bool ReadNextNumber(std::wstring_view text, std::size_t& index, double& value);

// Four rows of four numbers, each in brackets within an outer bracket; what else a row holds is passed over.
// Nothing when the text doesn't read as such.
std::optional<TransformRows> ReadTransformRows(std::wstring_view text);

}  // namespace vek::assembly
