#include <gtest/gtest.h>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

TEST(ExtrudeOnPlane, GrowsAlongTheNormalOfEachDatumPlane) {
  struct Case {
    json plane;
    std::vector<double> forward, back;
  };
  // The section spans 0..20 along the plane's x and 0..30 along its y, the depth is 10. TOP's y is -Z and its
  // normal +Y; RIGHT's x is -Z and its normal +X.
  const Case cases[] = {{Front(), {0, 0, 0, 20, 30, 10}, {0, 0, -10, 20, 30, 0}},
                        {Top(), {0, 0, -30, 20, 10, 0}, {0, -10, -30, 20, 0, 0}},
                        {Right(), {0, 0, -20, 10, 30, 0}, {-10, 0, -20, 0, 30, 0}}};
  for (const Case& one : cases) {
    const Entities section = Rectangle(1, 0, 0, 20, 30);
    const json forward = Built({Extrude(7, one.plane, section)});
    const json back = Built({Extrude(7, one.plane, section, {.reverse = true})});
    ExpectClose(Box(forward["outline"]), one.forward);
    ExpectClose(Box(back["outline"]), one.back);
    ExpectClose(Volume(forward), 6000);  // 20 · 30 · 10
    ExpectClose(Volume(back), 6000);
    ExpectClose(forward["mass"]["area"].get<double>(), 2200);  // 2 (600 + 200 + 300)
  }
}

TEST(ExtrudeExtent, ReachesAsFarAsItsModeSays) {
  struct Case {
    Extrusion how;
    double low, high;
  };
  const Case cases[] = {
      {{.mode = "blind", .depth = 8}, 0, 8},
      {{.mode = "blind", .depth = 8, .reverse = true}, -8, 0},
      {{.mode = "symmetric", .depth = 8}, -4, 4},
      {{.mode = "two", .depth = 8, .depth2 = 3, .reverse = true}, -8, 3},
      {{.mode = "two", .depth = 0, .depth2 = 3}, -3, 0},
  };
  for (const Case& one : cases) {
    const json part = Built({Extrude(1, Front(), Rectangle(1, 0, 0, 5, 4), one.how)});
    ExpectClose(Box(part["outline"]), {0, 0, one.low, 5, 4, one.high}, one.how.mode);
    ExpectClose(Volume(part), 20 * (one.high - one.low), one.how.mode);
    // The start lies furthest against the direction.
    const double start = FaceNamed(part, "1:start")["point"][2];
    ExpectClose(start, one.how.reverse ? one.high : one.low, one.how.mode + " start");
  }
}

// Two plates of 40 · 40, z 0..10 and 30..40, and a wall x 0..5 between them: 16000 + 16000 + 5 · 40 · 20.
Recipes Rack() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 40, 40)),
          Extrude(2, FrontAt(10), Rectangle(1, 0, 0, 5, 40), {.depth = 20}),
          Extrude(3, FrontAt(30), Rectangle(1, 0, 0, 40, 40))};
}
constexpr double kRack = 36000;

// The rack with a post or a pit of 10 · 10 from that height.
Recipes RackWith(double z, const Extrusion& how) {
  Recipes recipes = Rack();
  recipes.push_back(Extrude(4, FrontAt(z), Rectangle(1, 20, 20, 10, 10), how));
  return recipes;
}

TEST(ExtrudeToBody, JoinsAndCutsUpToItsSurfaces) {
  ExpectClose(Volume(Built(Rack())), kRack);
  struct Case {
    const char* what;
    double z;
    Extrusion how;
    double change;  // in heights of a post of 100 mm²
  };
  const Case cases[] = {
      {"a post to the lower plate", 15, {.mode = "to_next", .reverse = true}, 5},
      {"a post from plate to plate", 10, {.mode = "to_next"}, 20},
      {"a foot and a post through all", -5, {.mode = "through_all"}, 5 + 20},
      {"nothing to add inside the upper plate", 32, {.mode = "through_all"}, 0},
      {"a hole through the lower plate alone", -5, {.operation = "cut", .mode = "to_next"}, -10},
      {"what is left of the lower plate above the section", 4, {.operation = "cut", .mode = "to_next"}, -6},
      {"a hole from above", 50, {.operation = "cut", .mode = "to_next", .reverse = true}, -10},
      {"a hole through both plates", 0, {.operation = "cut", .mode = "through_all"}, -20},
      {"a pit of two depths", 35, {.operation = "cut", .mode = "two", .depth = 1, .depth2 = 2}, -3},
  };
  for (const Case& one : cases) {
    const json part = Built(RackWith(one.z, one.how));
    ExpectClose(Volume(part), kRack + 100 * one.change, one.what);
    EXPECT_EQ(part["bodies"], 1) << one.what;
  }
}

TEST(ExtrudeToBody, IsRefusedWhereNoSurfaceIsMet) {
  const auto beside = [](const Extrusion& how) {
    Recipes recipes = Rack();
    recipes.push_back(Extrude(4, FrontAt(5), Rectangle(1, 100, 0, 10, 10), how));
    return recipes;
  };
  const auto alone = [](const Extrusion& how) {
    return Recipes{Extrude(4, Front(), Rectangle(1, 0, 0, 9, 9), how)};
  };
  const std::pair<const char*, Recipes> cases[] = {
      {"There is no body that the section could meet.", alone({.mode = "to_next"})},
      {"There is no body to cut.", alone({.operation = "cut"})},
      {"The section meets no body in its direction.",
       RackWith(40, {.operation = "cut", .mode = "through_all"})},
      {"The section meets no next surface in its direction.", beside({.mode = "to_next"})},
      {"The body does not bound the section in its direction.", beside({.mode = "through_all"})},
      {"The section meets no body in its direction.", beside({.operation = "cut", .mode = "to_next"})},
      {"The cut removes nothing from the body.", beside({.operation = "cut"})},
      {"There is no room between the section and the body.", RackWith(5, {.mode = "to_next"})},
  };
  for (const auto& [reason, recipes] : cases) EXPECT_EQ(Reason(recipes), reason);
}

TEST(ExtrudeCut, IsRefusedWhenItTouchesTheBodyOnlyOrTakesAllOfIt) {
  const auto part = [&](double x, double y, double size, double depth) {
    return Regenerate(
        {Extrude(1, Front(), Rectangle(1, 0, 0, 10, 10)),
         Extrude(2, Front(), Rectangle(1, x, y, size, size), {.operation = "cut", .depth = depth})});
  };
  const json beside = part(10, 2, 5, 10), whole = part(-5, -5, 20, 20);
  EXPECT_EQ(beside["features"][1]["reason"], "The cut removes nothing from the body.");
  EXPECT_EQ(whole["features"][1]["reason"], "The cut removes the whole body.");
  // What is refused leaves the body to those behind it.
  ExpectClose(Volume(beside), 1000);
  ExpectClose(Volume(whole), 1000);
}

TEST(ExtrudeCut, RemovesAScratchFromALargeBody) {
  // 0.1 mm³ of 1e9 mm³ are less than the 1e-6 to which volumes are compared.
  const json part =
      Built({Extrude(1, Front(), Rectangle(1, 0, 0, 1000, 1000), {.depth = 1000}),
             Extrude(2, Front(), Rectangle(1, 10, 10, 1, 1), {.operation = "cut", .depth = 0.1})});
  EXPECT_EQ(part["faces"].size(), 11u);  // six of the block, four walls and a floor
}

TEST(ExtrudeDepth, MustBeAboveZero) {
  const std::pair<Extrusion, const char*> cases[] = {
      {{.depth = 0}, "The depth must be above 0."},
      {{.mode = "symmetric", .depth = -3}, "The depth must be above 0."},
      {{.mode = "two", .depth = 0, .depth2 = 0}, "The depth must be above 0."},
      {{.mode = "two", .depth = 3, .depth2 = -1}, "Neither of the two depths may be below 0."},
      {{.mode = "two", .depth = -1, .depth2 = 3}, "Neither of the two depths may be below 0."},
      {{.depth = 1e9}, "The depth is too large."},
  };
  for (const auto& [how, reason] : cases)
    EXPECT_EQ(Reason({Extrude(1, Front(), Rectangle(1, 0, 0, 5, 5), how)}), reason);
}

TEST(ExtrudeJoin, KeepsBodiesThatDoNotMeetApart) {
  const json first = Extrude(1, Front(), Rectangle(1, 0, 0, 10, 10));
  const json second = Extrude(2, Front(), Rectangle(1, 20, 0, 5, 10));
  const json apart = Built({first, second});
  EXPECT_EQ(apart["bodies"], 2);
  ExpectClose(Volume(apart), 1000 + 500);
  const json bridged = Built({first, second, Extrude(3, Front(), Rectangle(1, 5, 4, 18, 2), {.depth = 5})});
  EXPECT_EQ(bridged["bodies"], 1);
  ExpectClose(Volume(bridged), 1500 + 10 * 2 * 5);  // the bridge spans x 10..20 between the two
}

}  // namespace
}  // namespace bench::kernel::testing
