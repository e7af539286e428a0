#include "bench/kernel/sketch_recipe.h"

#include <cmath>
#include <set>

namespace bench::kernel {

using nlohmann::json;

namespace {

// How far a plane's x and y may be from unit length and from a right angle: what numbers lose on their way as
// text.
constexpr double kFrameTolerance = 1e-6;

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
  } else if (type == "text") {
    entity.geometry = TextEntity{fields.Point2d("from"), fields.Point2d("to"), fields.Text("text"),
                                 fields.Has("font") ? fields.Text("font") : std::string()};
  } else {
    fields.Complain("unknown entity type '" + type + "'");
  }
  return entity;
}

}  // namespace

gp_Ax3 ReadPlane(const Fields& fields) {
  const Fields plane = fields.Object("plane");
  const gp_XYZ origin = plane.Vector("origin");
  const gp_XYZ x = plane.Vector("x");
  const gp_XYZ y = plane.Vector("y");
  const bool unit =
      std::abs(x.Modulus() - 1) <= kFrameTolerance && std::abs(y.Modulus() - 1) <= kFrameTolerance;
  if (!unit || std::abs(x.Dot(y)) > kFrameTolerance)
    plane.Complain("'x' and 'y' must be unit vectors at a right angle");
  return {gp_Pnt(origin), gp_Dir(x.Crossed(y)), gp_Dir(x)};
}

std::vector<Entity> ReadEntities(const Fields& fields, const std::string& where) {
  std::vector<Entity> entities;
  std::set<int> ids;
  for (const json& entry : fields.Array("entities")) {
    const Fields entity(entry, where + ", entity " + std::to_string(entities.size() + 1));
    entities.push_back(ReadEntity(entity));
    if (!ids.insert(entities.back().id).second) entity.Complain("its id is taken");
  }
  return entities;
}

Sketch ReadSketch(const Fields& fields, const std::string& where) {
  return {ReadPlane(fields), ReadEntities(fields, where)};
}

Operation ReadOperation(const Fields& fields) {
  const std::string operation = fields.Text("operation");
  if (operation == "join") return Operation::kJoin;
  if (operation == "cut") return Operation::kCut;
  fields.Complain("unknown operation '" + operation + "'");
}

}  // namespace bench::kernel
