#include "bench/host/model/evaluation.h"

#include <cmath>
#include <numbers>

namespace bench {
namespace {

Vector3 Sum(double a, const Vector3& first, double b, const Vector3& second) {
  return {a * first[0] + b * second[0], a * first[1] + b * second[1], a * first[2] + b * second[2]};
}

Vector3 Plus(const Vector3& a, const Vector3& b) {
  return Sum(1, a, 1, b);
}

Vector3 Scaled(double factor, const Vector3& a) {
  return Sum(factor, a, 0, {});
}

// What turns about an axis to make a surface: its distance from the axis and its height along it, with their
// first and second derivatives.
struct Profile {
  double distance, height;
  double distance1, height1;
  double distance2, height2;
};

std::optional<Profile> ProfileAt(const FaceInfo& face, double v) {
  const double c = std::cos(v), s = std::sin(v), r = face.radius;
  if (face.type == "cylinder") return Profile{r, v, 0, 1, 0, 0};
  if (face.type == "cone") {
    const double angle = face.half_angle_deg * std::numbers::pi / 180;
    const double outward = std::sin(angle), upward = std::cos(angle);
    return Profile{r + v * outward, v * upward, outward, upward, 0, 0};
  }
  if (face.type == "sphere") return Profile{r * c, r * s, -r * s, r * c, -r * c, -r * s};
  if (face.type == "torus") {
    const double tube = face.minor_radius;
    return Profile{r + tube * c, tube * s, -tube * s, tube * c, -tube * c, -tube * s};
  }
  return std::nullopt;
}

SurfacePoint Turned(const FaceInfo& face, const Profile& profile, double u) {
  const Vector3 y = Cross(face.axis, face.x);
  const Vector3 outward = Sum(std::cos(u), face.x, std::sin(u), y);
  const Vector3 around = Sum(-std::sin(u), face.x, std::cos(u), y);
  SurfacePoint at;
  at.point = Plus(face.origin, Sum(profile.distance, outward, profile.height, face.axis));
  at.du = Scaled(profile.distance, around);
  at.dv = Sum(profile.distance1, outward, profile.height1, face.axis);
  at.duu = Scaled(-profile.distance, outward);
  at.duv = Scaled(profile.distance1, around);
  at.dvv = Sum(profile.distance2, outward, profile.height2, face.axis);
  // Beyond a cone's apex what points away from the axis is the other side.
  const double side = face.type == "cone" && profile.distance < 0 ? -1 : 1;
  const double size = std::hypot(profile.distance1, profile.height1);
  at.normal =
      Scaled(face.orientation * side / size, Sum(profile.height1, outward, -profile.distance1, face.axis));
  return at;
}

}  // namespace

std::optional<SurfacePoint> PointOnSurface(const FaceInfo& face, double u, double v) {
  if (const auto profile = ProfileAt(face, v)) return Turned(face, *profile, u);
  if (face.type != "plane") return std::nullopt;
  SurfacePoint at;
  at.du = face.x;
  at.dv = Cross(face.axis, face.x);
  at.point = Plus(face.origin, Sum(u, at.du, v, at.dv));
  at.normal = Scaled(face.orientation, face.axis);
  return at;
}

std::optional<EdgePoint> PointOnEdge(const EdgeInfo& edge, double t) {
  EdgePoint at;
  if (edge.type == "line") {
    at.dt = Sum(1, edge.to, -1, edge.from);
    at.point = Plus(edge.from, Scaled(t, at.dt));
  } else if (edge.type == "circle") {
    const Vector3 arm = Sum(1, edge.from, -1, edge.center);
    const Vector3 across = Cross(edge.axis, arm);
    const double turn = edge.length / Length(arm), angle = turn * t;
    const Vector3 turned = Sum(std::cos(angle), arm, std::sin(angle), across);
    at.point = Plus(edge.center, turned);
    at.dt = Scaled(turn, Cross(edge.axis, turned));
    at.dtt = Scaled(-turn * turn, turned);
  } else {
    return std::nullopt;
  }
  // The ends are points that other edges share, to the last digit.
  if (t == 0) at.point = edge.from;
  if (t == 1) at.point = edge.to;
  return at;
}

double DistanceFromAxis(const Vector3& point, const Vector3& origin, const Vector3& axis) {
  return Length(Cross(Sum(1, point, -1, origin), axis));
}

}  // namespace bench
