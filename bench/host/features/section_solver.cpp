#include "bench/host/features/section_solver.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "bench/host/features/section_recipe.h"
#include "bench/host/host.h"
#include "bench/host/kernel_link/kernel_answer.h"

namespace bench {
namespace {

using nlohmann::json;

constexpr int kAngleDimension = 12;

// The kernel's words for the host's numbers; null for a number that means nothing to it.
const char* ConstraintWord(int type) {
  constexpr const char* kWords[] = {"coincident",    "horizontal",   "vertical", "coincident",  "tangent",
                                    "perpendicular", "equal_radius", "parallel", "equal_length"};
  return type >= 0 && type < static_cast<int>(std::size(kWords)) ? kWords[type] : nullptr;
}

const char* DimensionWord(int type) {
  switch (type) {
    case 1:
      return "length";
    case 3:
      return "radius";
    case 4:
      return "diameter";
    case kAngleDimension:
      return "angle";
    default:
      return nullptr;
  }
}

json Targets(const std::vector<SectionTarget>& targets) {
  json list = json::array();
  for (const SectionTarget& target : targets)
    list.push_back({{"entity", target.entity}, {"point", target.point}});
  return list;
}

// The solver works to fixed tolerances: a power of two brings the section to some hundred units across.
double SolverScale(const SectionData& section) {
  double largest = 0;
  const auto widen = [&](const Point2& point) {
    largest = std::max({largest, std::abs(point[0]), std::abs(point[1])});
  };
  for (const auto& [id, entity] : section.entities) {
    widen(entity.first);
    widen(entity.second);
    for (const Point2& point : entity.points) widen(point);
    largest = std::max({largest, entity.radius, entity.second_radius});
  }
  if (!(largest > 0) || !std::isfinite(largest)) return 1;
  int exponent = 0;
  std::frexp(100 / largest, &exponent);
  return std::ldexp(1, exponent);
}

Point2 ReadPoint(const json& pair, double scale) {
  return {pair.at(0).get<double>() / scale, pair.at(1).get<double>() / scale};
}

void ReadEntity(const json& moved, double scale, SectionEntity& entity) {
  for (const char* key : {"at", "from", "center"})
    if (moved.contains(key)) entity.first = ReadPoint(moved[key], scale);
  if (moved.contains("to")) entity.second = ReadPoint(moved["to"], scale);
  if (moved.contains("radius")) entity.radius = moved["radius"].get<double>() / scale;
  if (moved.contains("start")) entity.start_angle = moved["start"].get<double>();
  if (moved.contains("end")) entity.end_angle = moved["end"].get<double>();
}

// The section as the answer has it. Throws when the answer isn't about this section.
SectionData Solved(const SectionData& section, const json& answer, double scale, std::size_t first_dimension,
                   std::optional<int> measured) {
  SectionData solved = section;
  for (const json& moved : answer.at("entities"))
    ReadEntity(moved, scale, solved.entities.at(IntegerAt(moved, "id")));
  std::size_t place = first_dimension;
  for (auto& [id, dimension] : solved.dimensions) {
    const double unit = dimension.type == kAngleDimension ? 1 : scale;
    if (id == measured) dimension.value = answer.at("values").at(place).get<double>() / unit;
    ++place;
  }
  return solved;
}

}  // namespace

SolvedSection SolveSection(const SectionData& section, std::optional<int> measured) {
  const double scale = SolverScale(section);
  json conditions = json::array();
  for (const auto& [id, constraint] : section.constraints) {
    const char* word = ConstraintWord(constraint.type);
    if (!word) return {std::nullopt, "constraint " + std::to_string(id) + " is of an unknown type"};
    conditions.push_back({{"kind", word}, {"targets", Targets(constraint.targets)}});
  }
  const std::size_t first_dimension = conditions.size();
  for (const auto& [id, dimension] : section.dimensions) {
    const char* word = DimensionWord(dimension.type);
    if (!word) return {std::nullopt, "dimension " + std::to_string(id) + " is of an unknown type"};
    conditions.push_back({{"kind", word}, {"targets", Targets(dimension.targets)}});
    const double unit = dimension.type == kAngleDimension ? 1 : scale;
    if (id != measured) conditions.back()["value"] = dimension.value * unit;
  }
  const auto answer = TheHost().kernel.Ask("solve", R"("entities":)" + EntitiesRecipe(section, scale).dump() +
                                                        R"(,"conditions":)" + conditions.dump());
  if (!answer) return {std::nullopt, "the geometry kernel gives no answer", true};
  if (answer->contains("refused")) return {std::nullopt, answer->at("refused").get<std::string>()};

  try {
    return {Solved(section, *answer, scale, first_dimension, measured), {}};
  } catch (const std::exception& exception) {
    Complain(std::string("the geometry kernel's answer can't be read: ") + exception.what());
    return {std::nullopt, "the geometry kernel's answer can't be read", true};
  }
}

}  // namespace bench
