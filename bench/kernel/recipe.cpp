#include "bench/kernel/recipe.h"

#include <cmath>
#include <set>

#include "bench/kernel/json_fields.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

// How far a plane's x and y may be from unit length and from a right angle: what numbers lose on their way as
// text.
constexpr double kFrameTolerance = 1e-6;

gp_Ax3 ReadPlane(const Fields& recipe) {
  const Fields plane = recipe.Object("plane");
  const gp_XYZ origin = plane.Vector("origin");
  const gp_XYZ x = plane.Vector("x");
  const gp_XYZ y = plane.Vector("y");
  const bool unit =
      std::abs(x.Modulus() - 1) <= kFrameTolerance && std::abs(y.Modulus() - 1) <= kFrameTolerance;
  if (!unit || std::abs(x.Dot(y)) > kFrameTolerance)
    plane.Complain("'x' and 'y' must be unit vectors at a right angle");
  return {gp_Pnt(origin), gp_Dir(x.Crossed(y)), gp_Dir(x)};
}

SplineEntity ReadSpline(const Fields& entity) {
  SplineEntity spline;
  for (const json& point : entity.Array("points"))
    spline.points.push_back(entity.AsPoint2d(point, "each of 'points'"));
  return spline;
}

Entity ReadEntity(const Fields& fields) {
  Entity entity;
  entity.id = fields.Integer("id");
  entity.construction = fields.Flag("construction", false);
  const std::string type = fields.Text("type");
  if (type == "point") {
    entity.geometry = PointEntity{fields.Point2d("at")};
  } else if (type == "line") {
    entity.geometry = LineEntity{fields.Point2d("from"), fields.Point2d("to")};
  } else if (type == "centerline") {
    entity.geometry = CenterlineEntity{fields.Point2d("from"), fields.Point2d("to")};
  } else if (type == "arc") {
    entity.geometry = ArcEntity{fields.Point2d("center"), fields.Number("radius"), fields.Number("start"),
                                fields.Number("end")};
  } else if (type == "circle") {
    entity.geometry = CircleEntity{fields.Point2d("center"), fields.Number("radius")};
  } else if (type == "ellipse") {
    entity.geometry =
        EllipseEntity{fields.Point2d("center"), fields.Number("radius_x"), fields.Number("radius_y")};
  } else if (type == "spline") {
    entity.geometry = ReadSpline(fields);
  } else {
    fields.Complain("unknown entity type '" + type + "'");
  }
  return entity;
}

Sketch ReadSketch(const Fields& recipe, const std::string& where) {
  Sketch sketch;
  sketch.plane = ReadPlane(recipe);
  std::set<int> ids;
  for (const json& entry : recipe.Array("entities")) {
    const Fields fields(entry, where + ", entity " + std::to_string(sketch.entities.size() + 1));
    sketch.entities.push_back(ReadEntity(fields));
    if (!ids.insert(sketch.entities.back().id).second) fields.Complain("its id is taken");
  }
  return sketch;
}

Operation ReadOperation(const Fields& recipe) {
  const std::string operation = recipe.Text("operation");
  if (operation == "join") return Operation::kJoin;
  if (operation == "cut") return Operation::kCut;
  recipe.Complain("unknown operation '" + operation + "'");
}

ExtentMode ReadMode(const Fields& extent) {
  const std::string mode = extent.Text("mode");
  if (mode == "blind") return ExtentMode::kBlind;
  if (mode == "symmetric") return ExtentMode::kSymmetric;
  if (mode == "two") return ExtentMode::kTwo;
  if (mode == "through_all") return ExtentMode::kThroughAll;
  if (mode == "to_next") return ExtentMode::kToNext;
  extent.Complain("unknown mode '" + mode + "'");
}

ExtrudeRecipe ReadExtrude(const Fields& fields, const std::string& where) {
  ExtrudeRecipe recipe;
  recipe.sketch = ReadSketch(fields, where);
  recipe.operation = ReadOperation(fields);
  const Fields extent = fields.Object("extent");
  recipe.mode = ReadMode(extent);
  const bool measured = recipe.mode != ExtentMode::kThroughAll && recipe.mode != ExtentMode::kToNext;
  if (measured) recipe.depth = extent.Number("depth");
  if (recipe.mode == ExtentMode::kTwo) recipe.depth2 = extent.Number("depth2");
  recipe.reverse = fields.Flag("reverse", false);
  recipe.taper_deg = fields.Number("taper_deg", 0);
  return recipe;
}

RevolveRecipe ReadRevolve(const Fields& fields, const std::string& where) {
  RevolveRecipe recipe;
  recipe.sketch = ReadSketch(fields, where);
  recipe.operation = ReadOperation(fields);
  recipe.angle_deg = fields.Number("angle_deg");
  recipe.reverse = fields.Flag("reverse", false);
  return recipe;
}

Recipe ReadRecipe(const json& entry, const std::string& where) {
  const Fields fields(entry, where);
  Recipe recipe;
  recipe.feature = fields.Integer("feature");
  recipe.text = entry.dump();
  const std::string kind = fields.Text("kind");
  if (kind == "sketch") {
    recipe.content = ReadSketch(fields, where);
  } else if (kind == "extrude") {
    recipe.content = ReadExtrude(fields, where);
  } else if (kind == "revolve") {
    recipe.content = ReadRevolve(fields, where);
  } else {
    fields.Complain("unknown kind '" + kind + "'");
  }
  return recipe;
}

}  // namespace

std::vector<Recipe> ReadRecipes(const json& entries) {
  std::vector<Recipe> recipes;
  std::set<int> features;
  for (const json& entry : entries) {
    const std::string where = "recipe " + std::to_string(recipes.size() + 1);
    recipes.push_back(ReadRecipe(entry, where));
    if (!features.insert(recipes.back().feature).second)
      throw BadRequest(where + ": feature " + std::to_string(recipes.back().feature) +
                       " has a recipe already");
  }
  return recipes;
}

}  // namespace bench::kernel
