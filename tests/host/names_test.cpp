#include <ProModelitem.h>
#include <gmock/gmock.h>

#include "bench/host/text.h"
#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using support::Buffer;
using support::NameBuffer;

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

TEST_F(NamesTest, ANameIsKeptAsItWasGivenAndOnlyAnotherOneChangesTheModel) {
  part->modified = false;
  NameBuffer name;
  ProModelitem item{PRO_FEATURE, unnamed->id, Handle(*part)};
  EXPECT_EQ(ProModelitemNameGet(&item, name), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(SetName(PRO_FEATURE, boss->id, L"Extrude 1"), PRO_TK_NO_CHANGE);
  EXPECT_FALSE(part->modified);
  EXPECT_EQ(SetName(PRO_FEATURE, boss->id, L"EXTRUDE 1"), PRO_TK_NO_ERROR);
  EXPECT_EQ(boss->name, L"EXTRUDE 1");
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, L"My Sketch"), PRO_TK_NO_ERROR);
  EXPECT_TRUE(part->modified);
  EXPECT_EQ(ProModelitemNameGet(&item, name), PRO_TK_NO_ERROR);
  EXPECT_EQ(name.text(), L"My Sketch");
}

TEST_F(NamesTest, NamesThatAreTakenWithinTheirTypeEmptyOrTooLongAreRefused) {
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, L"extrude 1"), PRO_TK_E_FOUND);
  EXPECT_EQ(SetName(PRO_SURFACE, boss->items[0].id, L"SEAT"), PRO_TK_E_FOUND);
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, L"Seat"), PRO_TK_NO_ERROR);
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, std::wstring(31, L'n')), PRO_TK_NO_ERROR);
  Buffer<PRO_NAME_SIZE + 1> too_long(std::wstring(32, L'n'));
  ProModelitem item{PRO_FEATURE, unnamed->id, Handle(*part)};
  EXPECT_EQ(ProModelitemNameSet(&item, too_long), PRO_TK_LINE_TOO_LONG);
  EXPECT_EQ(SetName(PRO_FEATURE, unnamed->id, L""), PRO_TK_INVALID_NAME);
  EXPECT_EQ(SetName(PRO_FEATURE, 999, L"X"), PRO_TK_E_NOT_FOUND);
}

}  // namespace
}  // namespace bench
