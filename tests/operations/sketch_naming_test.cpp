#include <gtest/gtest.h>

#include "addin/ops/sketch/feature_name.h"
#include "tests/operations/sketch_fixture.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

class SketchNaming : public CommittedSketchTest {};

// The fourth element of a commit is the one that names the feature at its birth.
TEST_F(SketchNaming, TheElementWithTheNameMayFail) {
  faults().Fail("ProElementAlloc", -1, 4);
  EXPECT_TRUE(DrawPoint(L"S").success);
  const int id = Session(L"S").feature.id;
  EXPECT_EQ(CountCaptured(L"Sketch Commit: rename feature id=" + std::to_wstring(id) +
                          L" to 'S' (was '') status=0"),
            1);
  EXPECT_NE(FeatureNamed(L"S"), nullptr);
}

TEST_F(SketchNaming, ANameThatCantBeSetFailsTheCommit) {
  faults().Fail("ProElementAlloc", -1, 4);
  faults().Fail("ProModelitemNameSet", -22);
  EXPECT_EQ(DrawPoint(L"S").message, L"Sketch created but could not rename feature to 'S' (status=-22).");
  ExpectUncommitted(2);
  EXPECT_TRUE(DrawPoint(L"S").success);
}

TEST_F(SketchNaming, ARefusedNameThatIsThereCounts) {
  // The name can't be read at first, and setting the present name is no change.
  faults().Fail("ProModelitemNameGet", -1);
  EXPECT_TRUE(DrawPoint(L"S").success);
  const std::wstring head = L"Sketch Commit: rename feature id=";
  EXPECT_EQ(CountCaptured(head + std::to_wstring(Session(L"S").feature.id) + L" to 'S' (was '') status=-12"),
            1);
  // A plain refusal is looked into.
  faults().Fail("ProModelitemNameGet", -1);
  faults().Fail("ProModelitemNameSet", -22);
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_EQ(CountCaptured(head + std::to_wstring(Session(L"S").feature.id) + L" to 'S' (was '') status=0"),
            1);
}

TEST_F(SketchNaming, ABlankAndAnUnderscoreAreTheSameInAName) {
  CreateSketch(L"My sketch");
  FeatureNamed(L"My sketch")->name = L"MY_SKETCH";
  const auto mark = host().journal.Mark();
  EXPECT_TRUE(sketch::NameSketchFeature(Session(L"My sketch")).success);
  EXPECT_TRUE(CallsSince(mark, {"ProModelitemNameSet"}).empty());
}

TEST_F(SketchNaming, ANameTakenByAnotherFeatureIsRefused) {
  bench::Feature& other = *FeatureNamed(L"PRT_CSYS_DEF");
  other.name = L"s";
  const auto mark = host().journal.Mark();
  EXPECT_EQ(DrawPoint(L"S").message,
            L"Cannot rename sketch feature to 'S': that name is already used by an existing feature (id=" +
                std::to_wstring(other.id) + L"). Choose a different sketch name.");
  ExpectUncommitted(2);
  // The tree goes while its feature is there; the old feature was deleted first of all.
  const std::vector<std::string> expected = {"ProFeatureDelete", "ProFeatureElemtreeFree", "ProFeatureDelete",
                                             "ProArrayFree", "ProElementFree"};
  EXPECT_EQ(
      CallsSince(mark, {"ProFeatureDelete", "ProFeatureElemtreeFree", "ProArrayFree", "ProElementFree"}),
      expected);
  other.name = L"elsewhere";
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_EQ(Section(L"S").entities.size(), 3u);
}

TEST_F(SketchNaming, ANameTakenByAnotherSketchOfTheSessionIsRefused) {
  CreateSketch(L"Other");
  features_before_ = Current().features.size();
  const int id = Session(L"Other").feature.id;
  FeatureNamed(L"Other")->name = L"S";
  // The commit deletes the feature of its own session, not the one that has the name.
  EXPECT_EQ(
      DrawPoint(L"S").message,
      L"Cannot rename sketch feature to 'S': that name is already used by another sketch in this session "
      L"(feature id=" +
          std::to_wstring(id) + L").");
  ExpectUncommitted(2);
  EXPECT_TRUE(Session(L"Other").has_feature);
}

}  // namespace
}  // namespace vek::support
