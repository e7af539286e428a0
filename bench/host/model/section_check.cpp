#include "bench/host/model/section_check.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace bench {
namespace {

// In model units and radians.
constexpr double kShortest = 1e-9;
constexpr double kAngleSlack = 1e-9;

bool IsFinite(const Point2& point) {
  return std::isfinite(point[0]) && std::isfinite(point[1]);
}

bool IsRadius(double radius) {
  return std::isfinite(radius) && radius > 0;
}

bool AreApart(const Point2& a, const Point2& b) {
  return std::hypot(b[0] - a[0], b[1] - a[1]) > kShortest;
}

bool HasInk(const std::wstring& text) {
  return text.find_first_not_of(L" \t\r\n") != std::wstring::npos;
}

bool HasExtent(const SectionEntity& entity) {
  switch (entity.type) {
    case PRO_2D_LINE:
    case PRO_2D_CENTER_LINE:
      return AreApart(entity.first, entity.second);
    case PRO_2D_ARC: {
      const double sweep = entity.end_angle - entity.start_angle;
      return sweep > kAngleSlack && sweep < 2 * std::numbers::pi + kAngleSlack;
    }
    case PRO_2D_TEXT:
      return std::fabs(entity.second[0] - entity.first[0]) > kShortest &&
             std::fabs(entity.second[1] - entity.first[1]) > kShortest;
    case PRO_2D_SPLINE:
      return std::adjacent_find(entity.points.begin(), entity.points.end(),
                                [](const Point2& a, const Point2& b) { return !AreApart(a, b); }) ==
             entity.points.end();
    default:
      return true;
  }
}

}  // namespace

bool CanHold(const SectionEntity& entity) {
  switch (entity.type) {
    case PRO_2D_POINT:
      return IsFinite(entity.first);
    case PRO_2D_LINE:
    case PRO_2D_CENTER_LINE:
      return IsFinite(entity.first) && IsFinite(entity.second);
    case PRO_2D_ARC:
      return IsFinite(entity.first) && IsRadius(entity.radius) && std::isfinite(entity.start_angle) &&
             std::isfinite(entity.end_angle) && entity.start_angle <= entity.end_angle;
    case PRO_2D_CIRCLE:
      return IsFinite(entity.first) && IsRadius(entity.radius);
    case PRO_2D_ELLIPSE:
      return IsFinite(entity.first) && IsRadius(entity.radius) && IsRadius(entity.second_radius);
    case PRO_2D_TEXT:
      return IsFinite(entity.first) && IsFinite(entity.second) && HasInk(entity.text);
    case PRO_2D_SPLINE:
      return entity.points.size() >= 2 && std::ranges::all_of(entity.points, IsFinite);
  }
  return false;
}

std::vector<int> DegenerateEntities(const SectionData& section) {
  std::vector<int> ids;
  for (const auto& [id, entity] : section.entities)
    if (!HasExtent(entity)) ids.push_back(id);
  return ids;
}

bool HasCenterline(const SectionData& section) {
  return std::ranges::any_of(section.entities,
                             [](const auto& entry) { return entry.second.type == PRO_2D_CENTER_LINE; });
}

}  // namespace bench
