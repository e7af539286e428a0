#include <gtest/gtest.h>

#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Texts = std::vector<std::string>;

double Tan(double degrees) {
  return std::tan(degrees * kPi / 180);
}

// 40 along x, 30 along y, 10 high: 12000.
json Block(double width = 40, double height = 30, double depth = 10) {
  return Extrude(41, Front(), Rectangle(1, 0, 0, width, height), {.depth = depth});
}

const std::string kUpright = "41:side:3|41:side:4";
const Texts kWalls{"41:side:1", "41:side:2", "41:side:3", "41:side:4"};
const Texts kFloorEdges{"41:start|41:side:1", "41:start|41:side:2", "41:start|41:side:3",
                        "41:start|41:side:4"};

json Draft(const Texts& faces, const Texts& hinges, double angle_deg, const std::string& direction = kUpright,
           int feature = 60) {
  return {{"feature", feature}, {"kind", "draft"},        {"faces", faces},
          {"hinges", hinges},   {"direction", direction}, {"angle_deg", angle_deg}};
}

TEST(Draft, TiltsFacesAboutTheirHinges) {
  const double wedge = 10 * 10 * Tan(5) / 2 * 30;  // of a wall 10 high and 30 long
  const Texts wall{"41:side:2"};
  struct Case {
    const char* what;
    Texts faces, hinges;
    double angle;
    double volume;
  };
  // A pyramid's stump by Simpson: 10 / 6 of the floor, four times the middle and the top.
  const double in = 10 * Tan(10);
  const double stump = 10.0 / 6 * (40 * 30 + 4 * (40 - in) * (30 - in) + (40 - 2 * in) * (30 - 2 * in));
  const Case cases[] = {
      {"inwards", wall, {"41:start|41:side:2"}, 5, 12000 - wedge},
      {"outwards", wall, {"41:start|41:side:2"}, -5, 12000 + wedge},
      // Below the hinge it is the other way round.
      {"from the top", wall, {"41:end|41:side:2"}, 5, 12000 + wedge},
      {"as it is", wall, {"41:start|41:side:2"}, 0, 12000},
      {"four walls", kWalls, kFloorEdges, 10, stump},
  };
  for (const Case& one : cases) {
    const json part = Built({Block(), Draft(one.faces, one.hinges, one.angle)});
    EXPECT_NEAR(Volume(part) / one.volume, 1, 1e-6) << one.what;
    EXPECT_EQ(Keys(part["faces"]), Keys(Built({Block()})["faces"])) << one.what;
    // The hinge's edges stay where they were.
    EXPECT_EQ(Keys(part["edges"]), Keys(Built({Block()})["edges"])) << one.what;
  }
  // The pull goes along +y, whichever way its edge runs: the wall at x = 40, 30 deep, leans in.
  const json along_y = Draft(wall, {"41:side:1|41:side:2"}, 5, "41:end|41:side:4");
  ExpectClose(Volume(Built({Block(), along_y})), 12000 - 30 * 30 * Tan(5) / 2 * 10);
  // The angle is that between the wall and the pull: once more the same changes nothing.
  const json once = Draft(wall, {"41:start|41:side:2"}, 5);
  ExpectClose(Volume(Built({Block(), once, Draft(wall, {"41:start|41:side:2"}, 5, kUpright, 61)})),
              12000 - wedge);
  // The edge of a wall that leans already is a pull that leans along the next wall: the sine of that wall's
  // angle with it is cos 5° times that of its angle with the vertical. At height z 40 - z t by 30 - z u are
  // left.
  const double t = Tan(5), u = std::tan(std::asin(t));
  const json next = Draft({"41:side:1"}, {"41:start|41:side:1"}, 5, "41:side:1|41:side:2", 61);
  ExpectClose(Volume(Built({Block(), once, next})), 12000 - 50 * (30 * t + 40 * u) + 1000 * t * u / 3);
}

TEST(Draft, MakesConesOfCylindersAndTakesAlongWhatRunsOn) {
  // A boss of radius 5, 20 high, on the block, and a hole of that radius through it.
  const json boss = Extrude(50, FrontAt(10), {Circle(5, 20, 15, 5)}, {.depth = 20});
  const json hole = Extrude(50, Front(), {Circle(5, 20, 15, 5)}, {.operation = "cut", .mode = "through_all"});
  const auto stump = [](double height, double low, double high) {
    return kPi * height / 3 * (low * low + low * high + high * high);
  };
  const double lean = 20 * Tan(3);
  const json on_boss = Built({Block(), boss, Draft({"50:side:5"}, {"41:end|50:side:5"}, 3)});
  ExpectClose(Volume(on_boss), 12000 + stump(20, 5, 5 - lean));
  EXPECT_EQ(FaceNamed(on_boss, "50:side:5")["type"], "cone");
  // Material goes away from the wall of a hole when the hole widens.
  ExpectClose(Volume(Built({Block(), hole, Draft({"50:side:5"}, {"41:start|50:side:5"}, 3)})),
              12000 - stump(10, 5, 5 + lean / 2));
  // One of two long walls takes the other and the half circles along: 30 by 20 - 2 t z and a cone.
  json top = FrontAt(10);
  top["origin"] = {20, 15, 10};
  const json slot = Extrude(50, top, Slot(5, 8, 5), {.depth = 20});
  const json slotted = Built({Block(), slot, Draft({"50:side:5"}, {"41:end|50:side:5"}, 3)});
  ExpectClose(Volume(slotted), 12000 + 16 * 20 * (10 - lean) + stump(20, 5, 5 - lean));
}

TEST(Draft, IsRefusedWithTheReason) {
  const json tower = Block(10, 10, 30);  // 30 tan 30° is more than 10
  const json boss = Extrude(50, FrontAt(10), {Circle(5, 20, 15, 5)}, {.depth = 20});
  const std::string no_room = "The body has no room for the draft.";
  const Texts wall{"41:side:2"}, foot{"41:start|41:side:2"};
  const auto expect = [](Recipes recipes, const json& draft, const std::string& reason) {
    const double standing = Volume(Built(recipes));
    recipes.push_back(draft);
    EXPECT_EQ(Reason(recipes), reason) << draft;
    ExpectClose(Volume(Regenerate(recipes)), standing);
  };
  expect({tower}, Draft(wall, foot, 30), no_room);
  expect({Block(), boss}, Draft({"50:side:5"}, {"41:end|50:side:5"}, 30), no_room);
  expect({Block()}, Draft(wall, foot, 30.1), "The angle must be between -30 and 30 degrees.");
  expect({Block()}, Draft({"41:end"}, {"41:end|41:side:2"}, 5), "Face 41:end can't be drafted.");
  expect({Block()}, Draft(wall, {"41:start|41:side:1"}, 5), "Face 41:side:2 has no hinge.");
  expect({Block()}, Draft(wall, {"41:start|41:side:2", "41:start|41:side:1"}, 5),
         "Hinge 41:start|41:side:1 is no edge of the drafted faces.");
  expect({Block()}, Draft(wall, {"41:start|41:side:2", "41:end|41:side:2"}, 5),
         "Face 41:side:2 has hinges on several lines.");
  expect({Block(), boss}, Draft(wall, foot, 5, "41:end|50:side:5"),
         "The pull direction must be a straight edge.");
}

}  // namespace
}  // namespace bench::kernel::testing
