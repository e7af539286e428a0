#include <ProIntf.h>
#include <ProMdl.h>
#include <gmock/gmock.h>

#include <map>
#include <numbers>

#include "bench/host/console/console.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

constexpr double kPi = std::numbers::pi;

class RegenerationTest : public support::FeatureTest {
 protected:
  support::Creation Block() { return Extrude(*part_, Plate(), {}); }
  support::Creation Hole() {
    return Extrude(*part_, Circle(20, 10, 5), {.second_side = 1048576, .depth = {}, .cut = true});
  }
  std::map<std::string, int> IdsOf(const Model& model, ProType type) {
    std::map<std::string, int> ids;
    for (const auto& feature : model.features)
      for (const GeometryItem& item : feature->items)
        if (item.type == type && item.alive && !item.key.empty()) ids[item.key] = item.id;
    return ids;
  }
};

TEST_F(RegenerationTest, FacesAndEdgesBelongToTheFeatureThatMadeThemAndKeepTheirIds) {
  const auto block = Block();
  const auto before = IdsOf(*part_, PRO_SURFACE);
  EXPECT_EQ(before.size(), 6u);
  EXPECT_EQ(IdsOf(*part_, PRO_EDGE).size(), 12u);
  const auto hole = Hole();
  EXPECT_THAT(IdsOf(*part_, PRO_SURFACE), testing::IsSupersetOf(before));
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

TEST_F(RegenerationTest, SavedErasedAndRetrievedIsTheSameModel) {
  Block();
  Hole();
  const auto faces = IdsOf(*part_, PRO_SURFACE);
  const auto edges = IdsOf(*part_, PRO_EDGE);
  SaveAndRetrieve();
  EXPECT_EQ(IdsOf(*part_, PRO_SURFACE), faces);
  EXPECT_EQ(IdsOf(*part_, PRO_EDGE), edges);
  ExpectVolume(40 * 20 * 10 - kPi * 5 * 5 * 10);
  EXPECT_FALSE(part_->modified);
}

TEST_F(RegenerationTest, DamagedRecipeIsComplainedAboutAndCostsNothingElse) {
  const auto block = Block();
  part_->FindFeature(block.feature.id)->section = nullptr;
  const double volume = part_->topology.mass->volume;
  EXPECT_NE(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  EXPECT_TRUE(Complained("has no recipe"));
  EXPECT_EQ(part_->topology.mass->volume, volume);
}

TEST_F(RegenerationTest, KernelWithoutAnAnswerIsAFailureThatChangesNothing) {
  const auto block = Block();
  const std::string before = Snapshot(*part_);
  host().kernel.SetProgram(L"/nowhere/creokernel");
  part_->length_unit = LengthUnit::kMetre;
  EXPECT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_COMM_ERROR);
  part_->length_unit = LengthUnit::kMillimetre;
  int id = block.feature.id;
  const int sketch = part_->features[part_->features.size() - 2]->id;
  EXPECT_EQ(ProFeatureDelete(Solid(), &id, 1, nullptr, 0), PRO_TK_COMM_ERROR);
  EXPECT_NE(Extrude(*part_, {PRO_FEATURE, sketch, part_}, {}).status, PRO_TK_NO_ERROR);
  support::PathBuffer path(PathOf(L"plate"));
  EXPECT_EQ(ProIntf3DFileWriteWithDefaultProfile(Solid(), static_cast<ProIntf3DFileType>(1), path),
            PRO_TK_COMM_ERROR);
  host().kernel.SetProgram(KernelProgram());
  EXPECT_EQ(Snapshot(*part_), before);
  EXPECT_TRUE(FilesHere().empty());
  EXPECT_TRUE(Complained("/nowhere/creokernel"));
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

  host().kernel.SetProgram(L"/nowhere/creokernel");
  console.Run("units inch");
  EXPECT_THAT(said, testing::HasSubstr("does not regenerate"));
  EXPECT_EQ(Snapshot(*part_), before);

  host().kernel.SetProgram(KernelProgram());
  console.Run("units mm");
  EXPECT_EQ(said, "ok");
}

}  // namespace
}  // namespace bench
