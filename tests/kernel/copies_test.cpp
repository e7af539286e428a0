// Geometry that is made again elsewhere: patterns, and mirrors that become solid.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/kernel/scenes.h"

namespace bench::kernel::testing {
namespace {

using Places = std::vector<std::vector<double>>;

json Pattern(int feature, const std::vector<int>& members, const Places& motions) {
  return {{"feature", feature}, {"kind", "pattern"}, {"members", members}, {"motions", motions}};
}

// 60 x 40 x 10 with a corner in the origin.
json Slab() {
  return Extrude(1, Front(), Rectangle(1, 0, 0, 60, 40));
}

json Boss(int feature, double x, double y) {
  return Extrude(feature, FrontAt(10), {Circle(1, x, y, 2)}, {.depth = 5});
}

std::vector<double> Centers(const json& part, const std::string& prefix) {
  std::vector<double> centers;
  for (const json& face : part["faces"])
    if (face["key"].get<std::string>().starts_with(prefix)) centers.push_back(face["origin"][0]);
  return centers;
}

TEST(Pattern, MakesAGridOfHoles) {
  const json hole = Extrude(2, FrontAt(10), {Circle(1, 10, 10, 2)}, {"cut", "through_all", 0, 0, true});
  const json part =
      Built({Slab(), hole, Pattern(3, {2}, {Shift(20, 0, 0), Shift(0, 20, 0), Shift(20, 20, 0)})});
  // Four holes of radius 2 through 10.
  ExpectClose(Volume(part), 60 * 40 * 10 - 4 * kPi * 4 * 10);
  // A plate's six faces and a wall each; those of the copies belong to the pattern.
  EXPECT_EQ(part["faces"].size(), 6u + 4);
  for (const char* key : {"3:2/2:side:1", "3:3/2:side:1", "3:4/2:side:1"})
    EXPECT_EQ(FaceNamed(part, key)["feature"], 3) << key;
  EXPECT_EQ(Centers(part, "3:"), (std::vector<double>{30, 10, 30})) << "in the order of the motions";
}

TEST(Pattern, RepeatsAllMembersInTheirOrderWithWhatStandsOnThem) {
  // A boss with a bore of radius 1 through it and the plate.
  const json bore = Extrude(3, FrontAt(15), {Circle(1, 10, 10, 1)}, {"cut", "through_all", 0, 0, true});
  const json part = Built({Slab(), Boss(2, 10, 10), bore, Pattern(4, {2, 3}, {Shift(20, 0, 0)})});
  ExpectClose(Volume(part), 60 * 40 * 10 + 2 * (kPi * 4 * 5 - kPi * 15));
  EXPECT_EQ(FaceNamed(part, "4:2/3:side:1")["feature"], 4);

  // What a sketch draws is drawn again under the pattern's numbers.
  const json drawn = Built({Slab(), SketchRecipe(2, Front(), {Line(7, 0, 0, 3, 0)}),
                            Pattern(3, {2}, {Shift(20, 0, 0), Shift(40, 0, 0)})});
  EXPECT_EQ(Keys(drawn["curves"]), (std::vector<std::string>{"2:curve:7", "3:curve:1", "3:curve:2"}));
  ExpectClose(Named(drawn["curves"], "3:curve:2")["from"], {40, 0, 0});
}

json Round(int feature, const std::string& edge, double radius) {
  return {{"feature", feature},
          {"kind", "round"},
          {"edges", std::vector<std::string>{edge}},
          {"radius", radius},
          {"runs_on", true}};
}

TEST(Pattern, TakesRoundsOfItsMembersAlong) {
  // A post 8 x 8 x 6 with a round of 2 on an upright edge, and one of 0.5 where that meets the post's top.
  const Recipes one = {Slab(), Extrude(2, FrontAt(10), Rectangle(1, 5, 5, 8, 8), {.depth = 6}),
                       Round(3, "2:side:2|2:side:3", 2), Round(4, "2:end|3:round:(2:side:2|2:side:3)", 0.5)};
  // Each copy adds what the first post has added to the plate.
  const double volume = Volume(Built(one));
  EXPECT_LT(volume, 60 * 40 * 10 + (8 * 8 - (1 - kPi / 4) * 4) * 6);
  Recipes recipes = one;
  recipes.push_back(Pattern(5, {2, 3, 4}, {Shift(20, 0, 0), Shift(0, 20, 0)}));
  const json part = Built(recipes);
  ExpectClose(Volume(part), volume + 2 * (volume - 60 * 40 * 10));
  EXPECT_EQ(FaceNamed(part, "5:2/3:round:(5:2/2:side:2|5:2/2:side:3)")["feature"], 5);
}

TEST(Pattern, CopiesMayOverlapAndGrowTogether) {
  // Blocks of 10 every 5: 25 long in all, one bar.
  const json block = Extrude(1, Front(), Rectangle(1, 0, 0, 10, 10));
  const json part = Built({block, Pattern(2, {1}, {Shift(5, 0, 0), Shift(10, 0, 0), Shift(15, 0, 0)})});
  ExpectClose(Volume(part), 25 * 10 * 10);
  EXPECT_EQ(part["faces"].size(), 6u);
  // One that fills a gap flush has no face of its own, and is there all the same.
  const json slab = Extrude(2, Front(), Rectangle(1, 20, 0, 10, 10));
  const json bridged = Built({block, slab, Pattern(3, {1}, {Shift(10, 0, 0)})});
  ExpectClose(Volume(bridged), 30 * 10 * 10);
}

TEST(Pattern, IsRefusedWithTheReason) {
  const json boss = Boss(2, 10, 10);
  const json mirror = {{"feature", 2},           {"kind", "mirror"},        {"plane", Front()},
                       {"faces", json::array()}, {"quilts", json::array()}, {"curves", json::array()},
                       {"points", json::array()}};
  const std::pair<Recipes, std::string> cases[] = {
      {{Slab(), boss, Pattern(3, {2}, {Shift(0, 0, 0)})}, "adds and removes nothing"},
      {{Slab(), Boss(3, 50, 10), boss, Pattern(4, {2}, {Shift(20, 0, 0), Shift(40, 0, 0)})},
       "4:3/2 adds and removes nothing"},
      {{Slab(), Extrude(2, Front(), {Circle(1, 50, 10, 2)}, {.operation = "cut"}),
        Pattern(3, {2}, {Shift(40, 0, 0)})},
       "3:2/2 can't be made: The cut removes nothing"},
      {{Slab(), Pattern(3, {2}, {Shift(20, 0, 0)})}, "Feature 2 has no geometry"},
      {{Slab(), mirror, Pattern(3, {2}, {Shift(20, 0, 0)})}, "Feature 2 is of a kind that can't be repeated"},
  };
  for (const auto& [recipes, reason] : cases)
    EXPECT_NE(Reason(recipes).find(reason), std::string::npos) << Reason(recipes) << " / " << reason;
}

struct Originals {
  std::vector<std::string> faces{}, quilts{}, curves{}, points{};
};

json Mirror(int feature, const json& plane, const Originals& originals) {
  return {{"feature", feature},        {"kind", "mirror"},           {"plane", plane},
          {"faces", originals.faces},  {"quilts", originals.quilts}, {"curves", originals.curves},
          {"points", originals.points}};
}

json Solidify(int feature, const std::string& quilt) {
  return {{"feature", feature}, {"kind", "solidify"}, {"quilt", quilt}};
}

std::vector<std::string> AllFaces(const Recipes& recipes) {
  return Keys(Built(recipes)["faces"]);
}

// 10 x 20 x 30 at x 5..15.
json Bar() {
  return Extrude(1, Front(), Rectangle(1, 5, 0, 10, 20), {.depth = 30});
}

// On a plate x -30..30, y 0..20, z 0..10, a boss of radius 3 and height 5 at x = 20.
Recipes PlateWithBoss() {
  return {Extrude(1, Front(), Rectangle(1, -30, 0, 60, 20)),
          Extrude(2, FrontAt(10), {Circle(1, 20, 10, 3)}, {.depth = 5})};
}

TEST(Mirror, GivesAQuiltThatIsNoPartOfTheSolid) {
  const Originals all{.faces = AllFaces({Bar()})};
  const json part = Built({Bar(), Mirror(2, Right(), all)});
  ExpectClose(Volume(part), 10 * 20 * 30);
  EXPECT_EQ(part["faces"].size(), 6u);
  ASSERT_EQ(part["quilts"].size(), 1u);
  const json& quilt = part["quilts"][0];
  EXPECT_EQ(quilt["key"], "2:quilt:1");
  EXPECT_EQ(quilt["feature"], 2);
  EXPECT_EQ(quilt["faces"], 6);
  EXPECT_EQ(quilt["closed"], true);
  ExpectClose(quilt["area"], 2 * (10 * 20 + 10 * 30 + 20 * 30));

  // Two faces that don't touch are two quilts, both open.
  const json apart = Built({Bar(), Mirror(2, Right(), {.faces = {"1:start", "1:end"}})});
  ASSERT_EQ(apart["quilts"].size(), 2u);
  for (const json& open : apart["quilts"]) EXPECT_EQ(open["closed"], false);
}

TEST(Mirror, AClosedQuiltBecomesSolid) {
  const Originals all{.faces = AllFaces({Bar()})};
  const json part = Built({Bar(), Mirror(2, Right(), all), Solidify(3, "2:quilt:1")});
  ExpectClose(Volume(part), 2 * 10 * 20 * 30);
  ExpectClose(Box(part["outline"]), {-15, 0, 0, 15, 20, 30});
  EXPECT_EQ(part["bodies"], 2);
  EXPECT_TRUE(part["quilts"].empty());
  // The image of the side at x = 15 looks the other way, and is the solid's now.
  const json image = FaceNamed(part, "2/1:side:2");
  EXPECT_EQ(image["feature"], 3);
  ExpectClose(image["normal"], {-1, 0, 0});

  // About the side at x = 5 the two grow together: 20 in all.
  const json plane = {{"origin", {5, 0, 0}}, {"x", {0, 1, 0}}, {"y", {0, 0, 1}}};
  const json whole = Built({Bar(), Mirror(2, plane, all), Solidify(3, "2:quilt:1")});
  ExpectClose(Volume(whole), 20 * 20 * 30);
  EXPECT_EQ(whole["faces"].size(), 6u);
}

TEST(Mirror, ABossIsClosedByTheFaceThatItsImageStandsOn) {
  Recipes recipes = PlateWithBoss();
  recipes.push_back(Mirror(3, Right(), {.faces = {"2:side:1", "2:end"}}));
  EXPECT_EQ(Built(recipes)["quilts"][0]["closed"], false);
  recipes.push_back(Solidify(4, "3:quilt:1"));
  const json part = Built(recipes);
  ExpectClose(Volume(part), 60 * 20 * 10 + 2 * kPi * 9 * 5);
  ExpectClose(Box(FaceNamed(part, "3/2:end")), {-23, 7, 15, -17, 13, 15});
  EXPECT_EQ(part["faces"].size(), 6u + 2 + 2);
}

TEST(Mirror, ReflectsCurvesAndPoints) {
  const json sketch = SketchRecipe(1, Front(), {Line(3, 1, 2, 4, 2), Point(5, 7, 8)});
  const json part = Built({sketch, Mirror(2, Right(), {.curves = {"1:curve:3"}, .points = {"1:point:5"}})});
  const json curve = Named(part["curves"], "2:curve:1");
  ExpectClose(curve["from"], {-1, 2, 0});
  ExpectClose(curve["to"], {-4, 2, 0});
  ExpectClose(Named(part["points"], "2:point:1")["at"], {-7, 8, 0});
}

TEST(Mirror, IsRefusedWithTheReason) {
  const Originals all{.faces = AllFaces({Bar()})};
  Recipes open = PlateWithBoss();
  // The image hangs in the air below the plate, or lies wholly inside it.
  Recipes inside = open;
  open.push_back(Mirror(3, FrontAt(-10), {.faces = {"2:side:1", "2:end"}}));
  inside.push_back(Mirror(3, FrontAt(10), {.faces = {"2:side:1", "2:end"}}));
  for (Recipes* recipes : {&open, &inside}) recipes->push_back(Solidify(4, "3:quilt:1"));
  const json middle = {{"origin", {10, 0, 0}}, {"x", {0, 1, 0}}, {"y", {0, 0, 1}}};
  const std::pair<Recipes, std::string> cases[] = {
      {{Bar(), Mirror(2, Right(), {.faces = {"1:side:9"}})}, "no face 1:side:9"},
      {{Bar(), Mirror(2, Right(), {.curves = {"1:curve:1"}})}, "Feature 1 draws nothing"},
      {{Bar(), Solidify(2, "1:quilt:1")}, "no quilt 1:quilt:1"},
      {{Bar(), Mirror(2, middle, all), Solidify(3, "2:quilt:1")}, "adds nothing"},
      {open, "the body doesn't close it"},
      {inside, "the body doesn't close it"},
  };
  for (const auto& [recipes, reason] : cases)
    EXPECT_NE(Reason(recipes).find(reason), std::string::npos) << Reason(recipes) << " / " << reason;
}

}  // namespace
}  // namespace bench::kernel::testing
