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
  Point2 first{};            // point, first end, centre; a text's first corner
  Point2 second{};           // second end; a text's second corner
  double radius = 0;         // arc and circle; ellipse: along x
  double second_radius = 0;  // ellipse: along y
  double start_angle = 0;
  double end_angle = 0;
  std::vector<Point2> points;  // spline
  std::wstring text{};         // text
  std::wstring font{};         // text; empty: the host's own
  bool construction = false;
};

// A part of an entity that a constraint or a dimension holds on to.
struct SectionTarget {
  int entity = -1;
  int point = 1;  // 1 the whole entity, 2 its first end, 3 its second, 4 its centre
};

struct SectionConstraint {
  int type = 0;  // 0 same point, 1 horizontal, 2 vertical, 3 point on entity, 4 tangent, 5 perpendicular, 6
                 // equal radii, 7 parallel, 8 equal lengths
  std::vector<SectionTarget> targets;
};

struct SectionDimension {
  int type = 0;  // 1 length of a line, 2 distance of a point, 3 radius, 4 diameter, 12 angle between lines
  std::vector<SectionTarget> targets;
  double value = 0;  // model units, radians
  Point2 place{};    // of its text
};

struct SectionData {
  std::wstring name;
  std::map<int, SectionEntity> entities;  // in the order of their ids, which is that of the additions
  int next_id = 1;
  std::map<int, SectionConstraint> constraints;
  std::map<int, SectionDimension> dimensions;
  int next_constraint = 1;
  int next_dimension = 1;
  bool intent_manager = false;
};

}  // namespace bench
