#include "addin/ops/feature/selector_syntax.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

// Model units: what lies this close counts as equally far out, and what is shorter has no direction.
constexpr double kTolerance = 1e-9;

// How many times its span across a line must cover along an axis.
constexpr double kAlongRatio = 4;

std::optional<SelectorKind> ReadOperator(wchar_t c) {
  switch (c) {
    case L'>':
      return SelectorKind::kLargest;
    case L'<':
      return SelectorKind::kSmallest;
    case L'|':
      return SelectorKind::kAlong;
    default:
      return std::nullopt;
  }
}

std::optional<int> ReadAxis(wchar_t c) {
  if (c >= L'x' && c <= L'z') return c - L'x';
  if (c >= L'X' && c <= L'Z') return c - L'X';
  return std::nullopt;
}

}  // namespace

std::optional<Selector> ReadEdgeSelector(std::wstring_view text) {
  const std::wstring_view trimmed = Trim(text);
  if (trimmed.size() < 2) return std::nullopt;
  const auto kind = ReadOperator(trimmed.front());
  const auto axis = ReadAxis(trimmed.back());
  if (!kind || !axis) return std::nullopt;
  return Selector{*kind, *axis};
}

std::optional<Selector> ReadFaceSelector(std::wstring_view text) {
  const auto selector = ReadEdgeSelector(text);
  if (selector && selector->kind == SelectorKind::kAlong) return std::nullopt;
  return selector;
}

std::vector<std::size_t> OutermostValues(std::span<const double> values, SelectorKind kind) {
  const double sign = kind == SelectorKind::kSmallest ? -1 : 1;
  double best = -std::numeric_limits<double>::infinity();
  for (const double value : values)
    if (std::isfinite(value)) best = std::max(best, sign * value);
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < values.size(); ++i)
    if (std::isfinite(values[i]) && best - sign * values[i] <= kTolerance) chosen.push_back(i);
  return chosen;
}

bool SpansRunAlong(std::span<const double, 3> spans, int axis) {
  if (!(std::ranges::max(spans) >= kTolerance)) return false;
  const double along = spans[static_cast<std::size_t>(axis)];
  for (std::size_t other = 0; other < spans.size(); ++other)
    if (other != static_cast<std::size_t>(axis) && !(along >= kAlongRatio * spans[other])) return false;
  return true;
}

}  // namespace vek::feature
