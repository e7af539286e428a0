#include <ProFeature.h>
#include <gmock/gmock.h>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the visitors note and answer.
struct Visitor {
  std::vector<int> seen;
  std::vector<int> filter_answers;
  int skip_id = -1;
  int other_id = -1;
  int stop_id = -1;
  int erase_id = -1;
};

ProError Act(ProModelitem* item, ProError filter_status, ProAppData data) {
  auto& visitor = *static_cast<Visitor*>(data);
  visitor.seen.push_back(item->id);
  visitor.filter_answers.push_back(filter_status);
  if (visitor.erase_id >= 0)
    std::erase_if(TheHost().session.Find(item->owner)->features,
                  [&](const auto& feature) { return feature->id == visitor.erase_id; });
  return item->id == visitor.stop_id ? PRO_TK_USER_ABORT : PRO_TK_NO_ERROR;
}

ProError Filter(ProModelitem* item, ProAppData data) {
  const auto& visitor = *static_cast<Visitor*>(data);
  if (item->id == visitor.skip_id) return PRO_TK_CONTINUE;
  return item->id == visitor.other_id ? PRO_TK_E_NOT_FOUND : PRO_TK_NO_ERROR;
}

class VisitsTest : public support::BenchTest {
 protected:
  void SetUp() override {
    BenchTest::SetUp();
    part = &NewPart(L"BOLT");
    part->features.clear();
    for (const int id : {11, 3, 7}) {
      part->features.push_back(std::make_unique<Feature>());
      part->features.back()->id = id;
    }
    part->features[0]->items = {
        {PRO_SURFACE, 30, "c"}, {PRO_CURVE, 12, "x"}, {PRO_SURFACE, 20, "a"}, {PRO_SURFACE, 25, "b", false}};
  }
  ProError VisitFeatures(ProFeatureFilterAction filter = nullptr) {
    return ProSolidFeatVisit(SolidHandle(*part), Act, filter, &visitor);
  }
  ProError VisitItems(int feature_id, ProType type) {
    ProFeature feature{PRO_FEATURE, feature_id, Handle(*part)};
    return ProFeatureGeomitemVisit(&feature, type, Act, nullptr, &visitor);
  }

  Model* part = nullptr;
  Visitor visitor;
};

TEST_F(VisitsTest, FeaturesComeInTheirOrderUntilTheVisitorsAnswerEndsTheVisit) {
  visitor.stop_id = 3;
  EXPECT_EQ(VisitFeatures(), PRO_TK_USER_ABORT);
  EXPECT_THAT(visitor.seen, ElementsAre(11, 3));
}

TEST_F(VisitsTest, OnlyTheFiltersContinueAndWhatWasDeletedOnTheWayAreLeftOut) {
  visitor.skip_id = 11;
  visitor.other_id = 7;
  EXPECT_EQ(VisitFeatures(Filter), PRO_TK_NO_ERROR);
  EXPECT_THAT(visitor.seen, ElementsAre(3, 7));
  EXPECT_THAT(visitor.filter_answers, ElementsAre(0, PRO_TK_E_NOT_FOUND));
  visitor.seen.clear();
  visitor.erase_id = 3;
  EXPECT_EQ(VisitFeatures(), PRO_TK_NO_ERROR);
  EXPECT_THAT(visitor.seen, ElementsAre(11, 7));
}

TEST_F(VisitsTest, LivingItemsComeInTheOrderOfTheirIdsAndNoneIsASuccess) {
  EXPECT_EQ(VisitItems(11, PRO_SURFACE), PRO_TK_NO_ERROR);
  EXPECT_THAT(visitor.seen, ElementsAre(20, 30));
  visitor.seen.clear();
  EXPECT_EQ(VisitItems(3, PRO_SURFACE), PRO_TK_NO_ERROR);
  part->features.clear();
  EXPECT_EQ(VisitFeatures(), PRO_TK_NO_ERROR);
  EXPECT_THAT(visitor.seen, IsEmpty());
}

TEST_F(VisitsTest, AnUnknownFeatureModelOrKindOfItemIsRefused) {
  EXPECT_EQ(VisitItems(99, PRO_SURFACE), PRO_TK_E_NOT_FOUND);
  ProFeature surface{PRO_SURFACE, 20, Handle(*part)};
  EXPECT_EQ(ProFeatureGeomitemVisit(&surface, PRO_SURFACE, Act, nullptr, &visitor), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProSolidFeatVisit(SolidHandle(*part), nullptr, nullptr, nullptr), PRO_TK_BAD_INPUTS);
  const ProSolid dead = SolidHandle(*part);
  ProMdlErase(Handle(*part));
  EXPECT_EQ(ProSolidFeatVisit(dead, Act, nullptr, &visitor), PRO_TK_INVALID_PTR);
}

}  // namespace
}  // namespace bench
