// Datum axes, local groups, patterns, geometry mirrors and solidifies, made as an add-in makes them.
#include <ProModelitem.h>
#include <ProPattern.h>

#include <numbers>

#include "bench/host/features/feature_removal.h"
#include "bench/host/features/local_group.h"
#include "bench/host/features/pattern.h"
#include "bench/host/storage/model_json.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::NameBuffer;
using support::Tree;

constexpr double kPi = std::numbers::pi;

using ItemReferences = std::vector<ItemReference>;

struct Directions {
  int count = 3;
  double spacing = 10;
  int second_count = 0;  // 0: no second direction
  double second_spacing = 10;
};

class PatternsTest : public support::FeatureTest {
 protected:
  // A plate 40 by 20 by 10 and a boss of radius 2 and height 15 at (5, 5), 5 of it above the plate.
  void SetUp() override {
    FeatureTest::SetUp();
    if (HasFatalFailure()) return;
    plate_ = Extrude(*part_, Plate(), {}).feature;
    boss_ = Extrude(*part_, Circle(5, 5, 2), {.depth = 15}).feature;
  }

  void FillDirection(Tree& tree, ProElement parent, bool second, ProModelitem plane, double spacing,
                     int count) {
    const ProElement direction = tree.Compound(tree.Compound(parent, second ? 3292 : 3291), 3252);
    tree.Reference(direction, 3253, plane);
    tree.Integer(direction, 3254, 0);
    tree.Integer(parent, second ? 3308 : 3307, 0);
    tree.Integer(parent, second ? 4027 : 4026, -1);
    tree.Double(parent, second ? 3275 : 3274, spacing);
    tree.Compound(parent, second ? 3135 : 3133);
    tree.Integer(parent, second ? 3136 : 3134, count);
  }

  ProError Pattern(ProFeature leader, const Directions& how, ProPatternClass kind = PRO_FEAT_PATTERN) {
    Tree tree(0, 604);
    tree.Integer(tree.Root(), 3124, 5);
    tree.Integer(tree.Root(), 3131, 4);
    const ProElement directions = tree.Compound(tree.Root(), 3129);
    FillDirection(tree, directions, false, PlaneOf(*part_, L"RIGHT"), how.spacing, how.count);
    if (how.second_count != 0)
      FillDirection(tree, directions, true, PlaneOf(*part_, L"TOP"), how.second_spacing, how.second_count);
    return ProPatternCreate(&leader, kind, tree.Root());
  }

  ProError PatternAbout(ProFeature leader, ProModelitem axis, double step, int count,
                        std::optional<double> whole = {}) {
    Tree tree(0, 604);
    tree.Integer(tree.Root(), 3124, 6);
    tree.Integer(tree.Root(), 3131, 4);
    const ProElement about = tree.Compound(tree.Root(), 3130);
    tree.Reference(about, 3273, axis);
    tree.Integer(about, 3309, 0);
    tree.Compound(about, 3133);
    tree.Integer(about, 3134, count);
    tree.Double(about, 3276, step);
    if (whole) tree.Double(about, 3297, *whole);
    return ProPatternCreate(&leader, PRO_FEAT_PATTERN, tree.Root());
  }

  ProModelitem AxisNamed(std::wstring_view name) {
    ProModelitem axis{};
    EXPECT_EQ(ProModelitemByNameInit(part_, PRO_AXIS, NameBuffer(name), &axis), PRO_TK_NO_ERROR);
    return axis;
  }

  ProError Group(std::vector<int> ids, ProFeature& group, std::wstring_view name = L"GROUP") {
    return ProLocalGroupCreate(Solid(), ids.data(), static_cast<int>(ids.size()), NameBuffer(name), &group);
  }

  FeatureOutcome Mirror(const ItemReferences& items, ItemReference plane) {
    return CreateOf(
        {{{387}, 950}, {{3182}, 1}, {{3161}, items}, {{3162}, ItemReferences{plane}}, {{3163}, 0}});
  }

  FeatureOutcome Solidify(ItemReference quilt) {
    return CreateOf({{{387}, 917}, {{388}, 512}, {{3023}, ItemReferences{quilt}}});
  }

  static ItemReference Of(const ProModelitem& item) { return {item.type, item.id, item.owner}; }

  // The living items of that type of all features, or of one.
  ItemReferences Items(ProType type, int owner = -1) {
    ItemReferences items;
    for (const auto& feature : part_->features)
      for (const GeometryItem& item : feature->items)
        if (item.type == type && item.alive && !item.key.empty() && (owner < 0 || feature->id == owner))
          items.push_back({type, item.id, part_});
    return items;
  }

  // What `boss_` is above the plate.
  static constexpr double kPlate = 40 * 20 * 10, kBoss = kPi * 4 * 5;
  ProFeature plate_{}, boss_{};
};

TEST_F(PatternsTest, DirectionPatternIsOneFeatureOfItsLeader) {
  ASSERT_EQ(Pattern(boss_, {.count = 3, .second_count = 2}), PRO_TK_NO_ERROR);
  ExpectVolume(kPlate + 6 * kBoss);
  ProPattern pattern{};
  ASSERT_EQ(ProFeaturePatternGet(&boss_, PRO_FEAT_PATTERN, &pattern), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProFeaturePatternGet(&boss_, PRO_GROUP_PATTERN, &pattern), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProFeaturePatternGet(&plate_, PRO_FEAT_PATTERN, &pattern), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProModelitemNameSet(&pattern, NameBuffer(L"Pattern 1")), PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->FindFeature(pattern.id)->type, kPattern);
  // A wall and an end of each of five copies.
  EXPECT_EQ(Items(PRO_SURFACE, pattern.id).size(), 10u);

  const std::string before = Snapshot(*part_);
  EXPECT_NE(Pattern(boss_, {}), PRO_TK_NO_ERROR) << "a second one";
  EXPECT_EQ(Snapshot(*part_), before);
  ASSERT_EQ(ProFeatureDelete(Solid(), &pattern.id, 1, nullptr, 0), PRO_TK_NO_ERROR);
  ExpectVolume(kPlate + kBoss);
  EXPECT_EQ(Pattern(boss_, {}), PRO_TK_NO_ERROR) << "again";
}

TEST_F(PatternsTest, MirroredAxisLiesOnTheOtherSide) {
  // About the plate's top at z = 10, the axis along +Y through the origin comes to lie at z = 20.
  ASSERT_EQ(DatumAxis(PlaneOf(*part_, L"FRONT"), PlaneOf(*part_, L"RIGHT")).status, PRO_TK_NO_ERROR);
  const FeatureOutcome mirror = Mirror({Of(AxisNamed(L"AXIS"))}, ItemOf(PRO_SURFACE, ":end"));
  ASSERT_EQ(mirror.status, PRO_TK_NO_ERROR);
  const auto& items = part_->FindFeature(mirror.feature)->items;
  ASSERT_EQ(items.size(), 1u);
  // A half turn about it takes the boss, z 0..15 at x = 5, to z 25..40 at x = -5.
  ASSERT_EQ(PatternAbout(boss_, {PRO_AXIS, items[0].id, part_}, 180, 2), PRO_TK_NO_ERROR);
  ExpectOutline({-7, 0, 0}, {40, 20, 40});
}

TEST_F(PatternsTest, WrongTreesAreRefused) {
  ASSERT_EQ(DatumAxis(PlaneOf(*part_, L"RIGHT"), PlaneOf(*part_, L"TOP")).status, PRO_TK_NO_ERROR);
  const ProModelitem axis = AxisNamed(L"AXIS"), right = PlaneOf(*part_, L"RIGHT");
  const ProFeature lone = Circle(100, 100, 1);
  const std::string before = Snapshot(*part_);
  EXPECT_NE(Pattern(boss_, {.count = 1}), PRO_TK_NO_ERROR);
  EXPECT_NE(Pattern(boss_, {.count = 1001}), PRO_TK_NO_ERROR);
  EXPECT_NE(Pattern(boss_, {.count = 500, .second_count = 3}), PRO_TK_NO_ERROR);
  EXPECT_NE(Pattern(boss_, {.spacing = 0}), PRO_TK_NO_ERROR);
  EXPECT_NE(Pattern(boss_, {.second_count = 1}), PRO_TK_NO_ERROR);
  EXPECT_NE(Pattern(boss_, {}, PRO_GROUP_PATTERN), PRO_TK_NO_ERROR);
  EXPECT_NE(PatternAbout(boss_, axis, 0, 4), PRO_TK_NO_ERROR);
  EXPECT_NE(PatternAbout(boss_, axis, 90, 1), PRO_TK_NO_ERROR);
  EXPECT_NE(PatternAbout(boss_, axis, 90, 4, 270), PRO_TK_NO_ERROR) << "four steps are a full turn";
  EXPECT_NE(PatternAbout(boss_, right, 90, 4), PRO_TK_NO_ERROR) << "a plane is no axis";
  EXPECT_NE(DatumAxis(right, right).status, PRO_TK_NO_ERROR) << "parallel planes";
  EXPECT_NE(DatumAxis(right, axis).status, PRO_TK_NO_ERROR);
  EXPECT_NE(Mirror({Of(PlaneOf(*part_, L"TOP"))}, Of(right)).status, PRO_TK_NO_ERROR) << "a datum plane";
  EXPECT_NE(Mirror({Items(PRO_EDGE).front()}, Of(right)).status, PRO_TK_NO_ERROR);
  EXPECT_NE(Mirror({Of(axis)}, Of(axis)).status, PRO_TK_NO_ERROR);
  EXPECT_NE(Solidify(Of(right)).status, PRO_TK_NO_ERROR);
  const ProFeature datum{PRO_FEATURE, part_->features.front()->id, part_};
  EXPECT_EQ(Pattern(datum, {}), PRO_TK_GENERAL_ERROR) << "there is nothing of it to repeat";
  Tree misplaced(0, 604);
  EXPECT_NE(Create(*part_, misplaced.Root(), 1).status, PRO_TK_NO_ERROR) << "a pattern without a leader";
  EXPECT_EQ(Snapshot(*part_), before);
  EXPECT_EQ(Pattern(lone, {}), PRO_TK_NO_ERROR) << "a sketch alone can be repeated";
}

TEST_F(PatternsTest, GroupNeedsNeighboursAndStandsForThem) {
  // boss_ is followed by the sketch of its bore and the bore.
  const ProFeature circle = Circle(5, 5, 1);
  const ProFeature bore = Extrude(*part_, circle, {.second_side = 1048576, .depth = {}, .cut = true}).feature;
  const double before_group = kPlate + kBoss - kPi * 15;
  ExpectVolume(before_group);
  ProFeature group{};
  const std::string before = Snapshot(*part_);
  EXPECT_NE(Group({boss_.id, bore.id}, group), PRO_TK_NO_ERROR) << "the sketch is between them";
  EXPECT_NE(Group({boss_.id}, group), PRO_TK_NO_ERROR);
  EXPECT_NE(Group({boss_.id, boss_.id}, group), PRO_TK_NO_ERROR);
  EXPECT_NE(Group({boss_.id, 9999}, group), PRO_TK_NO_ERROR);
  EXPECT_EQ(Snapshot(*part_), before);
  ASSERT_EQ(Group({bore.id, boss_.id, circle.id}, group), PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->FindFeature(group.id)->type, kLocalGroup);
  EXPECT_EQ(part_->FindFeature(group.id)->name, L"GROUP");
  EXPECT_NE(Group({circle.id, bore.id}, group), PRO_TK_NO_ERROR) << "they are in a group";

  ASSERT_EQ(SuppressFeatures(*part_, {group.id}), PRO_TK_NO_ERROR);
  ExpectVolume(kPlate);
  ASSERT_EQ(ResumeFeatures(*part_, {group.id}, false), PRO_TK_NO_ERROR);
  ExpectVolume(before_group);
  EXPECT_EQ(Pattern(group, {}), PRO_TK_BAD_INPUTS) << "of a single feature";
  ASSERT_EQ(Pattern(group, {}, PRO_GROUP_PATTERN), PRO_TK_NO_ERROR);
  ExpectVolume(kPlate + 3 * (kBoss - kPi * 15));
  const auto text = ModelToText(*part_);
  EXPECT_EQ(ModelToText(*ModelFromText(text)), text);

  int id = group.id;
  EXPECT_NE(ProFeatureDelete(Solid(), &id, 1, nullptr, 0), PRO_TK_NO_ERROR) << "the pattern stands on it";
  ProFeatureDeleteOptions along[] = {static_cast<ProFeatureDeleteOptions>(1)};
  ASSERT_EQ(ProFeatureDelete(Solid(), &id, 1, along, 1), PRO_TK_NO_ERROR);
  for (const int gone : {group.id, boss_.id, circle.id, bore.id}) EXPECT_FALSE(part_->FindFeature(gone));
  ExpectVolume(kPlate);
}

TEST_F(PatternsTest, DeletedMemberTakesItsGroupAlong) {
  const ProFeature circle = Circle(20, 5, 1);
  ProFeature group{};
  ASSERT_EQ(Group({boss_.id, circle.id}, group, L"PLATE"), PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->FindFeature(group.id)->name, L"") << "the sketch has that name";
  int id = circle.id;
  EXPECT_NE(ProFeatureDelete(Solid(), &id, 1, nullptr, 0), PRO_TK_NO_ERROR);
  ProFeatureDeleteOptions along[] = {static_cast<ProFeatureDeleteOptions>(1)};
  ASSERT_EQ(ProFeatureDelete(Solid(), &id, 1, along, 1), PRO_TK_NO_ERROR);
  EXPECT_FALSE(part_->FindFeature(group.id));
  EXPECT_TRUE(part_->FindFeature(boss_.id));
}

}  // namespace
}  // namespace bench
