#include <gtest/gtest.h>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

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

// "I" is a bar, and "l" is one: they fill their boxes altogether. "-" beside them is a bar as well.
TEST(Text, BoundsTheAreaOfItsLetters) {
  ExpectClose(Volume(Extruded(Text(1, "I", {{0, 0}, {3, 10}}))), 3 * 10 * 2);
  ExpectClose(Volume(Extruded(Text(1, "-", {{0, 0}, {7, 1}}))), 7 * 1 * 2);
  // A mirrored pair of strokes: what "/" leaves free of its box is two equal triangles, so its area is the
  // box less the free width times the height. Both slants are the same letter turned round.
  const double slash = Volume(Extruded(Text(1, "/", {{0, 0}, {3, 10}})));
  ExpectClose(Volume(Extruded(Text(1, "\\", {{0, 0}, {3, 10}}))), slash);
  EXPECT_LT(slash, 60);
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
