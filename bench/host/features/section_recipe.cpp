#include "bench/host/features/section_recipe.h"

#include <nlohmann/json.hpp>

#include "bench/host/text.h"

namespace bench {
namespace {

using nlohmann::json;

json Scaled(const Point2& point, double mm) {
  return {point[0] * mm, point[1] * mm};
}

json EntityRecipe(int id, const SectionEntity& entity, double mm) {
  json recipe{{"id", id}, {"construction", entity.construction}};
  switch (entity.type) {
    case PRO_2D_POINT:
      recipe["type"] = "point";
      recipe["at"] = Scaled(entity.first, mm);
      break;
    case PRO_2D_LINE:
    case PRO_2D_CENTER_LINE:
      recipe["type"] = entity.type == PRO_2D_LINE ? "line" : "centerline";
      recipe["from"] = Scaled(entity.first, mm);
      recipe["to"] = Scaled(entity.second, mm);
      break;
    case PRO_2D_ARC:
      recipe["type"] = "arc";
      recipe["center"] = Scaled(entity.first, mm);
      recipe["radius"] = entity.radius * mm;
      recipe["start"] = entity.start_angle;
      recipe["end"] = entity.end_angle;
      break;
    case PRO_2D_CIRCLE:
      recipe["type"] = "circle";
      recipe["center"] = Scaled(entity.first, mm);
      recipe["radius"] = entity.radius * mm;
      break;
    case PRO_2D_ELLIPSE:
      recipe["type"] = "ellipse";
      recipe["center"] = Scaled(entity.first, mm);
      recipe["radius_x"] = entity.radius * mm;
      recipe["radius_y"] = entity.second_radius * mm;
      break;
    case PRO_2D_TEXT:
      recipe["type"] = "text";
      recipe["from"] = Scaled(entity.first, mm);
      recipe["to"] = Scaled(entity.second, mm);
      recipe["text"] = ToUtf8(entity.text);
      if (!entity.font.empty()) recipe["font"] = ToUtf8(entity.font);
      break;
    case PRO_2D_SPLINE: {
      recipe["type"] = "spline";
      json& points = recipe["points"] = json::array();
      for (const Point2& point : entity.points) points.push_back(Scaled(point, mm));
      break;
    }
  }
  return recipe;
}

}  // namespace

json PlaneRecipe(const PlaneFrame& plane, double mm) {
  const Vector3& origin = plane.origin;
  return {
      {"origin", Vector3{origin[0] * mm, origin[1] * mm, origin[2] * mm}}, {"x", plane.x}, {"y", plane.y}};
}

json EntitiesRecipe(const SectionData& section, double mm) {
  json entities = json::array();
  for (const auto& [id, entity] : section.entities) entities.push_back(EntityRecipe(id, entity, mm));
  return entities;
}

}  // namespace bench
