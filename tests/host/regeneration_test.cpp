#include "bench/host/regeneration.h"

#include <ProMdl.h>
#include <gmock/gmock.h>

#include <chrono>
#include <map>
#include <numbers>
#include <set>

#include "bench/host/console.h"
#include "bench/host/model_store.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::Contains;

constexpr double kPi = std::numbers::pi;

class RegenerationTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    part_ = &NewPart(L"REGENERATED");
  }
  support::Creation Block() {
    const ProFeature sketch = Sketch(
        *part_, L"PLATE", L"FRONT", [](ProSection section) { support::AddRectangle(section, 0, 0, 40, 20); });
    return Extrude(*part_, sketch, {});
  }
  support::Creation Hole() {
    const ProFeature sketch = Sketch(*part_, L"CIRCLE", L"FRONT",
                                     [](ProSection section) { support::AddCircle(section, 20, 10, 5); });
    return Extrude(*part_, sketch, {.second_side = 1048576, .depth = {}, .cut = true});
  }
  std::map<std::string, int> IdsOf(const Model& model, ProType type) {
    std::map<std::string, int> ids;
    for (const auto& feature : model.features)
      for (const GeometryItem& item : feature->items)
        if (item.type == type && item.alive && !item.key.empty()) ids[item.key] = item.id;
    return ids;
  }

  Model* part_ = nullptr;
};

TEST_F(RegenerationTest, FacesAndEdgesBelongToTheFeatureThatMadeThem) {
  const auto block = Block();
  EXPECT_EQ(IdsOf(*part_, PRO_SURFACE).size(), 6u);
  EXPECT_EQ(IdsOf(*part_, PRO_EDGE).size(), 12u);
  const auto hole = Hole();
  std::map<int, int> faces;
  for (const auto& feature : part_->features)
    for (const GeometryItem& item : feature->items)
      if (item.type == PRO_SURFACE && item.alive && !item.key.empty()) ++faces[feature->id];
  EXPECT_EQ(faces, (std::map<int, int>{{block.feature.id, 6}, {hole.feature.id, 1}}));
}

TEST_F(RegenerationTest, IdsStayWhenFeaturesAreAddedAndNoTwoAreAlike) {
  Block();
  const auto before = IdsOf(*part_, PRO_SURFACE);
  Hole();
  const auto after = IdsOf(*part_, PRO_SURFACE);
  for (const auto& entry : before) EXPECT_THAT(after, Contains(entry));
  std::set<int> all;
  std::size_t count = 0;
  for (const ProType type : {PRO_SURFACE, PRO_EDGE, PRO_CURVE})
    for (const auto& [key, id] : IdsOf(*part_, type)) {
      all.insert(id);
      ++count;
    }
  EXPECT_EQ(all.size(), count);
}

TEST_F(RegenerationTest, UnchangedRecipesAskNothingOfTheKernel) {
  Block();
  const int asked = host().kernel.RequestsSent();
  EXPECT_EQ(ProSolidRegenerate(SolidHandle(*part_), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(host().kernel.RequestsSent(), asked);
  part_->length_unit = LengthUnit::kInch;
  EXPECT_EQ(ProSolidRegenerate(SolidHandle(*part_), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(host().kernel.RequestsSent(), asked + 1);
  EXPECT_NEAR(part_->topology.mass->volume / (40 * 20 * 10 * 25.4 * 25.4 * 25.4), 1, 1e-6);
}

TEST_F(RegenerationTest, PartWithoutRecipesNeedsNoKernel) {
  const int asked = host().kernel.RequestsSent();
  EXPECT_EQ(ProSolidRegenerate(SolidHandle(*part_), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSolidRegenerate(SolidHandle(NewAssembly(L"EMPTY")), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(host().kernel.RequestsSent(), asked);
  EXPECT_EQ(ProSolidRegenerate(nullptr, 0), PRO_TK_BAD_INPUTS);
}

TEST_F(RegenerationTest, SavedErasedAndRetrievedIsTheSameModel) {
  Block();
  Hole();
  const auto faces = IdsOf(*part_, PRO_SURFACE);
  const auto edges = IdsOf(*part_, PRO_EDGE);
  ASSERT_EQ(ProMdlSave(Handle(*part_)), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(Handle(*part_)), PRO_TK_NO_ERROR);
  ASSERT_EQ(RetrieveModel(L"regenerated", PRO_MDL_PART, part_), PRO_TK_NO_ERROR);
  EXPECT_EQ(IdsOf(*part_, PRO_SURFACE), faces);
  EXPECT_EQ(IdsOf(*part_, PRO_EDGE), edges);
  EXPECT_NEAR(part_->topology.mass->volume, 40 * 20 * 10 - kPi * 5 * 5 * 10, 1e-3);
  EXPECT_FALSE(part_->modified);
}

TEST_F(RegenerationTest, DamagedRecipeIsComplainedAboutAndCostsNothingElse) {
  const auto block = Block();
  part_->FindFeature(block.feature.id)->section = nullptr;
  const double volume = part_->topology.mass->volume;
  EXPECT_NE(ProSolidRegenerate(SolidHandle(*part_), 0), PRO_TK_NO_ERROR);
  EXPECT_TRUE(Complained("has no recipe"));
  EXPECT_EQ(part_->topology.mass->volume, volume);
}

TEST_F(RegenerationTest, KernelWithoutAnAnswerIsAFailureThatChangesNothing) {
  const auto block = Block();
  const std::string before = Snapshot(*part_);
  host().kernel.SetProgram(L"/nowhere/creokernel");
  part_->length_unit = LengthUnit::kMetre;
  EXPECT_EQ(ProSolidRegenerate(SolidHandle(*part_), 0), PRO_TK_COMM_ERROR);
  part_->length_unit = LengthUnit::kMillimetre;
  int id = block.feature.id;
  EXPECT_EQ(ProFeatureDelete(SolidHandle(*part_), &id, 1, nullptr, 0), PRO_TK_COMM_ERROR);
  host().kernel.SetProgram(KernelProgram());
  EXPECT_EQ(Snapshot(*part_), before);
  EXPECT_TRUE(Complained("/nowhere/creokernel"));
}

// A drawing of so many lines is asked for one by one; each commit deletes the sketch and draws it anew.
TEST_F(RegenerationTest, CommitAsksTheKernelTwiceHoweverManyLinesThereAre) {
  Block();
  ProFeature sketch{};
  for (int lines = 1; lines <= 50; ++lines) {
    const int asked = host().kernel.RequestsSent();
    if (lines > 1) {
      ASSERT_EQ(ProFeatureDelete(SolidHandle(*part_), &sketch.id, 1, nullptr, 0), PRO_TK_NO_ERROR);
    }
    sketch = Sketch(*part_, L"LINES", L"TOP", [lines](ProSection section) {
      for (int i = 0; i < lines; ++i) support::AddLine(section, i, i % 2, i + 1, (i + 1) % 2);
    });
    ASSERT_EQ(ProSolidRegenerate(SolidHandle(*part_), 0), PRO_TK_NO_ERROR);
    EXPECT_LE(host().kernel.RequestsSent() - asked, 2);
  }
  EXPECT_EQ(IdsOf(*part_, PRO_CURVE).size(), 50u + 4u);
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
