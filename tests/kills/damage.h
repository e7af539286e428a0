// Files as a broken disk or a crash leaves them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vek::kills {

// Damaged forms of a file, always the same for the same bytes: cut short at `cuts` lengths from 0 on, and
// `flips` of them in which a bit is turned, a digit is another one, a line is there twice or not at all, or a
// stretch of bytes is zero, by turns.
std::vector<std::string> DamagedForms(const std::string& whole, std::size_t cuts, std::size_t flips);

}  // namespace vek::kills
