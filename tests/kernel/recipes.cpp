#include "tests/kernel/recipes.h"

#include <algorithm>
#include <cmath>

#include "bench/kernel/guard.h"
#include "bench/kernel/requests.h"

namespace bench::kernel::testing {

namespace {

class Toolkit : public ::testing::Environment {
 public:
  void SetUp() override { PrepareToolkit(); }
};

const auto* const kToolkit = ::testing::AddGlobalTestEnvironment(new Toolkit);

json Plane(const json& origin, const json& x, const json& y) {
  return {{"origin", origin}, {"x", x}, {"y", y}};
}

}  // namespace

json Front() {
  return FrontAt(0);
}
json Top() {
  return Plane({0, 0, 0}, {1, 0, 0}, {0, 0, -1});
}
json Right() {
  return Plane({0, 0, 0}, {0, 0, -1}, {0, 1, 0});
}
json FrontAt(double z) {
  return Plane({0, 0, z}, {1, 0, 0}, {0, 1, 0});
}

json Point(int id, double x, double y) {
  return {{"id", id}, {"type", "point"}, {"at", {x, y}}};
}

json Line(int id, double x1, double y1, double x2, double y2) {
  return {{"id", id}, {"type", "line"}, {"from", {x1, y1}}, {"to", {x2, y2}}};
}

json Centerline(int id, double x1, double y1, double x2, double y2) {
  json line = Line(id, x1, y1, x2, y2);
  line["type"] = "centerline";
  return line;
}

json Arc(int id, double x, double y, double radius, double start, double end) {
  return {{"id", id},         {"type", "arc"},  {"center", {x, y}},
          {"radius", radius}, {"start", start}, {"end", end}};
}

json Circle(int id, double x, double y, double radius) {
  return {{"id", id}, {"type", "circle"}, {"center", {x, y}}, {"radius", radius}};
}

json Ellipse(int id, double x, double y, double radius_x, double radius_y) {
  return {
      {"id", id}, {"type", "ellipse"}, {"center", {x, y}}, {"radius_x", radius_x}, {"radius_y", radius_y}};
}

json Spline(int id, const Corners& points) {
  return {{"id", id}, {"type", "spline"}, {"points", points}};
}

json AsConstruction(json entity) {
  entity["construction"] = true;
  return entity;
}

Entities Polygon(int first, const Corners& corners) {
  Entities sides;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const auto& from = corners[i];
    const auto& to = corners[(i + 1) % corners.size()];
    sides.push_back(Line(first + static_cast<int>(i), from.first, from.second, to.first, to.second));
  }
  return sides;
}

Entities Rectangle(int first, double x, double y, double width, double height) {
  return Polygon(first, {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}});
}

Entities Slot(int first, double a, double r) {
  return {Line(first, -a, -r, a, -r), Arc(first + 1, a, 0, r, -kPi / 2, kPi / 2),
          Line(first + 2, a, r, -a, r), Arc(first + 3, -a, 0, r, kPi / 2, 3 * kPi / 2)};
}

Entities HalfDisc() {
  return {Arc(1, 0, 0, 10, -kPi / 2, kPi / 2), Line(2, 0, 10, 0, -10), Centerline(3, 0, 0, 0, 1)};
}

json Brick(double width, double height, double depth) {
  return Extrude(41, Front(), Rectangle(1, 0, 0, width, height), {.depth = depth});
}

json SketchRecipe(int feature, const json& plane, const Entities& entities) {
  return {{"feature", feature}, {"kind", "sketch"}, {"plane", plane}, {"entities", entities}};
}

json Extrude(int feature, const json& plane, const Entities& entities, const Extrusion& how) {
  return {{"feature", feature},
          {"kind", "extrude"},
          {"plane", plane},
          {"entities", entities},
          {"operation", how.operation},
          {"extent", {{"mode", how.mode}, {"depth", how.depth}, {"depth2", how.depth2}}},
          {"reverse", how.reverse},
          {"taper_deg", how.taper_deg}};
}

json Revolve(int feature, const json& plane, const Entities& entities, double angle_deg,
             const std::string& operation, bool reverse) {
  return {{"feature", feature},     {"kind", "revolve"},      {"plane", plane},    {"entities", entities},
          {"operation", operation}, {"angle_deg", angle_deg}, {"reverse", reverse}};
}

json Regenerate(const Recipes& recipes) {
  Requests requests;
  const json request = {{"id", 1}, {"do", "regenerate"}, {"recipes", recipes}};
  const json answer = json::parse(requests.Answer(request.dump()));
  EXPECT_FALSE(answer.contains("error")) << answer;
  return answer.value("ok", json::object());
}

json Built(const Recipes& recipes) {
  const json part = Regenerate(recipes);
  for (const json& feature : part.at("features")) EXPECT_EQ(feature.at("status"), "ok") << feature;
  return part;
}

std::string Reason(const Recipes& recipes) {
  const json part = Regenerate(recipes);
  return part.at("features").back().value("reason", "");
}

void ExpectRefused(Recipes recipes, const json& last, const std::string& reason) {
  const double standing = Volume(Built(recipes));
  recipes.push_back(last);
  const json part = Regenerate(recipes);
  EXPECT_EQ(part.at("features").back().value("reason", ""), reason) << last;
  ExpectClose(Volume(part), standing);
}

json Named(const json& list, const std::string& key) {
  for (const json& entry : list) {
    if (entry.at("key") == key) return entry;
  }
  ADD_FAILURE() << "no entry " << key;
  return json::object();
}

json FaceNamed(const json& part, const std::string& key) {
  return Named(part.at("faces"), key);
}

std::vector<std::string> Keys(const json& list) {
  std::vector<std::string> keys;
  for (const json& entry : list) keys.push_back(entry.at("key"));
  return keys;
}

double Volume(const json& part) {
  return part.at("mass").is_null() ? 0 : part["mass"].at("volume").get<double>();
}

std::vector<double> Box(const json& holder) {
  std::vector<double> box = holder.at("low").get<std::vector<double>>();
  const auto high = holder.at("high").get<std::vector<double>>();
  box.insert(box.end(), high.begin(), high.end());
  return box;
}

void ExpectClose(double actual, double expected, const std::string& what) {
  EXPECT_NEAR(actual, expected, 1e-6 * std::max(1.0, std::abs(expected))) << what;
}

void ExpectClose(const json& actual, const std::vector<double>& expected, const std::string& what) {
  ASSERT_EQ(actual.size(), expected.size()) << what;
  for (std::size_t i = 0; i < expected.size(); ++i)
    ExpectClose(actual[i].get<double>(), expected[i], what + " [" + std::to_string(i) + "]");
}

}  // namespace bench::kernel::testing
