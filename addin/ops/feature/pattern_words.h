// The words for directions, planes and axes that patterns and geometry mirrors take. Pure.
//
// Sketch planes and drafts read some of these words otherwise, and clients rely on each: the tables stay
// apart.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vek::feature {

// `word` as it is looked up: trimmed and in upper case.
std::wstring NormalizeWord(std::wstring_view word);

// The datum plane that is normal to a pattern's direction. A word of no meaning is a datum plane's name.
std::wstring DirectionPlaneName(std::wstring_view word);

// The datum plane to mirror across. A word of no meaning is a datum plane's name.
std::wstring MirrorPlaneName(std::wstring_view word);

// Two datum planes, by their names.
struct PlanePair {
  std::wstring first;
  std::wstring second;
};

// The planes that meet in an axis; none for a word of no meaning, an empty one included.
std::optional<PlanePair> AxisPlanePair(std::wstring_view word);

}  // namespace vek::feature
