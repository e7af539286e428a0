// Visits to features and their items, and the names of these.
#include <ProFeature.h>
#include <ProModelitem.h>
#include <gmock/gmock.h>

#include "bench/host/text.h"
#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using support::NameBuffer;
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

class NamesTest : public support::BenchTest {
 protected:
  void SetUp() override {
    BenchTest::SetUp();
    part = &NewPart(L"BOLT");
    boss = AddFeature(917, L"Extrude 1");
    boss->items = {{PRO_SURFACE, part->next_id++, "b"}, {PRO_SURFACE, part->next_id++, "b", true, L"Seat"}};
    axis = AddFeature(926, L"A_1");
    axis->items = {{PRO_AXIS, part->next_id++, {}}};
    unnamed = AddFeature(949, L"");
  }
  Feature* AddFeature(ProFeattype type, const wchar_t* name) {
    part->features.push_back(std::make_unique<Feature>());
    Feature* feature = part->features.back().get();
    feature->id = part->next_id++;
    feature->type = type;
    feature->name = name;
    return feature;
  }
  // The id under that name, or the status of a failed look-up.
  int Find(ProType type, std::wstring_view name) {
    NameBuffer buffer(name);
    ProModelitem item{};
    if (const ProError status = ProModelitemByNameInit(Handle(*part), type, buffer, &item)) return status;
    EXPECT_EQ(item.type, type);
    EXPECT_EQ(item.owner, Handle(*part));
    return item.id;
  }
  ProError SetName(ProType type, int id, std::wstring_view name) {
    NameBuffer buffer(name);
    ProModelitem item{type, id, Handle(*part)};
    return ProModelitemNameSet(&item, buffer);
  }

  Model* part = nullptr;
  Feature* boss = nullptr;
  Feature* axis = nullptr;
  Feature* unnamed = nullptr;
};

TEST_F(NamesTest, ItemsAreFoundInAnyCaseByTheirOwnNameAndPlanesAndAxesByTheirFeatures) {
  const int front = part->features[2]->items[0].id;
  EXPECT_EQ(SetName(PRO_AXIS, axis->items[0].id, L"HINGE"), PRO_TK_NO_ERROR);
  const struct {
    ProType type;
    const wchar_t* name;
    int found;
  } cases[] = {{PRO_FEATURE, L"EXTRUDE 1", boss->id},
               {PRO_FEATURE, L"front", part->features[2]->id},
               {PRO_FEATURE, L"Extrude_1", PRO_TK_E_NOT_FOUND},
               {PRO_FEATURE, L"Seat", PRO_TK_E_NOT_FOUND},
               {PRO_SURFACE, L"Front", front},
               {PRO_DATUM_PLANE, L"FRONT", front},
               {PRO_SURFACE, L"Extrude 1", PRO_TK_E_NOT_FOUND},
               {PRO_SURFACE, L"SEAT", boss->items[1].id},
               {PRO_AXIS, L"a_1", axis->items[0].id},
               {PRO_AXIS, L"hinge", axis->items[0].id}};
  for (const auto& each : cases) EXPECT_EQ(Find(each.type, each.name), each.found) << ToUtf8(each.name);
  boss->items[1].alive = false;
  EXPECT_EQ(Find(PRO_SURFACE, L"Seat"), PRO_TK_E_NOT_FOUND) << "geometry that is gone";
}

TEST_F(NamesTest, NamesThatAreTakenWithinTheirTypeEmptyOrTooLongAreRefused) {
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, L"extrude 1"), PRO_TK_E_FOUND);
  EXPECT_EQ(SetName(PRO_SURFACE, boss->items[0].id, L"SEAT"), PRO_TK_E_FOUND);
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, L"Seat"), PRO_TK_NO_ERROR);
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, std::wstring(31, L'n')), PRO_TK_NO_ERROR);
  support::Buffer<PRO_NAME_SIZE + 1> too_long(std::wstring(32, L'n'));
  ProModelitem item{PRO_FEATURE, unnamed->id, Handle(*part)};
  EXPECT_EQ(ProModelitemNameSet(&item, too_long), PRO_TK_LINE_TOO_LONG);
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, L""), PRO_TK_INVALID_NAME);
  EXPECT_EQ(SetName(PRO_FEATURE, 999, L"X"), PRO_TK_E_NOT_FOUND);
}

}  // namespace
}  // namespace bench
