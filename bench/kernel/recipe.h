// The recipes of a part's features, read from a request. Values are checked for presence and type here;
// whether they make geometry is for the features to say.
#pragma once

#include <gp_Ax3.hxx>
#include <gp_Pnt2d.hxx>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

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

struct Entity {
  int id = 0;
  bool construction = false;
  std::variant<PointEntity, LineEntity, CenterlineEntity, ArcEntity, CircleEntity, EllipseEntity,
               SplineEntity>
      geometry;
};

// Entities on a plane: what a sketch holds and what a solid feature copies of it. The frame's main direction
// is the plane's normal.
struct Sketch {
  gp_Ax3 plane;
  std::vector<Entity> entities;
};

enum class Operation { kJoin, kCut };

enum class ExtentMode { kBlind, kSymmetric, kTwo, kThroughAll, kToNext };

struct ExtrudeRecipe {
  Sketch sketch;
  Operation operation = Operation::kJoin;
  ExtentMode mode = ExtentMode::kBlind;
  double depth = 0, depth2 = 0;
  bool reverse = false;
  double taper_deg = 0;
};

struct RevolveRecipe {
  Sketch sketch;
  Operation operation = Operation::kJoin;
  double angle_deg = 0;
  bool reverse = false;
};

struct Recipe {
  int feature = 0;
  std::variant<Sketch, ExtrudeRecipe, RevolveRecipe> content;
  // The recipe's canonical text: equal texts are equal recipes.
  std::string text;
};

// Reads a request's array of recipes. Throws BadRequest.
std::vector<Recipe> ReadRecipes(const nlohmann::json& recipes);

}  // namespace bench::kernel
