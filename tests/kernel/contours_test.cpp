#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Contour = std::vector<std::string>;

std::vector<Contour> ContoursOf(const json& part, const std::string& face) {
  return FaceNamed(part, face)["contours"].get<std::vector<Contour>>();
}

Recipes Plate() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 40, 30)),
          Extrude(2, Front(), {Circle(7, 15, 12, 4)}, {.operation = "cut", .mode = "through_all"})};
}

// A cylinder with a hole across it: wherever the seam of its wall lies, the hole breaks through it or
// opposite of it.
Recipes CrossedCylinder() {
  return {Extrude(1, Front(), {Circle(1, 0, 0, 10)}, {.depth = 40}),
          Extrude(2, Right(), {Circle(1, -20, 0, 3)}, {.operation = "cut", .mode = "symmetric", .depth = 30}),
          Extrude(3, Top(), {Circle(1, 0, -10, 3)}, {.operation = "cut", .mode = "symmetric", .depth = 30})};
}

// Two blocks that touch along an edge.
Recipes TouchingBlocks() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 10, 10)), Extrude(2, Front(), Rectangle(1, 10, 10, 10, 10))};
}

TEST(Contours, OfAPlaneFaceAreItsOutlineAndThenItsHoles) {
  const auto contours = ContoursOf(Built(Plate()), "1:end");
  ASSERT_EQ(contours.size(), 2u);
  EXPECT_EQ(contours[1], Contour{"1:end|2:side:7"});

  // Once around the sides 1, 2, 3, 4, one way or the other: opposite ones are two steps apart.
  ASSERT_EQ(contours[0].size(), 4u);
  const auto place = [&](const std::string& edge) {
    return std::ranges::find(contours[0], edge) - contours[0].begin();
  };
  EXPECT_EQ(std::abs(place("1:end|1:side:1") - place("1:end|1:side:3")), 2);
  EXPECT_EQ(std::abs(place("1:end|1:side:2") - place("1:end|1:side:4")), 2);
}

TEST(Contours, LeaveTheSeamOut) {
  // Two rims, and four places where the holes break through, of which one lies across the seam.
  EXPECT_EQ(ContoursOf(Built(Plate()), "2:side:7").size(), 2u);
  EXPECT_EQ(ContoursOf(Built(CrossedCylinder()), "1:side:1").size(), 6u);
  const Entities half_disc = {Arc(1, 0, 0, 10, -kPi / 2, kPi / 2), Line(2, 0, 10, 0, -10),
                              Centerline(9, 0, 0, 0, 1)};
  EXPECT_TRUE(ContoursOf(Built({Revolve(1, Top(), half_disc, 360)}), "1:side:1").empty());
}

TEST(Contours, HaveEachEdgeOnceOnEachOfItsFaces) {
  for (const Recipes& recipes : {Plate(), CrossedCylinder(), TouchingBlocks()}) {
    const json part = Built(recipes);
    std::map<std::pair<std::string, std::string>, int> times;
    for (const json& face : part["faces"])
      for (const json& contour : face["contours"])
        for (const json& edge : contour) ++times[{face["key"], edge}];
    for (const json& edge : part["edges"])
      for (const json& face : edge["faces"])
        EXPECT_EQ((times[{face, edge["key"]}]), 1) << face << " " << edge["key"];
    EXPECT_EQ(times.size(), 2 * part["edges"].size());
  }
}

}  // namespace
}  // namespace bench::kernel::testing
