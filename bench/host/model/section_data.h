// A two-dimensional section: entities under ids that are given in order and never reused.
#pragma once

#include <Pro2dEntdef.h>

#include <array>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace bench {

using Point2 = std::array<double, 2>;

// One entity, in model units and radians. Which fields count depends on the type.
struct SectionEntity {
  Pro2dEntType type = PRO_2D_POINT;
  Point2 first{};            // point, first end, centre
  Point2 second{};           // second end
  double radius = 0;         // arc and circle; ellipse: along x
  double second_radius = 0;  // ellipse: along y
  double start_angle = 0;
  double end_angle = 0;
  std::vector<Point2> points;  // spline
  bool construction = false;
};

struct SectionData {
  std::wstring name;
  std::map<int, SectionEntity> entities;  // in the order of their ids, which is that of the additions
  int next_id = 1;
  bool intent_manager = false;
};

}  // namespace bench
