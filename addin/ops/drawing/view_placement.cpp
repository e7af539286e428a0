#include "addin/ops/drawing/view_placement.h"

#include <algorithm>

#include "addin/text/wide_text.h"

namespace vek::drawing {
namespace {

constexpr double kRingGaps[] = {40, 80, 140, 220};
constexpr double kClearance = 15;
constexpr double kSmallestHalfSize = 1;
constexpr double kDefaultHalfSize = 60;
constexpr SheetPoint kLastCandidateOffset{150, 100};
constexpr double kRightOfParentGap = 40;

double AcceptedHalfSize(double half) {
  return half > kSmallestHalfSize ? half : kDefaultHalfSize;
}

bool IsClearOf(const ViewRect& rect, const SheetPoint& at, double half_w, double half_h) {
  return rect.min_x >= at.x + half_w + kClearance || at.x - half_w >= rect.max_x + kClearance ||
         rect.min_y >= at.y + half_h + kClearance || at.y - half_h >= rect.max_y + kClearance;
}

}  // namespace

bool ViewRect::Holds(const SheetPoint& point) const {
  return point.x >= min_x && point.x <= max_x && point.y >= min_y && point.y <= max_y;
}

SheetPoint Toward(std::wstring_view direction, const SheetPoint& centre, double gap) {
  const std::wstring word = ToLower(Trim(direction));
  if (word == L"top") return {centre.x, centre.y + gap};
  if (word == L"bottom") return {centre.x, centre.y - gap};
  if (word == L"left") return {centre.x - gap, centre.y};
  if (word == L"iso" || word == L"isometric") return {centre.x + gap, centre.y + gap};
  return {centre.x + gap, centre.y};
}

std::vector<SheetPoint> PlacementCandidates(const ViewRect& parent, double half_w, double half_h) {
  const SheetPoint centre = parent.Centre();
  std::vector<SheetPoint> candidates;
  for (const double gap : kRingGaps) {
    const double right = parent.max_x + gap + half_w;
    const double left = parent.min_x - gap - half_w;
    const double top = parent.max_y + gap + half_h;
    const double bottom = parent.min_y - gap - half_h;
    candidates.insert(candidates.end(), {{right, centre.y},
                                         {right, top},
                                         {centre.x, top},
                                         {right, bottom},
                                         {centre.x, bottom},
                                         {left, centre.y},
                                         {left, top},
                                         {left, bottom}});
  }
  candidates.push_back({centre.x + kLastCandidateOffset.x, centre.y + kLastCandidateOffset.y});
  return candidates;
}

Placement PlaceAround(const ViewRect& parent, double half_w, double half_h,
                      std::span<const ViewRect> obstacles) {
  half_w = AcceptedHalfSize(half_w);
  half_h = AcceptedHalfSize(half_h);
  const std::vector<SheetPoint> candidates = PlacementCandidates(parent, half_w, half_h);
  const auto clear = std::ranges::find_if(candidates, [&](const SheetPoint& at) {
    return std::ranges::all_of(obstacles,
                               [&](const ViewRect& rect) { return IsClearOf(rect, at, half_w, half_h); });
  });
  if (clear != candidates.end()) return {*clear, true};
  return {{parent.max_x + kRightOfParentGap + half_w, parent.Centre().y}, false};
}

}  // namespace vek::drawing
