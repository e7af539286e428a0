#include "bench/host/plot/centre_lines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace bench {
namespace {

// How far the lines reach past what they mark, on the sheet.
constexpr double kPast = 3;
// The sine below which directions count as parallel.
constexpr double kParallel = 1e-6;

bool IsFullCylinder(const FaceInfo& face) {
  constexpr double kNearlyWhole = 1e-6;
  return face.type == "cylinder" && face.u[1] - face.u[0] > 2 * std::numbers::pi - kNearlyWhole;
}

void DrawCross(const Vector2& center, double radius, SvgWriter& svg) {
  const double reach = radius + kPast;
  svg.Line({center[0] - reach, center[1]}, {center[0] + reach, center[1]}, Pen::kCentre);
  svg.Line({center[0], center[1] - reach}, {center[0], center[1] + reach}, Pen::kCentre);
}

void DrawAxis(const Vector2& from, const Vector2& to, SvgWriter& svg) {
  const double length = std::hypot(to[0] - from[0], to[1] - from[1]);
  const Vector2 past{(to[0] - from[0]) / length * kPast, (to[1] - from[1]) / length * kPast};
  svg.Line({from[0] - past[0], from[1] - past[1]}, {to[0] + past[0], to[1] + past[1]}, Pen::kCentre);
}

}  // namespace

void DrawCentreLines(const Drawing& drawing, const DrawingView& view, const std::optional<CutPlane>& cut,
                     SvgWriter& svg) {
  const Model* part = drawing.SolidOf(view);
  if (!part) return;
  // Cylinders on one axis share its lines; the largest of those comes first.
  std::vector<const FaceInfo*> cylinders;
  for (const FaceInfo& face : part->topology.faces)
    if (IsFullCylinder(face)) cylinders.push_back(&face);
  std::ranges::stable_sort(cylinders, std::greater{}, &FaceInfo::radius);

  std::vector<Vector2> crossed;
  constexpr double kSamePlace = 1e-3;
  for (const FaceInfo* face : cylinders) {
    const Vector3 ends[] = {face->origin + face->v[0] * face->axis, face->origin + face->v[1] * face->axis};
    // An axis in the plane of the cut is drawn; one that lies before it went with the material.
    const auto before = [&](const Vector3& end) {
      return cut && Dot(end - cut->origin, cut->normal) > kSamePlace;
    };
    if (before(ends[0]) && before(ends[1])) continue;
    const Vector2 from = drawing.OnSheet(view, view.Projected(ends[0]));
    const Vector2 to = drawing.OnSheet(view, view.Projected(ends[1]));
    const double towards = std::abs(Dot(face->axis, view.Axis(2)));
    if (towards < kParallel) {
      DrawAxis(from, to, svg);
    } else if (1 - towards < kParallel) {
      const bool known = std::ranges::any_of(crossed, [&](const Vector2& other) {
        return std::hypot(other[0] - from[0], other[1] - from[1]) < kSamePlace;
      });
      if (!known) DrawCross(from, face->radius * drawing.ScaleOf(view), svg);
      crossed.push_back(from);
    }
  }
}

}  // namespace bench
