// Sections that bound areas, texts among them, and sketches that only show their curves.
#include <gtest/gtest.h>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

TEST(Section, BoundsTheAreaOfItsLoops) {
  const auto expect = [](const char* what, const Entities& entities, double area, int bodies = 1) {
    const json part = Built({Extrude(1, Front(), entities, {.depth = 10})});
    EXPECT_NEAR(Volume(part), 10 * area, 2e-6 * 10 * area) << what;
    EXPECT_EQ(part["bodies"], bodies) << what;
  };
  expect("an arc of more than a turn", {Arc(1, 0, 0, 5, 1, 1 + 2.5 * kPi)}, kPi * 25);
  expect("an arc that runs through the angle 0",
         {Arc(1, 0, 0, 2, 1.5 * kPi, 0.5 * kPi), Line(2, 0, 2, 0, -2)}, kPi * 2);
  expect("a tall ellipse", {Ellipse(1, 0, 0, 3, 8)}, kPi * 24);
  expect("a plate with a round and a square hole",
         Together(Rectangle(1, 0, 0, 40, 20), Circle(11, 10, 10, 3), Rectangle(21, 25, 5, 10, 10)),
         800 - kPi * 9 - 100);
  expect("an island in a hole",
         Together(Rectangle(1, 0, 0, 40, 40), Circle(11, 20, 20, 15), Rectangle(21, 15, 15, 10, 10)),
         1600 - kPi * 225 + 100, 2);
  expect("sides in any order and direction",
         {Line(4, 0, 0, 0, 5), Line(2, 5, 5, 5, 0), Line(1, 0, 0, 5, 0), Line(3, 5, 5, 0, 5)}, 25);
  expect("a quarter circle with a corner given to six digits",
         {Line(1, 0, 0, 10, 0), Arc(2, 0, 0, 10, 0, kPi / 4), Line(3, 7.071068, 7.071068, 0, 0)},
         kPi * 100 / 8);
  // The wave is its own mirror image about (10, 0): what it adds to the left it takes off to the right.
  expect("a spline wave over a strip",
         {Spline(1, {{0, 0}, {5, 2}, {10, 0}, {15, -2}, {20, 0}}), Line(2, 20, 0, 20, 6),
          Line(3, 20, 6, 0, 6), Line(4, 0, 6, 0, 0)},
         120);
}

TEST(Section, IgnoresWhatBoundsNothing) {
  const json part =
      Built({Extrude(1, Front(),
                     Together(Rectangle(1, 0, 0, 10, 10), Point(11, 3, 3), Centerline(12, 5, -5, 5, 20),
                              AsConstruction(Circle(13, 5, 5, 2)), AsConstruction(Line(14, 0, 0, 30, 30))))});
  ExpectClose(Volume(part), 1000);
}

TEST(Section, IsRefusedWithTheReason) {
  const Entities square = Rectangle(1, 0, 0, 10, 10);
  const std::pair<const char*, Entities> cases[] = {
      {"The section has no curves that bound an area.", {AsConstruction(Circle(1, 0, 0, 5)), Point(2, 0, 0)}},
      {"The section is open at (10, 10).", {Line(1, 10, 10, 0, 0), Line(2, 0, 0, 10, 0)}},
      {"Entities 1 and 3 of the section meet at (5, 5).", Polygon(1, {{0, 0}, {10, 10}, {10, 0}, {0, 10}})},
      {"Entities 1 and 11 of the section meet at (5, 0).", Together(square, Circle(11, 5, 5, 5))},
      {"Entities 1 and 2 of the section meet at (5, 0).", Polygon(1, {{0, 0}, {10, 0}, {5, 0}, {5, 5}})},
      {"Entities 1 and 2 of the section meet at (5, 0).", {Circle(1, 0, 0, 5), Circle(2, 10, 0, 5)}},
      {"More than two ends of the section meet at (10, 10).", Together(square, Rectangle(11, 10, 10, 5, 5))},
      {"Entity 5 is a line without length.", Together(square, AsConstruction(Line(5, 3, 3, 3, 3)))},
      {"Entity 5 needs a radius above 0.", {Circle(5, 0, 0, -2)}},
      {"Entity 5 spans no angle.", {Arc(5, 0, 0, 3, 1, 1)}},
      {"Entity 5 is a spline through fewer than two points.", {Spline(5, {{1, 1}})}},
      {"Entity 5 is a closed spline through fewer than three points.", {Spline(5, {{1, 1}, {2, 2}, {1, 1}})}},
      {"Entity 5 lies too far away.", {Circle(5, 1e9, 0, 1)}},
      {"Entity 5 has too large a radius.", {Circle(5, 0, 0, 1e9)}},
  };
  for (const auto& [reason, entities] : cases) EXPECT_EQ(Reason({Extrude(1, Front(), entities)}), reason);
  const Entities loop = {Spline(1, {{0, 0}, {10, 0}, {14, 5}, {10, 8}, {7, 5}, {10, -3}, {12, -5}}),
                         Line(2, 12, -5, 0, -5), Line(3, 0, -5, 0, 0)};
  EXPECT_EQ(Reason({Extrude(1, Front(), loop)}).substr(0, 24), "Entity 1 meets itself at");
}

TEST(Section, TakesTangentJointsOfAnySizeForWhatTheyAre) {
  // A corner of a square of 1000 · 1000, rounded ever less, cuts off (4 - π) / 4 r².
  for (const double r : {400.0, 1.0, 0.01}) {
    const Entities section = {Line(1, 0, 0, 1000, 0), Line(2, 1000, 0, 1000, 1000 - r),
                              Arc(3, 1000 - r, 1000 - r, r, 0, kPi / 2), Line(4, 1000 - r, 1000, 0, 1000),
                              Line(5, 0, 1000, 0, 0)};
    const json part = Built({Extrude(1, Front(), section, {.depth = 1})});
    EXPECT_NEAR(Volume(part), 1e6 - (4 - kPi) / 4 * r * r, 1e-6) << r;
  }
}

TEST(Sketch, ShowsItsCurvesAndPointsInSpace) {
  // On TOP the plane's (x, y) lies at (x, 0, -y).
  const json part = Built({SketchRecipe(
      5, Top(),
      {Line(1, 0, 0, 3, 4), Circle(2, 10, 0, 2), Arc(3, 0, 0, 6, 0, kPi / 2), Ellipse(4, 0, 0, 3, 3),
       Spline(6, {{0, 0}, {1, 0}, {4, 0}}), Point(7, 2, 5), Centerline(8, 0, 0, 1, 1),
       AsConstruction(Line(9, 0, 0, 9, 9)), AsConstruction(Point(10, 1, 1))})});
  struct Case {
    const char *key, *type;
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

json Text(int id, const std::string& text, const Corners& box, const std::string& font = {}) {
  json entity = {{"id", id},
                 {"type", "text"},
                 {"from", {box[0].first, box[0].second}},
                 {"to", {box[1].first, box[1].second}},
                 {"text", text}};
  if (!font.empty()) entity["font"] = font;
  return entity;
}

json Extruded(const json& text) {
  return Built({Extrude(1, Front(), Entities{text}, {.depth = 2})});
}

TEST(Text, FillsItsBoxExactly) {
  const struct {
    const char* what;
    json text;
    std::vector<double> low_high;
  } cases[] = {
      {"two letters", Text(1, "AB", {{-6, -5}, {6, 5}}), {-6, -5, 0, 6, 5, 2}},
      {"round letters", Text(1, "OC", {{0, 0}, {3, 20}}), {0, 0, 0, 3, 20, 2}},
      {"corners in the other order", Text(1, "g", {{4, 9}, {1, 2}}), {1, 2, 0, 4, 9, 2}},
      {"blanks at the ends take no room", Text(1, " I ", {{0, 0}, {1, 8}}), {0, 0, 0, 1, 8, 2}},
      {"beyond ASCII", Text(1, "\xC3\x84\xCE\xA9", {{0, 0}, {12, 8}}), {0, 0, 0, 12, 8, 2}},
      {"a bold font", Text(1, "Mx", {{0, 0}, {12, 8}}, "DejaVu Sans Bold"), {0, 0, 0, 12, 8, 2}},
      {"a font that there isn't", Text(1, "Mx", {{0, 0}, {12, 8}}, "Papyrus"), {0, 0, 0, 12, 8, 2}},
  };
  for (const auto& each : cases) ExpectClose(Box(Extruded(each.text)["outline"]), each.low_high, each.what);
}

// "I" and "-" are bars: they fill their boxes altogether.
TEST(Text, BoundsTheAreaOfItsLetters) {
  ExpectClose(Volume(Extruded(Text(1, "I", {{0, 0}, {3, 10}}))), 3 * 10 * 2);
  ExpectClose(Volume(Extruded(Text(1, "-", {{0, 0}, {7, 1}}))), 7 * 1 * 2);
}

TEST(Text, LettersAreBodiesAndTheirCountersHoles) {
  const struct {
    const char* text;
    int bodies;
    std::size_t holes;
  } cases[] = {{"B", 1, 2}, {"A", 1, 1}, {"i", 2, 0}, {"AB", 2, 3}, {"C D", 2, 1}};
  for (const auto& each : cases) {
    const json part = Extruded(Text(1, each.text, {{0, 0}, {20, 10}}));
    EXPECT_EQ(part["bodies"], each.bodies) << each.text;
    std::size_t holes = 0;
    for (const json& face : part["faces"])
      if (face["key"].get<std::string>().starts_with("1:end")) holes += face["contours"].size() - 1;
    EXPECT_EQ(holes, each.holes) << each.text;
  }
}

TEST(Text, EveryPrintableCharacterMakesASolid) {
  for (char c = '!'; c <= '~'; ++c)
    EXPECT_GT(Volume(Extruded(Text(1, std::string(1, c), {{0, 0}, {5, 7}}))), 0) << c;
}

TEST(Text, WithoutInkOrRoomIsRefused) {
  const json plate = Extrude(1, Front(), Rectangle(1, 0, 0, 4, 4));
  for (const char* blank : {"", " ", "  \t"})
    EXPECT_EQ(Reason({plate, SketchRecipe(2, Front(), Entities{Text(3, blank, {{0, 0}, {5, 5}})})}),
              "Entity 3 is a text that leaves no ink.")
        << '"' << blank << '"';
  EXPECT_EQ(Reason({plate, SketchRecipe(2, Front(), Entities{Text(3, "A", {{0, 0}, {5, 0}})})}),
            "Entity 3 is a text in a box without extent.");
}

}  // namespace
}  // namespace bench::kernel::testing
