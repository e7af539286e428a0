#include <gtest/gtest.h>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

TEST(Sketch, ShowsItsCurvesAndPointsInSpace) {
  // On TOP the plane's (x, y) lies at (x, 0, -y).
  const json part = Built({SketchRecipe(
      5, Top(),
      {Line(1, 0, 0, 3, 4), Circle(2, 10, 0, 2), Arc(3, 0, 0, 6, 0, kPi / 2), Ellipse(4, 0, 0, 3, 3),
       Spline(6, {{0, 0}, {1, 0}, {4, 0}}), Point(7, 2, 5), Centerline(8, 0, 0, 1, 1),
       AsConstruction(Line(9, 0, 0, 9, 9)), AsConstruction(Point(10, 1, 1))})});
  struct Case {
    const char* key;
    const char* type;
    std::vector<double> from, to;
    double length;
  };
  const Case cases[] = {{"5:curve:1", "line", {0, 0, 0}, {3, 0, -4}, 5},
                        {"5:curve:2", "circle", {12, 0, 0}, {12, 0, 0}, 4 * kPi},
                        {"5:curve:3", "circle", {6, 0, 0}, {0, 0, -6}, 3 * kPi},
                        {"5:curve:4", "ellipse", {3, 0, 0}, {3, 0, 0}, 6 * kPi},
                        {"5:curve:6", "spline", {0, 0, 0}, {4, 0, 0}, 4}};
  ASSERT_EQ(part["curves"].size(), std::size(cases));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const json& curve = part["curves"][i];
    EXPECT_EQ(curve["key"], cases[i].key);
    EXPECT_EQ(curve["feature"], 5);
    EXPECT_EQ(curve["type"], cases[i].type) << cases[i].key;
    ExpectClose(curve["from"], cases[i].from, cases[i].key);
    ExpectClose(curve["to"], cases[i].to, cases[i].key);
    ExpectClose(curve["length"].get<double>(), cases[i].length, cases[i].key);
  }
  ASSERT_EQ(part["points"].size(), 1u);
  EXPECT_EQ(part["points"][0]["key"], "5:point:7");
  EXPECT_EQ(part["points"][0]["entity"], 7);
  ExpectClose(part["points"][0]["at"], {2, 0, -5});
  EXPECT_EQ(part["bodies"], 0);
  EXPECT_TRUE(part["outline"].is_null());
  EXPECT_TRUE(part["mass"].is_null());
}

TEST(Sketch, NeedsNeitherALoopNorACurveButNoneThatIsDegenerate) {
  EXPECT_EQ(Reason({SketchRecipe(1, Front(), Entities{})}), "");
  EXPECT_EQ(Reason({SketchRecipe(1, Front(), {Line(1, 0, 0, 5, 5), Line(2, 0, 5, 5, 0)})}), "");
  EXPECT_EQ(Reason({SketchRecipe(1, Front(), {Line(1, 0, 0, 5, 5), AsConstruction(Circle(2, 0, 0, 0))})}),
            "Entity 2 needs a radius above 0.");
}

}  // namespace
}  // namespace bench::kernel::testing
