#include "bench/host/features/constraint_motion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace bench {
namespace {

// Below this the sine between two directions is noise.
constexpr double kSameDirection = 1e-9;

using enum ConstraintType;
using Kind = FaceFrame::Kind;

Vector3 Unit(const Vector3& vector) {
  return 1 / Length(vector) * vector;
}

Vector3 Across(const Vector3& vector, const Vector3& direction) {
  return vector - Dot(vector, direction) * direction;
}

// Some direction perpendicular to another: X as far as it is, or else Y.
Vector3 AnyAcross(const Vector3& direction) {
  const Vector3 x = Across({1, 0, 0}, direction);
  return Length(x) > 0.1 ? Unit(x) : Unit(Across({0, 1, 0}, direction));
}

Vector3 UnitAcross(const Vector3& vector, const Vector3& direction) {
  const Vector3 across = Across(vector, direction);
  return Length(across) > kSameDirection ? Unit(across) : AnyAcross(direction);
}

Vector3 HalfTurnAxis(const Vector3& direction, const std::vector<Vector3>& settled) {
  const auto free = std::ranges::find_if(
      settled, [&](const Vector3& each) { return std::abs(Dot(each, direction)) < 1e-6; });
  return free != settled.end() ? UnitAcross(*free, direction) : AnyAcross(direction);
}

// The smallest turn that gives `from` the direction `to`.
Matrix TurnedFromTo(const Matrix& place, const Vector3& from, const Vector3& to,
                    const std::vector<Vector3>& settled) {
  const Vector3 axis = Cross(from, to);
  const double sine = Length(axis);
  if (sine > kSameDirection) return Turned(place, Unit(axis), std::atan2(sine, Dot(from, to)));
  return Dot(from, to) > 0 ? place : Turned(place, HalfTurnAxis(from, settled), std::numbers::pi);
}

bool AreOfOneKind(const HeldFaces& held) {
  return held.fixed.kind == held.moving.kind;
}

// The direction that the moving face must have, for the smallest turn.
Vector3 WantedDirection(const HeldFaces& held, const Vector3& now) {
  const Vector3& fixed = held.fixed.direction;
  switch (held.type) {
    case kMate:
    case kMateOffset:
      return -1 * fixed;
    case kAlign:
    case kAlignOffset:
      return fixed;
    case kAngle: {
      const double angle = held.offset * std::numbers::pi / 180;
      return std::cos(angle) * fixed + std::sin(angle) * UnitAcross(now, fixed);
    }
    case kPerpendicular:
      return UnitAcross(now, fixed);
    case kTangent:
      if (!AreOfOneKind(held)) return UnitAcross(now, fixed);
      [[fallthrough]];
    case kInsert:
    case kParallel:
      return Dot(now, fixed) < 0 ? -1 * fixed : fixed;
    case kFix:
      return now;
  }
  return now;
}

// How far from a plane, along its normal, the axis of a cylinder is that touches it.
double TouchingHeight(const FaceFrame& cylinder) {
  return cylinder.is_hole ? -cylinder.radius : cylinder.radius;
}

Vector3 TangentShift(const FaceFrame& fixed, const FaceFrame& moving) {
  const Vector3 from_fixed = moving.point - fixed.point;
  if (fixed.kind == Kind::kPlane)
    return (TouchingHeight(moving) - Dot(from_fixed, fixed.direction)) * fixed.direction;
  if (moving.kind == Kind::kPlane)
    return (-TouchingHeight(fixed) - Dot(from_fixed, moving.direction)) * moving.direction;
  const bool inside = fixed.is_hole || moving.is_hole;
  const double distance = inside ? std::abs(fixed.radius - moving.radius) : fixed.radius + moving.radius;
  const Vector3 apart = Across(from_fixed, fixed.direction);
  return distance * UnitAcross(from_fixed, fixed.direction) - apart;
}

// The shift of a moving face that is turned as it must be.
Vector3 WantedShift(const HeldFaces& held, const FaceFrame& moving) {
  const FaceFrame& fixed = held.fixed;
  const double behind = Dot(fixed.point - moving.point, fixed.direction);
  switch (held.type) {
    case kMate:
    case kAlign:
      return behind * fixed.direction;
    case kMateOffset:
    case kAlignOffset:
      return (behind + held.offset) * fixed.direction;
    case kInsert:
      return Across(fixed.point - moving.point, fixed.direction);
    case kTangent:
      return TangentShift(fixed, moving);
    default:
      return {0, 0, 0};
  }
}

}  // namespace

bool MakesSense(const HeldFaces& held) {
  const bool fixed_plane = held.fixed.kind == Kind::kPlane, moving_plane = held.moving.kind == Kind::kPlane;
  switch (held.type) {
    case kMate:
    case kMateOffset:
    case kAlign:
    case kAlignOffset:
      return fixed_plane && moving_plane;
    case kInsert:
      return !fixed_plane && !moving_plane;
    case kParallel:
    case kAngle:
    case kPerpendicular:
      return fixed_plane == moving_plane;
    case kTangent:
      return !(fixed_plane && moving_plane) && !(held.fixed.is_hole && held.moving.is_hole);
    case kFix:
      return true;
  }
  return false;
}

Matrix MovedByConstraint(const HeldFaces& held, const Matrix& place, const std::vector<Vector3>& settled) {
  const Vector3 now = TurnedBy(place, held.moving.direction);
  const Matrix turned = TurnedFromTo(place, now, WantedDirection(held, now), settled);
  return Shifted(turned, WantedShift(held, MovedBy(turned, held.moving)));
}

}  // namespace bench
