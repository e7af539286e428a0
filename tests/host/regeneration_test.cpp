#include <gmock/gmock.h>

#include <map>

#include "bench/host/console/console.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

class RegenerationTest : public support::FeatureTest {
 protected:
  support::Creation Block() { return Extrude(*part_, Plate(), {}); }
  std::map<std::string, int> IdsOf(ProType type) {
    std::map<std::string, int> ids;
    for (const auto& feature : part_->features)
      for (const GeometryItem& item : feature->items)
        if (item.type == type && item.alive && !item.key.empty()) ids[item.key] = item.id;
    return ids;
  }
};

TEST_F(RegenerationTest, FacesAndEdgesBelongToTheFeatureThatMadeThemAndKeepTheirIds) {
  const auto block = Block();
  const auto before = IdsOf(PRO_SURFACE);
  EXPECT_EQ(before.size(), 6u);
  EXPECT_EQ(IdsOf(PRO_EDGE).size(), 12u);
  const auto hole = Extrude(*part_, Circle(20, 10, 5), {.second_side = 1048576, .depth = {}, .cut = true});
  EXPECT_THAT(IdsOf(PRO_SURFACE), testing::IsSupersetOf(before));
  std::map<int, int> faces;
  std::map<int, int> bearers;
  for (const auto& feature : part_->features)
    for (const GeometryItem& item : feature->items) {
      if (!item.alive || item.key.empty()) continue;
      EXPECT_EQ(++bearers[item.id], 1) << item.id;
      if (item.type == PRO_SURFACE) ++faces[feature->id];
    }
  EXPECT_EQ(faces, (std::map<int, int>{{block.feature.id, 6}, {hole.feature.id, 1}}));
}

TEST_F(RegenerationTest, NothingIsAskedOfTheKernelWithoutRecipesOrWithUnchangedOnes) {
  int asked = host().kernel.RequestsSent();
  EXPECT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSolidRegenerate(SolidHandle(NewAssembly(L"EMPTY")), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSolidRegenerate(nullptr, 0), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(host().kernel.RequestsSent(), asked);
  Block();
  asked = host().kernel.RequestsSent();
  EXPECT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(host().kernel.RequestsSent(), asked);
  part_->length_unit = LengthUnit::kInch;
  EXPECT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(host().kernel.RequestsSent(), asked + 1);
  ExpectVolume(40 * 20 * 10 * 25.4 * 25.4 * 25.4);
}

// Each line that is added to a drawing deletes its sketch and draws it anew.
TEST_F(RegenerationTest, CommitAsksTheKernelTwiceHoweverManyLinesThereAre) {
  Block();
  const auto draw = [this](int lines) {
    return Sketch(*part_, L"LINES", L"TOP", [lines](ProSection section) {
      for (int i = 0; i < lines; ++i) support::AddLine(section, i, i % 2, i + 1, (i + 1) % 2);
    });
  };
  ProFeature sketch = draw(49);
  const int asked = host().kernel.RequestsSent();
  ASSERT_EQ(ProFeatureDelete(Solid(), &sketch.id, 1, nullptr, 0), PRO_TK_NO_ERROR);
  draw(50);
  ASSERT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  EXPECT_LE(host().kernel.RequestsSent() - asked, 2);
}

TEST_F(RegenerationTest, UnitsInWhichTheModelCannotBeMadeAreNotTaken) {
  part_ = &NewCurrentPart(L"GAP");
  // The outline is open by 5e-6: closed enough in millimetres, but not in metres, where that is 5e-3 mm.
  const ProFeature sketch = Sketch(*part_, L"GAP", L"FRONT", [](ProSection section) {
    support::AddLine(section, 0, 0, 4, 0);
    support::AddLine(section, 4, 0, 4, 2);
    support::AddLine(section, 4, 2, 0, 5e-6);
  });
  ASSERT_EQ(Extrude(*part_, sketch, {}).status, PRO_TK_NO_ERROR);
  part_->modified = false;
  const std::string before = Snapshot(*part_);
  std::string said;
  Console console([&said](const std::string& line) { said = line; });

  console.Run("units m");
  EXPECT_THAT(said, testing::HasSubstr("does not regenerate"));
  EXPECT_EQ(Snapshot(*part_), before);

  console.Run("units mm");
  EXPECT_EQ(said, "ok");
}

}  // namespace
}  // namespace bench
