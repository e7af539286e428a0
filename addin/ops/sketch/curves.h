// The numbers behind the curves that a sketch draws: arcs of ellipses as points, and the four pieces of a
// slot. Pure; lengths in the unit of the input, angles in degrees where a name says so and in radians
// otherwise.
#pragma once

#include <vector>

#include "addin/ops/sketch/point_array.h"

namespace vek::sketch {

double DegreesToRadians(double degrees);

struct EllipseShape {
  double radius_x = 0;
  double radius_y = 0;
  PlanePoint center;
  double rotation_deg = 0;
};

// Whether the ellipse lies along the axes of the sketch.
bool IsUnrotated(const EllipseShape& ellipse);

// 33 points once round; the last is the first again as to its place.
std::vector<PlanePoint> OutlineOf(const EllipseShape& ellipse);

// 33 points over `sweep_deg` from `start_deg`, both measured as the ellipse's parameter.
std::vector<PlanePoint> ArcOf(const EllipseShape& ellipse, double start_deg, double sweep_deg);

struct PlaneLine {
  PlanePoint from;
  PlanePoint to;
};

struct PlaneArc {
  PlanePoint center;
  double radius = 0;
  double start = 0;
  double end = 0;
};

// A stadium: two lines and the half circles at its far and its near end, in the order in which they are
// drawn.
struct SlotShape {
  PlaneLine lines[2];
  PlaneArc arcs[2];
};

SlotShape SlotOf(double length, double width, PlanePoint center, double angle_deg);

}  // namespace vek::sketch
