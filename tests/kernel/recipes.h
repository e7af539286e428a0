// Recipes as the host writes them, and what the kernel makes of them.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

namespace bench::kernel::testing {

using nlohmann::json;

// Lists of their own: braces around a single JSON value mean different things to different compilers.
using Entities = std::vector<json>;
using Recipes = std::vector<json>;
using Corners = std::vector<std::pair<double, double>>;

inline constexpr double kPi = std::numbers::pi;

// The datum planes of the start part.
json Front();
json Top();
json Right();
// Parallel to FRONT, at that height.
json FrontAt(double z);

json Point(int id, double x, double y);
json Line(int id, double x1, double y1, double x2, double y2);
json Centerline(int id, double x1, double y1, double x2, double y2);
json Arc(int id, double x, double y, double radius, double start, double end);
json Circle(int id, double x, double y, double radius);
json Ellipse(int id, double x, double y, double radius_x, double radius_y);
json Spline(int id, const Corners& points);
json AsConstruction(json entity);

// The sides of a polygon with the ids first, first + 1, …
Entities Polygon(int first, const Corners& corners);
// Its sides are bottom, right, top, left.
Entities Rectangle(int first, double x, double y, double width, double height);
// 2a long between the centres of its ends, 2r wide, about the origin.
Entities Slot(int first, double a, double r);
// On FRONT as feature 41, with a corner in the origin.
json Brick(double width = 40, double height = 30, double depth = 10);
// With its axis, about which it turns into a ball of radius 10.
Entities HalfDisc();
// All entities of lists and single ones.
inline void AddEntities(Entities& all, const json& entity) {
  all.push_back(entity);
}
inline void AddEntities(Entities& all, const Entities& list) {
  all.insert(all.end(), list.begin(), list.end());
}
template <typename... Parts>
Entities Together(const Parts&... parts) {
  Entities all;
  (AddEntities(all, parts), ...);
  return all;
}

struct Extrusion {
  std::string operation = "join";
  std::string mode = "blind";
  double depth = 10;
  double depth2 = 0;
  bool reverse = false;
  double taper_deg = 0;
};

json SketchRecipe(int feature, const json& plane, const Entities& entities);
json Extrude(int feature, const json& plane, const Entities& entities, const Extrusion& how = {});
json Revolve(int feature, const json& plane, const Entities& entities, double angle_deg,
             const std::string& operation = "join", bool reverse = false);

// The answer's "ok"; fails the test when there is none.
json Regenerate(const Recipes& recipes);
// The same, after checking that no feature was refused.
json Built(const Recipes& recipes);
// The reason for which the last recipe was refused; empty when it was not.
std::string Reason(const Recipes& recipes);

// That the last recipe is refused for that reason, and what stood before it stands.
void ExpectRefused(Recipes recipes, const json& last, const std::string& reason);

// The entry of a list that has the key.
json Named(const json& list, const std::string& key);
json FaceNamed(const json& part, const std::string& key);
std::vector<std::string> Keys(const json& list);
double Volume(const json& part);
// "low" and "high" in one array of six.
std::vector<double> Box(const json& holder);

// To 1e-6 of the expected number, or of 1 where that is small.
void ExpectClose(double actual, double expected, const std::string& what = {});
void ExpectClose(const json& actual, const std::vector<double>& expected, const std::string& what = {});

}  // namespace bench::kernel::testing
