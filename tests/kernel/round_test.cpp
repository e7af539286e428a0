#include <gtest/gtest.h>

#include <algorithm>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Edges = std::vector<std::string>;

// What a ball of radius 1 leaves in a square corner.
constexpr double kCorner = 1 - kPi / 4;

json Block(double width = 40, double height = 30, double depth = 10) {
  return Extrude(41, Front(), Rectangle(1, 0, 0, width, height), {.depth = depth});
}

json Round(const Edges& edges, double radius, bool runs_on = true, int feature = 50) {
  return {
      {"feature", feature}, {"kind", "round"}, {"edges", edges}, {"radius", radius}, {"runs_on", runs_on}};
}

Edges AllEdges(const json& recipe) {
  return Keys(Built({recipe})["edges"]);
}

int Count(const json& part, const std::string& type) {
  const auto& faces = part["faces"];
  return static_cast<int>(
      std::count_if(faces.begin(), faces.end(), [&](const json& face) { return face["type"] == type; }));
}

TEST(Round, TakesMaterialOffEdgesAndPutsItIntoCorners) {
  const json cube = Block(10, 10, 10);
  const json angle = Extrude(
      41, Front(), Polygon(1, {{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}}), {.depth = 8});
  const json drum = Extrude(41, Front(), {Circle(1, 0, 0, 10)}, {.depth = 20});
  const json ring = Extrude(41, Front(), {Circle(1, 0, 0, 20), Circle(2, 0, 0, 10)}, {.depth = 20});
  const json slot = Extrude(41, Front(), Slot(1, 15, 10), {.depth = 20});
  // The corner's centre lies r / 6 / kCorner outside the ball's; by Pappus it runs 2π around the axis.
  const auto rim = [](double centre, double r, double side) {
    return 2 * kPi * (centre * kCorner * r * r + side * r * r * r / 6);
  };
  struct Case {
    const char* what;
    json base;
    Edges edges;
    double radius;
    double volume;
    const char* type;
    int faces;
  };
  const Case cases[] = {
      {"straight edge", Block(), {"41:end|41:side:1"}, 3, 40 * 30 * 10 - kCorner * 9 * 40, "cylinder", 1},
      {"four uprights",
       Block(),
       {"41:side:1|41:side:2", "41:side:2|41:side:3", "41:side:3|41:side:4", "41:side:1|41:side:4"},
       5,
       40 * 30 * 10 - 4 * kCorner * 25 * 10,
       "cylinder",
       4},
      // (a - 2r)³ + 6 r (a - 2r)² + 3 π r² (a - 2r) + 4/3 π r³ for a = 10, r = 2
      {"cube", cube, AllEdges(cube), 2, 216 + 6 * 2 * 36 + 3 * kPi * 4 * 6 + 4.0 / 3 * kPi * 8, "sphere", 8},
      {"concave edge", angle, {"41:side:3|41:side:4"}, 4, 300 * 8 + kCorner * 16 * 8, "cylinder", 1},
      {"outer rim", drum, {"41:end|41:side:1"}, 2, kPi * 100 * 20 - rim(8, 2, 1), "torus", 1},
      {"inner rim", ring, {"41:end|41:side:2"}, 2, kPi * 300 * 20 - rim(12, 2, -1), "torus", 1},
      // Two straights of 30 and, together, the rim of a full circle.
      {"runs on",
       slot,
       {"41:end|41:side:1"},
       2,
       (30 * 20 + kPi * 100) * 20 - 2 * 30 * kCorner * 4 - rim(8, 2, 1),
       "torus",
       2},
  };
  for (const Case& one : cases) {
    const json part = Built({one.base, Round(one.edges, one.radius)});
    EXPECT_NEAR(Volume(part) / one.volume, 1, 1e-6) << one.what;
    EXPECT_EQ(Count(part, one.type) - Count(Built({one.base}), one.type), one.faces) << one.what;
    const auto before = Keys(Built({one.base})["faces"]), after = Keys(part["faces"]);
    for (const std::string& key : before)
      EXPECT_EQ(std::count(after.begin(), after.end(), key), 1) << one.what << " " << key;
  }
}

TEST(Round, IsNamedAfterItsEdges) {
  const Edges at_corner{"41:end|41:side:1", "41:end|41:side:2", "41:side:1|41:side:2"};
  const auto keys = [&](double width, double radius, const Recipes& more = {}) {
    Recipes recipes{Block(width), Round(at_corner, radius)};
    recipes.insert(recipes.end(), more.begin(), more.end());
    return Keys(Built(recipes)["faces"]);
  };
  const auto small = keys(40, 1);
  EXPECT_EQ(
      std::vector<std::string>(small.begin() + 6, small.end()),
      (std::vector<std::string>{"50:round:(41:end|41:side:1)", "50:round:(41:end|41:side:2)",
                                "50:round:(41:side:1|41:side:2)", "50:corner:(41:end|41:side:1|41:side:2)"}));
  EXPECT_EQ(keys(25, 4), small);
  auto more = keys(
      40, 1, {Extrude(60, FrontAt(10), {Circle(5, 20, 15, 3)}), Round({"41:end|41:side:3"}, 2, true, 70)});
  for (const std::string& key : small) EXPECT_EQ(std::count(more.begin(), more.end(), key), 1) << key;
  // A round can be rounded where it ends.
  const std::string edge = "41:side:4|50:round:(41:end|41:side:1)";
  const json again = Built({Block(), Round({"41:end|41:side:1"}, 3), Round({edge}, 1, true, 60)});
  EXPECT_GT(FaceNamed(again, "60:round:(" + edge + ")")["area"].get<double>(), 0);
}

TEST(Round, LeavesOtherSolidsAlone) {
  const Recipes two{Block(), Extrude(42, Front(), Rectangle(1, 100, 0, 10, 10))};
  Recipes rounded = two;
  rounded.push_back(Round({"42:end|42:side:1"}, 2));
  const json part = Built(rounded);
  EXPECT_EQ(part["bodies"], 2);
  ExpectClose(Volume(part), 12000 + 1000 - kCorner * 4 * 10);
}

TEST(Round, IsRefusedWhereItDoesNotFit) {
  const json cube = Block(10, 10, 10);
  const json slot = Extrude(41, Front(), Slot(1, 15, 10));
  // A hole from below whose end is 1 behind the wall and 2 under the top. A round of 8 about (8, 12) meets
  // it: (1, 18) is √(7² + 6²) = 9.2 from there.
  const json hole =
      Extrude(45, Front(), {Circle(1, 20, 2.5, 1.5)}, {.operation = "cut", .mode = "blind", .depth = 18});
  const Edges opposite{"41:end|41:side:1", "41:end|41:side:3"};
  const std::string no_room = "The body has no room for the round.";
  struct Case {
    Recipes before;
    Edges edges;
    double radius;
    bool runs_on;
    std::string reason;
  };
  const Case cases[] = {
      {{cube}, AllEdges(cube), 6, true, no_room},
      {{cube}, AllEdges(cube), 5.0001, true, no_room},
      {{cube}, opposite, 6, true, no_room},
      {{cube}, opposite, 5, true, no_room},
      {{cube}, {"41:end|41:side:1"}, 12, true, no_room},
      {{Block(40, 30, 20), hole}, {"41:end|41:side:1"}, 8, true, no_room},
      {{cube}, {"41:end|41:side:1"}, 0, true, "The radius must be above 0."},
      {{cube}, {"41:end|41:side:1"}, -1, true, "The radius must be above 0."},
      {{cube}, {}, 1, true, "The round names no edge."},
      {{cube}, {"41:end|41:side:9"}, 1, true, "The body has no edge 41:end|41:side:9."},
      {{slot}, {"41:end|41:side:1"}, 1, false, "The round would run on to edge 41:end|41:side:2."},
      {{slot},
       {"41:side:1|41:side:2"},
       1,
       true,
       "Edge 41:side:1|41:side:2 can't take a round: its faces run into each other."},
  };
  for (const Case& one : cases) {
    Recipes recipes = one.before;
    const double standing = Volume(Built(recipes));
    recipes.push_back(Round(one.edges, one.radius, one.runs_on));
    EXPECT_EQ(Reason(recipes), one.reason);
    ExpectClose(Volume(Regenerate(recipes)), standing);
  }
}

}  // namespace
}  // namespace bench::kernel::testing
