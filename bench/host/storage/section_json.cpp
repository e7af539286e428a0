#include "bench/host/storage/section_json.h"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include "bench/host/text.h"

namespace bench {
namespace {

Json PointToJson(const Point2& point) {
  return Json::array({NumberToJson(point[0]), NumberToJson(point[1])});
}

Point2 PointFromJson(const Json& json) {
  return {NumberFromJson(json.at(0)), NumberFromJson(json.at(1))};
}

Pro2dEntType EntityTypeFrom(int number) {
  switch (const auto type = static_cast<Pro2dEntType>(number)) {
    case PRO_2D_POINT:
    case PRO_2D_LINE:
    case PRO_2D_CENTER_LINE:
    case PRO_2D_ARC:
    case PRO_2D_CIRCLE:
    case PRO_2D_SPLINE:
    case PRO_2D_TEXT:
    case PRO_2D_ELLIPSE:
      return type;
  }
  throw std::runtime_error("unknown kind of section entity: " + std::to_string(number));
}

Json EntityToJson(int id, const SectionEntity& entity) {
  Json points = Json::array();
  for (const Point2& point : entity.points) points.push_back(PointToJson(point));
  return {{"id", id},
          {"type", static_cast<int>(entity.type)},
          {"first", PointToJson(entity.first)},
          {"second", PointToJson(entity.second)},
          {"radius", NumberToJson(entity.radius)},
          {"second_radius", NumberToJson(entity.second_radius)},
          {"start_angle", NumberToJson(entity.start_angle)},
          {"end_angle", NumberToJson(entity.end_angle)},
          {"points", std::move(points)},
          {"text", ToUtf8(entity.text)},
          {"font", ToUtf8(entity.font)},
          {"construction", entity.construction}};
}

SectionEntity EntityFromJson(const Json& json) {
  SectionEntity entity;
  entity.type = EntityTypeFrom(json.at("type").get<int>());
  entity.first = PointFromJson(json.at("first"));
  entity.second = PointFromJson(json.at("second"));
  entity.radius = NumberFromJson(json.at("radius"));
  entity.second_radius = NumberFromJson(json.at("second_radius"));
  entity.start_angle = NumberFromJson(json.at("start_angle"));
  entity.end_angle = NumberFromJson(json.at("end_angle"));
  for (const Json& point : json.at("points")) entity.points.push_back(PointFromJson(point));
  entity.text = FromUtf8(json.at("text").get<std::string>());
  entity.font = FromUtf8(json.at("font").get<std::string>());
  entity.construction = json.at("construction").get<bool>();
  return entity;
}

Json TargetsToJson(const std::vector<SectionTarget>& targets) {
  Json list = Json::array();
  for (const SectionTarget& target : targets)
    list.push_back({{"entity", target.entity}, {"point", target.point}});
  return list;
}

std::vector<SectionTarget> TargetsFromJson(const Json& json) {
  std::vector<SectionTarget> targets;
  for (const Json& each : json)
    targets.push_back({each.at("entity").get<int>(), each.at("point").get<int>()});
  return targets;
}

Json ConstraintToJson(int id, const SectionConstraint& constraint) {
  return {{"id", id}, {"type", constraint.type}, {"targets", TargetsToJson(constraint.targets)}};
}

SectionConstraint ConstraintFromJson(const Json& json) {
  return {json.at("type").get<int>(), TargetsFromJson(json.at("targets"))};
}

Json DimensionToJson(int id, const SectionDimension& dimension) {
  return {{"id", id},
          {"type", dimension.type},
          {"targets", TargetsToJson(dimension.targets)},
          {"value", NumberToJson(dimension.value)},
          {"place", PointToJson(dimension.place)}};
}

SectionDimension DimensionFromJson(const Json& json) {
  return {json.at("type").get<int>(), TargetsFromJson(json.at("targets")), NumberFromJson(json.at("value")),
          PointFromJson(json.at("place"))};
}

// Things under ids that are given in order: none beyond the next one, none twice.
template <typename Kept>
void ReadNumbered(const Json& list, int next, const char* what, Kept (*read)(const Json&),
                  std::map<int, Kept>& kept) {
  for (const Json& each : list) {
    const int id = each.at("id").get<int>();
    if (id < 1 || id >= next || !kept.emplace(id, read(each)).second)
      throw std::runtime_error(std::string("impossible id of a section's ") + what + ": " +
                               std::to_string(id));
  }
}

}  // namespace

Json NumberToJson(double number) {
  if (std::isnan(number)) return "nan";
  if (std::isinf(number)) return number > 0 ? "inf" : "-inf";
  return number;
}

double NumberFromJson(const Json& json) {
  if (!json.is_string()) return json.get<double>();
  const auto word = json.get<std::string>();
  if (word == "nan") return std::numeric_limits<double>::quiet_NaN();
  if (word == "inf") return std::numeric_limits<double>::infinity();
  if (word == "-inf") return -std::numeric_limits<double>::infinity();
  throw std::runtime_error("no number: " + word);
}

Json SectionToJson(const SectionData& section) {
  Json entities = Json::array();
  for (const auto& [id, entity] : section.entities) entities.push_back(EntityToJson(id, entity));
  Json constraints = Json::array(), dimensions = Json::array();
  for (const auto& [id, constraint] : section.constraints)
    constraints.push_back(ConstraintToJson(id, constraint));
  for (const auto& [id, dimension] : section.dimensions) dimensions.push_back(DimensionToJson(id, dimension));
  return {{"name", ToUtf8(section.name)},
          {"next_id", section.next_id},
          {"next_constraint", section.next_constraint},
          {"next_dimension", section.next_dimension},
          {"intent_manager", section.intent_manager},
          {"entities", std::move(entities)},
          {"constraints", std::move(constraints)},
          {"dimensions", std::move(dimensions)}};
}

std::shared_ptr<SectionData> SectionFromJson(const Json& json) {
  auto section = std::make_shared<SectionData>();
  section->name = FromUtf8(json.at("name").get<std::string>());
  section->next_id = json.at("next_id").get<int>();
  section->intent_manager = json.at("intent_manager").get<bool>();
  section->next_constraint = json.at("next_constraint").get<int>();
  section->next_dimension = json.at("next_dimension").get<int>();
  ReadNumbered(json.at("entities"), section->next_id, "entity", EntityFromJson, section->entities);
  ReadNumbered(json.at("constraints"), section->next_constraint, "constraint", ConstraintFromJson,
               section->constraints);
  ReadNumbered(json.at("dimensions"), section->next_dimension, "dimension", DimensionFromJson,
               section->dimensions);
  return section;
}

}  // namespace bench
