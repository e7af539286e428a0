// What is done to a body as a whole: shells, holes, moves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

json Shell(int feature, double thickness, const std::vector<std::string>& removed = {}) {
  return {{"feature", feature}, {"kind", "shell"}, {"thickness", thickness}, {"removed", removed}};
}

// A block of 40 × 30 × 20 on FRONT.
json Block() {
  return Extrude(1, Front(), Rectangle(1, 0, 0, 40, 30), {.depth = 20});
}

TEST(Shell, LeavesWallsOfOneThickness) {
  using Faces = std::vector<std::string>;
  const auto expect = [](const char* what, const json& solid, const Faces& removed, double volume,
                         std::size_t faces) {
    const json part = Built({solid, Shell(2, 2, removed)});
    ExpectClose(Volume(part), volume, what);
    EXPECT_EQ(part["faces"].size(), faces) << what;
    EXPECT_EQ(part["bodies"], 1) << what;
  };
  // 24000 less the inner block, 36 × 26 × 16; where a face is open, it reaches through there.
  expect("closed", Block(), {}, 24000 - 36 * 26 * 16, 12);
  expect("open at the top", Block(), {"1:end"}, 24000 - 36 * 26 * 18, 11);
  expect("a pipe", Block(), {"1:start", "1:end"}, 24000 - 36 * 26 * 20, 10);
  expect("open at a corner", Block(), {"1:end", "1:side:1", "1:side:2"}, 24000 - 38 * 28 * 18, 9);
  // The inner step: 36 × 6 and above it 11 × 20, at 2 from all sides.
  const Entities step = Polygon(1, {{0, 0}, {40, 0}, {40, 10}, {15, 10}, {15, 30}, {0, 30}});
  expect("a step", Extrude(1, Front(), step, {.depth = 20}), {"1:end"}, (400 + 300) * 20 - (216 + 220) * 18,
         15);
  // Around the hole of radius 5 stands a wall of radius 7.
  const Entities plate_with_hole = Together(Rectangle(1, 0, 0, 40, 30), Circle(5, 20, 15, 5));
  expect("a tube inside", Extrude(1, Front(), plate_with_hole, {.depth = 20}), {"1:end"},
         (1200 - 25 * kPi) * 20 - (36 * 26 - 49 * kPi) * 18, 14);
  expect("a cup", Extrude(1, Front(), {Circle(1, 0, 0, 10)}, {.depth = 20}), {"1:end"},
         100 * kPi * 20 - 64 * kPi * 18, 5);
  expect("a ball", Revolve(1, Front(), HalfDisc(), 360), {}, 4.0 / 3 * kPi * (1000 - 512), 2);
  // A cone's wall leans by 45 degrees: inside, the axis starts 2 above the floor and ends 2√2 below the tip.
  const Entities triangle = Together(Polygon(1, {{0, 0}, {10, 0}, {0, 10}}), Centerline(9, 0, 0, 0, 1));
  expect("a cone", Revolve(1, Front(), triangle, 360), {},
         kPi / 3 * (1000 - std::pow(8 - 2 * std::sqrt(2), 3)), 4);
}

TEST(Shell, ClosedOneHasItsVoidTurnedIntoTheMaterial) {
  const json part = Built({Block(), Shell(2, 2)});
  // Out of the material is down into the void, from its ceiling at 18.
  const json ceiling = FaceNamed(part, "2:inner:1:end");
  ExpectClose(ceiling["normal"], {0, 0, -1});
  ExpectClose(Box(ceiling), {2, 2, 18, 38, 28, 18});
  ExpectClose(Box(part["outline"]), {0, 0, 0, 40, 30, 20});
  // Outside 2 · (1200 + 800 + 600), inside 2 · (936 + 576 + 416).
  ExpectClose(part["mass"]["area"].get<double>(), 5200 + 3856);
  ExpectClose(part["mass"]["center"], {20, 15, 10});
}

TEST(Shell, NamesInnerFacesAfterOuterOnesAndTheRimAsItWas) {
  const json part = Built({Block(), Shell(2, 2, {"1:end"})});
  EXPECT_EQ(Keys(part["faces"]),
            (std::vector<std::string>{"1:start", "1:end", "1:side:1", "1:side:2", "1:side:3", "1:side:4",
                                      "2:inner:1:start", "2:inner:1:side:1", "2:inner:1:side:2",
                                      "2:inner:1:side:3", "2:inner:1:side:4"}));
  ExpectClose(FaceNamed(part, "1:end")["area"].get<double>(), 1200 - 36 * 26);
}

TEST(Shell, HollowsEachOfSeveralSolids) {
  // A second block of 10 × 10 × 10 beside the first stays closed when only the first is opened.
  const json beside = Extrude(2, Front(), Rectangle(1, 100, 0, 10, 10), {.depth = 10});
  const json part = Built({Block(), beside, Shell(3, 2, {"1:end"})});
  ExpectClose(Volume(part), 24000 - 36 * 26 * 18 + 1000 - 6 * 6 * 6);
  EXPECT_EQ(part["bodies"], 2);

  // Where a face lies in parts, their inner faces are told apart.
  const json slot = Extrude(2, FrontAt(20), Rectangle(1, 18, 0, 4, 30), {"cut", "blind", 5, 0, true});
  const auto keys = Keys(Built({Block(), slot, Shell(3, 1)})["faces"]);
  EXPECT_EQ(std::count(keys.begin(), keys.end(), "3:inner:1:end"), 1);
  EXPECT_EQ(std::count(keys.begin(), keys.end(), "3:inner:1:end.2"), 1);
}

TEST(Shell, IsRefusedWithTheReason) {
  const auto all = Keys(Built({Block()})["faces"]);
  const std::string does_not_fit = "The thickness doesn't fit into the body.";
  // Two blocks of 20, joined by a neck that is 6 wide.
  const Entities neck =
      Polygon(1, {{0, 0}, {60, 0}, {60, 20}, {40, 20}, {40, 6}, {20, 6}, {20, 20}, {0, 20}});
  const json dumbbell = Extrude(1, Front(), neck, {.depth = 20});
  struct Case {
    std::string reason;
    json solid;
    double thickness;
    std::vector<std::string> removed;
  };
  const Case cases[] = {
      {"The thickness must be above 0.", Block(), 0, {}},
      // The block is 20 high: 10 leaves nothing, 12 turns the inner block over.
      {does_not_fit, Block(), 10, {}},
      {does_not_fit, Block(), 12, {}},
      {does_not_fit, Block(), 15, {"1:end"}},
      {does_not_fit, dumbbell, 4, {"1:end"}},
      {does_not_fit, Extrude(1, Front(), {Circle(1, 0, 0, 5)}, {.depth = 20}), 6, {"1:end"}},
      {"A shell can't remove all faces of a solid.", Block(), 2, all},
      {"The body has no face 1:side:9.", Block(), 2, {"1:side:9"}},
  };
  for (const Case& one : cases)
    EXPECT_EQ(Reason({one.solid, Shell(2, one.thickness, one.removed)}), one.reason) << one.thickness;
  ExpectClose(Volume(Built({dumbbell, Shell(2, 2, {"1:end"})})),
              (800 + 120) * 20.0 - (2 * 16 * 16 + 24 * 2) * 18);
  EXPECT_EQ(Reason({SketchRecipe(1, Front(), {Circle(1, 0, 0, 5)}), Shell(2, 2)}),
            "There is no body to shell.");
}

json Hole(int feature, const std::string& point, double diameter, double depth, const json& direction = {}) {
  json recipe = {
      {"feature", feature}, {"kind", "hole"}, {"point", point}, {"diameter", diameter}, {"depth", depth}};
  if (!direction.is_null()) recipe["direction"] = direction;
  return recipe;
}

// The block and sketches with points: one on each of FRONT, the top and in the air.
Recipes Spotted() {
  return {Block(),
          SketchRecipe(2, Front(), {Point(1, 10, 10), Point(2, 100, 10), AsConstruction(Point(3, 5, 5))}),
          SketchRecipe(3, FrontAt(20), {Point(1, 30, 20)})};
}

Recipes With(Recipes recipes, const json& last) {
  recipes.push_back(last);
  return recipes;
}

constexpr double kBlock = 40 * 30 * 20;

TEST(Hole, IsACylinderFromItsPointAlongItsDirection) {
  const json part = Built(With(Spotted(), Hole(4, "2:point:1", 6, 12, {0, 0, 1})));
  ExpectClose(Volume(part), kBlock - 9 * kPi * 12);
  const json side = FaceNamed(part, "4:side");
  EXPECT_EQ(side["type"], "cylinder");
  ExpectClose(side["radius"].get<double>(), 3);
  ExpectClose(Box(side), {7, 7, 0, 13, 13, 12});
  // The floor looks back to where the drill came from.
  ExpectClose(FaceNamed(part, "4:end")["normal"], {0, 0, -1});
  EXPECT_EQ(part["faces"].size(), 8u);
}

TEST(Hole, WithoutADirectionGoesIntoTheMaterialUnderItsPoint) {
  // From FRONT upwards, from the top downwards; 25 is through.
  ExpectClose(Box(FaceNamed(Built(With(Spotted(), Hole(4, "2:point:1", 6, 5))), "4:side")),
              {7, 7, 0, 13, 13, 5});
  ExpectClose(Box(FaceNamed(Built(With(Spotted(), Hole(4, "3:point:1", 4, 5))), "4:side")),
              {28, 18, 15, 32, 22, 20});
  ExpectClose(Volume(Built(With(Spotted(), Hole(4, "3:point:1", 4, 25)))), kBlock - 4 * kPi * 20);
}

TEST(Hole, IsRefusedWithTheReason) {
  const json up = {0, 0, 1}, down = {0, 0, -1};
  const std::pair<std::string, json> cases[] = {
      {"The diameter must be above 0.", Hole(4, "2:point:1", 0, 5, up)},
      {"The depth must be above 0.", Hole(4, "2:point:1", 5, -1, up)},
      {"The cut removes nothing from the body.", Hole(4, "2:point:1", 5, 5, down)},
      {"The point lies on no face of the body.", Hole(4, "2:point:2", 5, 5)},
      {"There is no sketch point 2:point:3.", Hole(4, "2:point:3", 5, 5, up)},
  };
  for (const auto& [reason, hole] : cases) EXPECT_EQ(Reason(With(Spotted(), hole)), reason);
  EXPECT_EQ(Reason({SketchRecipe(2, Front(), {Point(1, 0, 0)}), Hole(4, "2:point:1", 5, 5, up)}),
            "There is no body to drill.");
}

json Move(int feature, const json& x, const json& y, const json& z, const json& origin) {
  return {{"feature", feature}, {"kind", "move"}, {"x", x}, {"y", y}, {"z", z}, {"origin", origin}};
}

// A quarter turn about +Z, right-handed, and then 100 along X.
json QuarterTurn(int feature) {
  return Move(feature, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {100, 0, 0});
}

// With a slot through its top, which leaves two faces of one name on it.
Recipes SlottedBlock() {
  return {Block(), Extrude(2, FrontAt(20), Rectangle(1, 10, 0, 4, 30), {"cut", "blind", 5, 0, true})};
}

TEST(Move, TakesTheBodyAlongAndLeavesSketches) {
  Recipes recipes = SlottedBlock();
  recipes.insert(recipes.begin(), SketchRecipe(3, Front(), {Point(1, 10, 5)}));
  recipes.push_back(QuarterTurn(4));
  const json part = Built(recipes);
  // x 0..40 becomes y, y 0..30 becomes 100 - y.
  ExpectClose(Box(part["outline"]), {70, 0, 0, 100, 40, 20});
  ExpectClose(Volume(part), 40 * 30 * 20 - 4 * 30 * 5);
  ExpectClose(Named(part["points"], "3:point:1")["at"], {10, 5, 0});

  // What follows meets the body where it is now.
  recipes.push_back(Extrude(5, FrontAt(20), {Circle(1, 85, 35, 3)}, {"cut", "blind", 10, 0, true}));
  ExpectClose(Volume(Built(recipes)), 24000 - 600 - 90 * kPi);
}

TEST(Move, LeavesEveryKeyToItsFace) {
  // Half a turn about +Z reverses the order of the centres, by which parts of a face are numbered.
  const json half_turn = Move(3, {-1, 0, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, 0});
  Recipes recipes = SlottedBlock();
  const json before = Built(recipes);
  recipes.push_back(half_turn);
  const json after = Built(recipes);
  EXPECT_EQ(Keys(after["faces"]), Keys(before["faces"]));
  EXPECT_EQ(Keys(after["edges"]), Keys(before["edges"]));
  ExpectClose(Box(FaceNamed(before, "1:end")), {0, 0, 20, 10, 30, 20});
  ExpectClose(Box(FaceNamed(after, "1:end")), {-10, -30, 20, 0, 0, 20});
  // Also after a feature that follows.
  recipes.push_back(Extrude(4, Front(), {Circle(1, -30, -15, 3)}, {"cut", "through_all"}));
  ExpectClose(Box(FaceNamed(Built(recipes), "1:end")), {-10, -30, 20, 0, 0, 20});
}

TEST(Move, OfNothingIsRefused) {
  EXPECT_EQ(Reason({QuarterTurn(1)}), "There is no body to move.");
}

}  // namespace
}  // namespace bench::kernel::testing
