#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

std::set<std::string> KeySet(const json& list) {
  const auto keys = Keys(list);
  std::set<std::string> set(keys.begin(), keys.end());
  EXPECT_EQ(set.size(), keys.size()) << "a key came twice";
  return set;
}

bool Includes(const std::set<std::string>& all, const std::set<std::string>& some) {
  return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

json Block() {
  return Extrude(41, Front(), Rectangle(1, 0, 0, 40, 30));
}

TEST(Keys, NameTheFeatureAndTheEntity) {
  const json part = Built({Block()});
  EXPECT_EQ(Keys(part["faces"]), (std::vector<std::string>{"41:start", "41:end", "41:side:1", "41:side:2",
                                                           "41:side:3", "41:side:4"}));
  EXPECT_TRUE(KeySet(part["edges"]).count("41:end|41:side:3"));
}

TEST(Keys, StayWhenAFeatureIsAppendedOrANumberChanges) {
  const auto holed = [](double depth, double radius) {
    return Built(
        {Extrude(41, Front(), Rectangle(1, 0, 0, 40, 30), {.depth = depth}),
         Extrude(50, Front(), {Circle(5, 20, 15, radius)}, {.operation = "cut", .mode = "through_all"})});
  };
  const json before = Built({Block()}), small = holed(10, 3), large = holed(25, 9);
  const json boss = Built({Block(), Extrude(50, FrontAt(10), {Circle(5, 20, 15, 3)})});
  for (const char* const list : {"faces", "edges"}) {
    EXPECT_TRUE(Includes(KeySet(small[list]), KeySet(before[list]))) << list;
    EXPECT_TRUE(Includes(KeySet(boss[list]), KeySet(before[list]))) << list;
    EXPECT_EQ(KeySet(small[list]), KeySet(large[list])) << list;
  }
}

TEST(Keys, NumberThePartsOfASplitFaceByTheirCentres) {
  // A groove x 10..20 all along Y splits the top; the narrower strip lies at the smaller x.
  const json part = Built({Block(), Extrude(50, FrontAt(10), Rectangle(1, 10, -1, 10, 40),
                                            {.operation = "cut", .depth = 4, .reverse = true})});
  ExpectClose(FaceNamed(part, "41:end")["area"].get<double>(), 10 * 30);
  ExpectClose(FaceNamed(part, "41:end#2")["area"].get<double>(), 20 * 30);
  // The sides keep their names, each with the groove's profile cut from it.
  ExpectClose(FaceNamed(part, "41:side:1")["area"].get<double>(), 400 - 40);
  // The groove's end lies furthest in its direction: it is the floor.
  ExpectClose(FaceNamed(part, "50:end")["area"].get<double>(), 300);
  const auto edges = KeySet(part["edges"]);
  EXPECT_TRUE(edges.count("41:end|41:side:1"));
  EXPECT_TRUE(edges.count("41:end#2|41:side:1"));
}

TEST(Keys, NumberTheEdgesThatTwoFacesShare) {
  // A slot through the front wall's upper edge leaves the wall and the top two edges in common.
  const json part = Built({Block(), Extrude(50, FrontAt(10), Rectangle(1, 10, -1, 10, 5),
                                            {.operation = "cut", .depth = 4, .reverse = true})});
  std::vector<double> lengths;
  for (const json& edge : part["edges"]) {
    const std::string key = edge["key"];
    if (key == "41:end|41:side:1" || key == "41:end|41:side:1|#2") lengths.push_back(edge["length"]);
  }
  ExpectClose(json(lengths), {10, 20});
}

TEST(Keys, OfTheOlderFeatureHoldWhereFacesMerge) {
  // A second block flush with the first on three sides.
  const json part = Built({Block(), Extrude(50, Front(), Rectangle(1, 40, 0, 20, 30))});
  EXPECT_EQ(KeySet(part["faces"]), (std::set<std::string>{"41:start", "41:end", "41:side:1", "41:side:3",
                                                          "41:side:4", "50:side:2"}));
  ExpectClose(FaceNamed(part, "41:end")["area"].get<double>(), 60 * 30);
  EXPECT_EQ(part["edges"].size(), 12u);
}

TEST(Keys, OfTheFirstEntityHoldWhereSidesOfOneSectionMerge) {
  // The lower side is drawn in two lines; a feature behind it must find one face as well.
  const json angle = Extrude(41, Front(), Polygon(1, {{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}));
  const std::set<std::string> faces{"41:start", "41:end", "41:side:1", "41:side:3", "41:side:4", "41:side:5"};
  EXPECT_EQ(KeySet(Built({angle})["faces"]), faces);
  const json more = Built({angle, Extrude(50, FrontAt(10), {Circle(1, 5, 5, 2)})});
  EXPECT_TRUE(Includes(KeySet(more["faces"]), faces));
}

}  // namespace
}  // namespace bench::kernel::testing
