// What the recipes of several kinds of features have in common, read from a request. Values are checked for
// presence and type here; whether they make geometry is for the features to say.
#pragma once

#include <gp_Ax3.hxx>
#include <gp_Pnt2d.hxx>
#include <string>
#include <variant>
#include <vector>

#include "bench/kernel/json_fields.h"

namespace bench::kernel {

struct PointEntity {
  gp_Pnt2d at;
};
struct LineEntity {
  gp_Pnt2d from, to;
};
// An axis to revolve about: never part of a section's boundary.
struct CenterlineEntity {
  gp_Pnt2d from, to;
};
// Counter-clockwise from the angle `start` to `end`, radians.
struct ArcEntity {
  gp_Pnt2d center;
  double radius = 0, start = 0, end = 0;
};
struct CircleEntity {
  gp_Pnt2d center;
  double radius = 0;
};
struct EllipseEntity {
  gp_Pnt2d center;
  double radius_x = 0, radius_y = 0;
};
struct SplineEntity {
  std::vector<gp_Pnt2d> points;
};

// Characters that fill the box between two corners.
struct TextEntity {
  gp_Pnt2d from, to;
  std::string text, font;  // UTF-8; an empty font is the kernel's own
};

struct Entity {
  int id = 0;
  bool construction = false;
  std::variant<PointEntity, LineEntity, CenterlineEntity, ArcEntity, CircleEntity, EllipseEntity,
               SplineEntity, TextEntity>
      geometry;
};

// Entities on a plane: what a sketch holds and what a solid feature copies of it. The frame's main direction
// is the plane's normal.
struct Sketch {
  gp_Ax3 plane;
  std::vector<Entity> entities;
};

enum class Operation { kJoin, kCut };

// The plane of a recipe. Throws BadRequest, like the readers below.
gp_Ax3 ReadPlane(const Fields& fields);

// The entities of a recipe; `where` names the recipe in a complaint.
std::vector<Entity> ReadEntities(const Fields& fields, const std::string& where);

// The plane and entities of a recipe.
Sketch ReadSketch(const Fields& fields, const std::string& where);

Operation ReadOperation(const Fields& fields);

}  // namespace bench::kernel
