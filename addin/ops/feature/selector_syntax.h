// Edge and face selectors, without the host: how their text is read, and which numbers they choose.
//
// A selector is a text such as ">Z": its first character says what is sought and its last one along which
// axis. What stands between the two is not looked at. Pure.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace vek::feature {

enum class SelectorKind {
  kLargest,   // ">": outermost along the axis
  kSmallest,  // "<": outermost against it
  kAlong,     // "|": running along it
};

struct Selector {
  SelectorKind kind = SelectorKind::kLargest;
  int axis = 0;  // 0, 1 and 2 are X, Y and Z
};

// The selector that a client's text means; nothing for a text that means none. An edge takes all three kinds,
// a face all but the bar.
std::optional<Selector> ReadEdgeSelector(std::wstring_view text);
std::optional<Selector> ReadFaceSelector(std::wstring_view text);

// The indices of the largest (or smallest) of `values` and of all that come within 1e-9 of it, in order. What
// is not finite is never chosen.
std::vector<std::size_t> OutermostValues(std::span<const double> values, SelectorKind kind);

// Whether a line that covers these spans, none of them negative, runs along `axis`: it may lean by a quarter
// of its span there. A line without length runs nowhere.
bool SpansRunAlong(std::span<const double, 3> spans, int axis);

}  // namespace vek::feature
