// Requests about a whole model, and models that several tests ask about.
#pragma once

#include "bench/kernel/requests.h"
#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {

// A plate of 20 · 30 · 10 with a corner in the origin and a hole of radius 3.
inline Recipes Plate() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30)),
          Extrude(2, Front(), {Circle(1, 10, 10, 3)}, {.operation = "cut", .mode = "through_all"})};
}
inline constexpr double kPlate = 6000 - 90 * kPi;

// A part, or an assembly, of a scene.
inline json PartOf(const Recipes& recipes, const std::string& name = "PART") {
  return {{"name", name}, {"recipes", recipes}};
}
inline json AssemblyOf(const std::vector<json>& components, const std::string& name = "ASSEMBLY") {
  return {{"name", name}, {"components", components}};
}

inline std::vector<double> Shift(double x, double y, double z) {
  return {1, 0, 0, x, 0, 1, 0, y, 0, 0, 1, z};
}
// Turned about the z axis, then shifted.
inline std::vector<double> Turned(double degrees, double x, double y, double z) {
  const double c = std::cos(degrees * kPi / 180), s = std::sin(degrees * kPi / 180);
  return {c, -s, 0, x, s, c, 0, y, 0, 0, 1, z};
}
inline json Placed(int id, int model, const std::vector<double>& place) {
  return {{"id", id}, {"model", model}, {"place", place}};
}

// The whole answer; the last model is the root.
inline json Ask(const std::string& task, const std::vector<json>& models, json request = json::object()) {
  Requests requests;
  request.update({{"id", 1}, {"do", task}, {"models", models}, {"root", models.size() - 1}});
  return json::parse(requests.Answer(request.dump()));
}

}  // namespace bench::kernel::testing
