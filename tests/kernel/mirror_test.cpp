#include <gtest/gtest.h>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

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
json Block() {
  return Extrude(1, Front(), Rectangle(1, 5, 0, 10, 20), {.depth = 30});
}

// On a plate x -30..30, y 0..20, z 0..10, a boss of radius 3 and height 5 at x = 20.
Recipes PlateWithBoss() {
  return {Extrude(1, Front(), Rectangle(1, -30, 0, 60, 20)),
          Extrude(2, FrontAt(10), {Circle(1, 20, 10, 3)}, {.depth = 5})};
}

TEST(Mirror, GivesAQuiltThatIsNoPartOfTheSolid) {
  const Originals all{.faces = AllFaces({Block()})};
  const json part = Built({Block(), Mirror(2, Right(), all)});
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
  const json apart = Built({Block(), Mirror(2, Right(), {.faces = {"1:start", "1:end"}})});
  ASSERT_EQ(apart["quilts"].size(), 2u);
  for (const json& open : apart["quilts"]) EXPECT_EQ(open["closed"], false);
}

TEST(Mirror, AClosedQuiltBecomesSolid) {
  const Originals all{.faces = AllFaces({Block()})};
  const json part = Built({Block(), Mirror(2, Right(), all), Solidify(3, "2:quilt:1")});
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
  const json whole = Built({Block(), Mirror(2, plane, all), Solidify(3, "2:quilt:1")});
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

TEST(Mirror, AQuiltCanBeMirroredAgain) {
  const Originals all{.faces = AllFaces({Block()})};
  const json part = Built({Block(), Mirror(2, Right(), all), Mirror(3, Front(), {.quilts = {"2:quilt:1"}}),
                           Solidify(4, "3:quilt:1")});
  EXPECT_EQ(Keys(part["quilts"]), (std::vector<std::string>{"2:quilt:1"}));
  ExpectClose(Box(part["outline"]), {-15, 0, -30, 15, 20, 30});
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
  const Originals all{.faces = AllFaces({Block()})};
  Recipes open = PlateWithBoss();
  // The image hangs in the air below the plate, or lies wholly inside it.
  open.push_back(Mirror(3, FrontAt(-10), {.faces = {"2:side:1", "2:end"}}));
  open.push_back(Solidify(4, "3:quilt:1"));
  Recipes inside = PlateWithBoss();
  inside.push_back(Mirror(3, FrontAt(10), {.faces = {"2:side:1", "2:end"}}));
  inside.push_back(Solidify(4, "3:quilt:1"));
  const json middle = {{"origin", {10, 0, 0}}, {"x", {0, 1, 0}}, {"y", {0, 0, 1}}};
  const std::pair<Recipes, std::string> cases[] = {
      {{Block(), Mirror(2, Right(), {.faces = {"1:side:9"}})}, "no face 1:side:9"},
      {{Block(), Mirror(2, Right(), {.quilts = {"1:quilt:1"}})}, "no quilt 1:quilt:1"},
      {{Block(), Mirror(2, Right(), {.curves = {"1:curve:1"}})}, "Feature 1 draws nothing"},
      {{Block(), Solidify(2, "1:quilt:1")}, "no quilt 1:quilt:1"},
      {{Block(), Mirror(2, middle, all), Solidify(3, "2:quilt:1")}, "adds nothing"},
      {open, "the body doesn't close it"},
      {inside, "the body doesn't close it"},
  };
  for (const auto& [recipes, reason] : cases)
    EXPECT_NE(Reason(recipes).find(reason), std::string::npos) << Reason(recipes) << " / " << reason;
}

}  // namespace
}  // namespace bench::kernel::testing
