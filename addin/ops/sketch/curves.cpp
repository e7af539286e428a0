#include "addin/ops/sketch/curves.h"

#include <cmath>

namespace vek::sketch {
namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kFullTurn = 6.283185307179586;
constexpr double kQuarterTurn = 1.5707963267948966;
constexpr double kThreeQuarterTurn = 4.71238898038469;

// A curve that the section has no entity for becomes a spline through this many pieces.
constexpr int kPieces = 32;
constexpr double kPiece = 0.03125;

constexpr double kNoRotationDeg = 1e-9;

PlanePoint PointOn(const EllipseShape& ellipse, double t) {
  const double r = DegreesToRadians(ellipse.rotation_deg);
  return {ellipse.radius_x * std::cos(t) * std::cos(r) + ellipse.center.x -
              ellipse.radius_y * std::sin(t) * std::sin(r),
          ellipse.radius_x * std::cos(t) * std::sin(r) + ellipse.center.y +
              ellipse.radius_y * std::sin(t) * std::cos(r)};
}

}  // namespace

double DegreesToRadians(double degrees) {
  return degrees * kPi / 180;
}

bool IsUnrotated(const EllipseShape& ellipse) {
  return std::fabs(ellipse.rotation_deg) < kNoRotationDeg;
}

std::vector<PlanePoint> OutlineOf(const EllipseShape& ellipse) {
  std::vector<PlanePoint> points;
  points.reserve(kPieces + 1);
  for (int i = 0; i <= kPieces; ++i) points.push_back(PointOn(ellipse, i * kFullTurn * kPiece));
  return points;
}

std::vector<PlanePoint> ArcOf(const EllipseShape& ellipse, double start_deg, double sweep_deg) {
  std::vector<PlanePoint> points;
  points.reserve(kPieces + 1);
  for (int i = 0; i <= kPieces; ++i)
    points.push_back(PointOn(ellipse, DegreesToRadians(i * sweep_deg * kPiece + start_deg)));
  return points;
}

SlotShape SlotOf(double length, double width, PlanePoint center, double angle_deg) {
  const double half = (length - width) * 0.5;
  const double r = width * 0.5;
  const double a = DegreesToRadians(angle_deg);
  const double c = std::cos(a);
  const double s = std::sin(a);
  const PlanePoint near_center{center.x - half * c, center.y - half * s};
  const PlanePoint far_center{center.x + half * c, center.y + half * s};

  SlotShape slot;
  slot.lines[0] = {{near_center.x - r * s, near_center.y + r * c},
                   {far_center.x - r * s, far_center.y + r * c}};
  slot.lines[1] = {{far_center.x + r * s, far_center.y - r * c},
                   {near_center.x + r * s, near_center.y - r * c}};
  slot.arcs[0] = {far_center, r, a - kQuarterTurn, a + kQuarterTurn};
  slot.arcs[1] = {near_center, r, a + kQuarterTurn, a + kThreeQuarterTurn};
  return slot;
}

}  // namespace vek::sketch
