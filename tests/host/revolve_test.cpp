#include <gmock/gmock.h>

#include <numbers>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Creation;
using support::RevolveValues;
using support::Tree;

constexpr double kPi = std::numbers::pi;

class RevolveTest : public support::FeatureTest {
 protected:
  // A rectangle between the radii 10 and 20, 5 high, beside an axis along +Y.
  ProFeature Ring(std::wstring_view name) {
    return Sketch(*part_, name, L"FRONT", [](ProSection section) {
      support::AddCenterline(section, 0, 0, 0, 10);
      support::AddRectangle(section, 10, 0, 20, 5);
    });
  }
};

// The ring's section is 10 by 5, its centre runs on a radius of 15: 50 · 2π · 15.
constexpr double kFullRing = 50 * 2 * kPi * 15;

TEST_F(RevolveTest, TurnsRightHandedAboutTheAxisOrTheOtherWay) {
  // Right-handed about +Y, +X turns to -Z.
  ASSERT_EQ(Revolve(*part_, Ring(L"RING"), {.angle_deg = 90}).status, PRO_TK_NO_ERROR);
  ExpectVolume(kFullRing / 4);
  EXPECT_NEAR(part_->topology.outline->low[2], -20, 1e-6);
  EXPECT_NEAR(part_->topology.outline->high[2], 0, 1e-6);

  part_ = &NewPart(L"OTHER_WAY");
  ASSERT_EQ(Revolve(*part_, Ring(L"RING"), {.angle_deg = 90, .direction = 1}).status, PRO_TK_NO_ERROR);
  ExpectVolume(kFullRing / 4);
  EXPECT_NEAR(part_->topology.outline->low[2], 0, 1e-6);
  EXPECT_NEAR(part_->topology.outline->high[2], 20, 1e-6);
}

TEST_F(RevolveTest, FirstCenterlineIsTheAxis) {
  const ProFeature sketch = Sketch(*part_, L"TWO_AXES", L"FRONT", [](ProSection section) {
    support::AddRectangle(section, 10, 0, 20, 5);
    support::AddCenterline(section, 0, 0, 0, 10);
    support::AddCenterline(section, 0, -10, 10, -10);
  });
  ASSERT_EQ(Revolve(*part_, sketch, {}).status, PRO_TK_NO_ERROR);
  ExpectVolume(kFullRing);
}

TEST_F(RevolveTest, WrongTreesAndSectionsAreRefused) {
  struct Case {
    const char* what;
    RevolveValues values;
    std::function<void(Tree&)> spoil;
  };
  const Case cases[] = {
      {"no angle", {.angle_deg = 0}, nullptr},
      {"negative angle", {.angle_deg = -90}, nullptr},
      {"more than a turn", {.angle_deg = 400}, nullptr},
      {"unknown direction", {.direction = 2}, nullptr},
      {"depth of an extrude", {}, [](Tree& tree) { tree.Compound(tree.Root(), 515); }},
  };
  const ProFeature ring = Ring(L"RING");
  const ProFeature without_axis = Sketch(
      *part_, L"NO_AXIS", L"FRONT", [](ProSection section) { support::AddRectangle(section, 10, 0, 20, 5); });
  const ProFeature across = Sketch(*part_, L"ACROSS", L"FRONT", [](ProSection section) {
    support::AddCenterline(section, 0, 0, 0, 10);
    support::AddRectangle(section, -5, 0, 20, 5);
  });
  const std::string before = Snapshot(*part_);
  for (const Case& wrong : cases) {
    Tree tree;
    FillRevolveTree(tree, wrong.values);
    if (wrong.spoil) wrong.spoil(tree);
    const Creation creation = CreateFromSketch(*part_, tree.Root(), ring);
    EXPECT_NE(creation.status, PRO_TK_NO_ERROR) << wrong.what;
    EXPECT_GT(creation.errors, 0) << wrong.what;
  }
  EXPECT_NE(Revolve(*part_, without_axis, {}).status, PRO_TK_NO_ERROR);
  EXPECT_NE(Revolve(*part_, across, {}).status, PRO_TK_NO_ERROR);
  EXPECT_EQ(Snapshot(*part_), before);
}

}  // namespace
}  // namespace bench
