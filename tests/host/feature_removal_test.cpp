#include <ProArray.h>
#include <gmock/gmock.h>

#include <numbers>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Tree;

constexpr double kPi = std::numbers::pi;
constexpr double kBlock = 40 * 20 * 10;
constexpr double kBlockWithHole = kBlock - kPi * 5 * 5 * 10;

// A block, and a hole through it.
class FeatureRemovalTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    plate_ = Plate();
    block_ = Extrude(*part_, plate_, {}).feature;
    circle_ = Circle(20, 10, 5);
    hole_ = Extrude(*part_, circle_, {.second_side = 1048576, .depth = {}, .cut = true}).feature;
    ASSERT_NEAR(Volume(), kBlockWithHole, 1e-3);
    ASSERT_EQ(part_->FindFeature(hole_.id)->type, 916);
    part_->modified = false;
  }

  double Volume() { return part_->topology.mass ? part_->topology.mass->volume : 0; }
  ProError DeleteAlone(std::vector<int> ids) {
    return ProFeatureDelete(Solid(), ids.data(), static_cast<int>(ids.size()), nullptr, 0);
  }
  // One of the calls that take arrays of ids and options.
  template <typename Option>
  ProError Call(ProError (*call)(ProSolid, int*, Option*, int), std::vector<int> ids,
                std::vector<int> options) {
    ProArray id_array = nullptr, option_array = nullptr;
    EXPECT_EQ(ProArrayAlloc(0, sizeof(int), 1, &id_array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArrayAlloc(0, sizeof(int), 1, &option_array), PRO_TK_NO_ERROR);
    for (int id : ids) EXPECT_EQ(ProArrayObjectAdd(&id_array, -1, 1, &id), PRO_TK_NO_ERROR);
    for (int option : options) EXPECT_EQ(ProArrayObjectAdd(&option_array, -1, 1, &option), PRO_TK_NO_ERROR);
    const ProError status = call(Solid(), static_cast<int*>(id_array), static_cast<Option*>(option_array), 0);
    EXPECT_EQ(ProArrayFree(&id_array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArrayFree(&option_array), PRO_TK_NO_ERROR);
    return status;
  }
  ProError Delete(std::vector<int> ids) { return Call(ProFeatureWithoptionsDelete, ids, {1}); }
  ProError Suppress(std::vector<int> ids) { return Call(ProFeatureWithoptionsSuppress, ids, {0}); }
  ProError Resume(std::vector<int> ids, int option = 1) {
    return Call(ProFeatureWithoptionsResume, ids, {option});
  }
  int IdOf(std::wstring_view name) {
    for (const auto& feature : part_->features)
      if (feature->name == name) return feature->id;
    return -1;
  }

  ProFeature plate_{}, block_{}, circle_{}, hole_{};
};

TEST_F(FeatureRemovalTest, WhatOthersNeedGoesOnlyTogetherWithThem) {
  const std::string before = Snapshot(*part_);
  EXPECT_NE(DeleteAlone({IdOf(L"FRONT")}), PRO_TK_NO_ERROR);
  EXPECT_NE(DeleteAlone({block_.id}), PRO_TK_NO_ERROR) << "the hole needs a body";
  EXPECT_EQ(Snapshot(*part_), before);
  EXPECT_EQ(DeleteAlone({IdOf(L"TOP")}), PRO_TK_NO_ERROR) << "nothing stands on it";
  EXPECT_EQ(Delete({block_.id}), PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->FindFeature(hole_.id), nullptr);
  EXPECT_NE(part_->FindFeature(circle_.id), nullptr);
  EXPECT_EQ(Delete({IdOf(L"FRONT")}), PRO_TK_NO_ERROR);
  for (const ProFeature& gone : {plate_, block_, circle_, hole_})
    EXPECT_EQ(part_->FindFeature(gone.id), nullptr);
  EXPECT_EQ(Volume(), 0);
}

TEST_F(FeatureRemovalTest, BadRequestsChangeNothing) {
  const std::string before = Snapshot(*part_);
  EXPECT_EQ(Delete({4711}), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(Delete({hole_.id, 4711}), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(Delete({}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Delete({hole_.id, hole_.id}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Call(ProFeatureWithoptionsDelete, {hole_.id}, {7}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Call(ProFeatureWithoptionsDelete, {hole_.id}, {}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(DeleteAlone({4711}), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(Suppress({4711}), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(Resume({4711}), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProFeatureWithoptionsDelete(Solid(), nullptr, nullptr, 0), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Snapshot(*part_), before);
}

TEST_F(FeatureRemovalTest, SuppressedFeatureIsThereWithoutItsGeometryWhichComesBackWithItsIds) {
  const auto items = [this] {
    std::vector<std::pair<int, std::string>> alive;
    for (const auto& feature : part_->features)
      for (const GeometryItem& item : feature->items)
        if (item.alive) alive.emplace_back(item.id, item.key);
    return alive;
  };
  const auto before = items();
  EXPECT_EQ(Suppress({hole_.id}), PRO_TK_NO_ERROR);
  EXPECT_NEAR(Volume(), kBlock, 1e-3);
  EXPECT_NE(items(), before);
  EXPECT_EQ(part_->FindFeature(hole_.id)->status, PRO_FEAT_SUPPRESSED);
  EXPECT_TRUE(part_->modified);
  EXPECT_EQ(Suppress({hole_.id}), PRO_TK_NO_CHANGE);
  EXPECT_EQ(Resume({hole_.id}), PRO_TK_NO_ERROR);
  EXPECT_NEAR(Volume(), kBlockWithHole, 1e-3);
  EXPECT_EQ(items(), before);
  EXPECT_EQ(Resume({hole_.id}), PRO_TK_NO_CHANGE);
}

TEST_F(FeatureRemovalTest, SuppressionNeedsTheChildrenAlongAndResumingTheParents) {
  const std::string before = Snapshot(*part_);
  EXPECT_NE(Suppress({IdOf(L"FRONT")}), PRO_TK_NO_ERROR);
  EXPECT_NE(Suppress({block_.id}), PRO_TK_NO_ERROR) << "the hole needs a body";
  EXPECT_EQ(Snapshot(*part_), before);
  EXPECT_EQ(Suppress({block_.id, hole_.id}), PRO_TK_NO_ERROR);
  EXPECT_EQ(Volume(), 0);
  const int front = IdOf(L"FRONT");
  ASSERT_EQ(Suppress({front, plate_.id, circle_.id}), PRO_TK_NO_ERROR);
  Tree tree;
  FillSketchTree(tree, *part_, L"LOST", L"FRONT");
  EXPECT_NE(Create(*part_, tree.Root(), 2).status, PRO_TK_NO_ERROR);
  EXPECT_EQ(Resume({block_.id}, 0), PRO_TK_SUPP_PARENTS);
  EXPECT_EQ(part_->FindFeature(block_.id)->status, PRO_FEAT_SUPPRESSED);
  EXPECT_EQ(Resume({block_.id}, 1), PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->FindFeature(front)->status, PRO_FEAT_ACTIVE);
  EXPECT_EQ(part_->FindFeature(plate_.id)->status, PRO_FEAT_SUPPRESSED);
  EXPECT_NEAR(Volume(), kBlock, 1e-3);
}

}  // namespace
}  // namespace bench
