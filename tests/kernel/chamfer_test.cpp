#include <gtest/gtest.h>

#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Edges = std::vector<std::string>;

// 40 along x, 30 along y, 10 high: 12000.
json Block() {
  return Extrude(41, Front(), Rectangle(1, 0, 0, 40, 30));
}

json Chamfer(const Edges& edges, const json& legs) {
  json recipe = {{"feature", 50}, {"kind", "chamfer"}, {"edges", edges}, {"runs_on", true}};
  recipe.update(legs);
  return recipe;
}

json Equal(double distance) {
  return {{"scheme", "equal"}, {"distance", distance}};
}

json Two(double distance, double distance2, const std::string& reference) {
  return {{"scheme", "two"}, {"distance", distance}, {"distance2", distance2}, {"reference", reference}};
}

json Angle(double distance, double angle_deg, const std::string& reference) {
  return {{"scheme", "angle"}, {"distance", distance}, {"angle_deg", angle_deg}, {"reference", reference}};
}

TEST(Chamfer, TakesATriangleOffEdgesAndPutsItIntoCorners) {
  const json cube = Extrude(41, Front(), Rectangle(1, 0, 0, 10, 10));
  const json angle = Extrude(
      41, Front(), Polygon(1, {{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}}), {.depth = 8});
  const json drum = Extrude(41, Front(), {Circle(1, 0, 0, 10)});
  struct Case {
    const char* what;
    json base;
    Edges edges;
    json legs;
    double volume;
  };
  const double tan30 = 1 / std::sqrt(3);
  const Case cases[] = {
      {"equal", Block(), {"41:end|41:side:1"}, Equal(3), 12000 - 9.0 / 2 * 40},
      {"two", Block(), {"41:end|41:side:1"}, Two(4, 2, "41:end"), 12000 - 4.0 * 2 / 2 * 40},
      {"angle", Block(), {"41:end|41:side:1"}, Angle(4, 30, "41:end"), 12000 - 4 * 4 * tan30 / 2 * 40},
      {"concave", angle, {"41:side:3|41:side:4"}, Equal(3), 300 * 8 + 9.0 / 2 * 8},
      // The triangle's centre runs on a radius of 10 - 3/3.
      {"rim", drum, {"41:end|41:side:1"}, Equal(3), kPi * 1000 - 9.0 / 2 * 2 * kPi * 9},
      // 8³, six slabs of 8 · 8 · 1, twelve halves of 1 · 1 · 8, and of each corner the sixth that three
      // bevels and the flat between them leave.
      {"cube", cube, Keys(Built({cube})["edges"]), Equal(1), 512 + 6 * 64 + 12 * 4 + 8.0 / 6},
  };
  for (const Case& one : cases)
    EXPECT_NEAR(Volume(Built({one.base, Chamfer(one.edges, one.legs)})) / one.volume, 1, 1e-6) << one.what;
}

TEST(Chamfer, MeasuresTheDistanceOnTheReferenceSurface) {
  struct Case {
    json legs;
    double top, side;  // what is left of the two faces of the edge, 40 by 30 and 40 by 10
  };
  const Case cases[] = {
      {Two(4, 2, "41:end"), 40 * 26, 40 * 8},
      {Two(4, 2, "41:side:1"), 40 * 28, 40 * 6},
      {Angle(4, 60, "41:end"), 40 * 26, 40 * (10 - 4 * std::sqrt(3))},
      {Angle(4, 60, "41:side:1"), 40 * (30 - 4 * std::sqrt(3)), 40 * 6},
  };
  for (const Case& one : cases) {
    const json part = Built({Block(), Chamfer({"41:end|41:side:1"}, one.legs)});
    ExpectClose(FaceNamed(part, "41:end")["area"].get<double>(), one.top, one.legs.dump());
    ExpectClose(FaceNamed(part, "41:side:1")["area"].get<double>(), one.side, one.legs.dump());
  }
  // An edge that isn't on it is measured from the older of its faces: 4 of side:3, 2 of side:4.
  const json part =
      Built({Block(), Chamfer({"41:end|41:side:1", "41:side:3|41:side:4"}, Two(4, 2, "41:end"))});
  ExpectClose(FaceNamed(part, "41:side:3")["area"].get<double>(), (40 - 4) * 10);
}

TEST(Chamfer, IsNamedAfterItsEdges) {
  const Edges edges{"41:end|41:side:1", "41:side:3|41:side:4"};
  const auto keys = Keys(Built({Block(), Chamfer(edges, Equal(1))})["faces"]);
  EXPECT_EQ(std::vector<std::string>(keys.begin() + 6, keys.end()),
            (std::vector<std::string>{"50:chamfer:(41:end|41:side:1)", "50:chamfer:(41:side:3|41:side:4)"}));
  EXPECT_EQ(Keys(Built({Block(), Chamfer(edges, Two(2, 3, "41:end"))})["faces"]), keys);
}

TEST(Chamfer, IsRefusedWithTheReason) {
  const std::string edge = "41:end|41:side:1", no_room = "The body has no room for the chamfer.";
  const std::pair<json, std::string> cases[] = {
      {Equal(0), "The distance must be above 0."},
      {Equal(12), no_room},
      {Two(35, 2, "41:end"), no_room},
      {Two(2, 0, "41:end"), "The second distance or angle must be above 0."},
      {Two(2, 2, "41:side:2"), "The reference surface isn't at the first edge."},
      {Angle(2, 0, "41:end"), "The second distance or angle must be above 0."},
      {Angle(2, 90, "41:end"), "The angle must be below 90 degrees."},
      {Angle(9, 50, "41:end"), no_room},  // 9 tan 50° is more than 10
  };
  for (const auto& [legs, reason] : cases)
    EXPECT_EQ(Reason({Block(), Chamfer({edge}, legs)}), reason) << legs;
}

}  // namespace
}  // namespace bench::kernel::testing
