#include <ProArray.h>
#include <gmock/gmock.h>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Tree;

constexpr double kBlock = 40 * 20 * 10;

// A block, and a hole through it.
class FeatureRemovalTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    plate_ = Plate();
    block_ = Extrude(*part_, plate_, {}).feature;
    circle_ = Circle(20, 10, 5);
    hole_ = Extrude(*part_, circle_, {.second_side = 1048576, .depth = {}, .cut = true}).feature;
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
    ProArray arrays[2] = {};
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(ProArrayAlloc(0, sizeof(int), 1, &arrays[i]), PRO_TK_NO_ERROR);
      for (int value : i == 0 ? ids : options)
        EXPECT_EQ(ProArrayObjectAdd(&arrays[i], -1, 1, &value), PRO_TK_NO_ERROR);
    }
    const ProError status = call(Solid(), static_cast<int*>(arrays[0]), static_cast<Option*>(arrays[1]), 0);
    for (ProArray& array : arrays) EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
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

TEST_F(FeatureRemovalTest, ASuppressedFeaturesGeometryComesBackWithItsIds) {
  const auto living = [this] {
    std::vector<std::pair<int, std::string>> items;
    for (const auto& feature : part_->features)
      for (const GeometryItem& item : feature->items)
        if (item.alive) items.emplace_back(item.id, item.key);
    return items;
  };
  const auto before = living();
  EXPECT_EQ(Suppress({hole_.id}), PRO_TK_NO_ERROR);
  EXPECT_NE(living(), before);
  EXPECT_EQ(Suppress({hole_.id}), PRO_TK_NO_CHANGE);
  EXPECT_EQ(Resume({hole_.id}), PRO_TK_NO_ERROR);
  EXPECT_EQ(living(), before);
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
