// Rounds, chamfers and drafts as trees: what a tree must hold, and which number goes where.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "bench/host/features/features.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using Path = std::vector<int>;
using Value = ElementNode::Value;
using Items = std::vector<ItemReference>;

// The node at the end of the path, made where it isn't there.
ElementNode& At(ElementNode& root, const Path& path) {
  ElementNode* node = &root;
  for (const int id : path) {
    if (!node->Child(id)) {
      node->children.push_back(std::make_unique<ElementNode>());
      node->children.back()->id = id;
    }
    node = node->Child(id);
  }
  return *node;
}

// Without a value: the element isn't there.
struct Change {
  Path path;
  std::optional<Value> value;
};

void Apply(ElementNode& root, const Change& change) {
  if (change.value) {
    At(root, change.path).value = *change.value;
    return;
  }
  ElementNode& parent = At(root, {change.path.begin(), change.path.end() - 1});
  std::erase_if(parent.children, [&](const auto& child) { return child->id == change.path.back(); });
}

const Path kSet{2101, 2102};

Path InSet(const Path& rest) {
  Path path = kSet;
  path.insert(path.end(), rest.begin(), rest.end());
  return path;
}

const Path kEdges = InSet({2121, 2124}), kReference = InSet({2121, 2104});
const Path kFirstLeg = InSet({2123, 2122, 2106, 2109}), kSecondLeg = InSet({2123, 2122, 2107, 2109});
const Path kFirstLegKind = InSet({2123, 2122, 2106, 2108}), kSecondLegKind = InSet({2123, 2122, 2107, 2108});

class EdgeFeaturesTest : public support::FeatureTest {
 protected:
  // A plate of 40 by 20, 10 high.
  void SetUp() override {
    FeatureTest::SetUp();
    if (HasFatalFailure()) return;
    plate_ = std::to_string(Extrude(*part_, Plate(), {}).feature.id);
    front_ = Item(PRO_EDGE, plate_ + ":end|" + plate_ + ":side:1");
    left_ = Item(PRO_EDGE, plate_ + ":end|" + plate_ + ":side:4");
    foot_ = Item(PRO_EDGE, plate_ + ":start|" + plate_ + ":side:1");
    upright_ = Item(PRO_EDGE, plate_ + ":side:3|" + plate_ + ":side:4");
    top_ = Item(PRO_SURFACE, plate_ + ":end");
    wall_ = Item(PRO_SURFACE, plate_ + ":side:1");
  }

  ItemReference Item(ProType type, const std::string& key) {
    for (const auto& feature : part_->features)
      for (const GeometryItem& item : feature->items)
        if (item.type == type && item.key == key) return {type, item.id, SolidHandle(*part_)};
    ADD_FAILURE() << "no item " << key;
    return {};
  }

  static Value Edges(const Items& edges, bool run_on = true) {
    Collection collection;
    for (const ItemReference& edge : edges) collection.instructions.push_back({101, true, {edge}});
    if (run_on) collection.instructions.push_back({114, true, {}});
    return collection;
  }

  static Value Faces(const Items& faces) {
    Collection collection{true, {}};
    for (const ItemReference& face : faces) collection.instructions.push_back({1, true, {face}});
    return collection;
  }

  static std::unique_ptr<ElementNode> Tree(const std::vector<Change>& rows) {
    auto tree = std::make_unique<ElementNode>();
    tree->id = 386;
    for (const Change& row : rows) Apply(*tree, row);
    return tree;
  }

  std::unique_ptr<ElementNode> Round() {
    return Tree({{{387}, 913},
                 {InSet({2178}), 0},
                 {InSet({2177, 2119}), 2},
                 {InSet({2121, 2179}), 1},
                 {kEdges, Edges({front_})},
                 {kFirstLegKind, 1},
                 {kFirstLeg, 2.0},
                 {{3042}, 0}});
  }

  std::unique_ptr<ElementNode> Chamfer(int scheme, double first, std::optional<double> second = {}) {
    auto tree = Tree({{{387}, 914},
                      {InSet({2103}), scheme},
                      {InSet({3184}), 1},
                      {kEdges, Edges({front_, left_})},
                      {kFirstLegKind, 1},
                      {kFirstLeg, first},
                      {{3042}, 0},
                      {{2113}, Value{}}});
    if (!second) return tree;
    Apply(*tree, {kReference, Items{top_}});
    Apply(*tree, {kSecondLegKind, 1});
    Apply(*tree, {kSecondLeg, *second});
    return tree;
  }

  std::unique_ptr<ElementNode> Draft() {
    return Tree({{{387}, 927},
                 {{3305}, 0},
                 {{2154}, 0},
                 {{2213}, Faces({wall_})},
                 {{3252, 3253}, Items{upright_}},
                 {{3252, 3254}, 1},
                 {{2150}, 1},
                 {{3177}, 1},
                 {{2164, 2167}, 2},
                 {{2164, 2124}, Edges({foot_}, false)},
                 {{2164, 2171}, 0},
                 {{2164, 2168}, 5.0}});
  }

  FeatureOutcome Make(const ElementNode& tree) { return CreateFeature(*part_, tree, {1}, nullptr); }

  std::string plate_;
  ItemReference front_, left_, foot_, upright_, top_, wall_;
};

TEST_F(EdgeFeaturesTest, NumbersGoWhereTheTreeHasThem) {
  const double plate = 40 * 20 * 10, tan60 = std::sqrt(3);
  struct Case {
    const char* what;
    std::unique_ptr<ElementNode> tree;
    double volume;
    double top;  // what is left of the plate's upper face
  };
  // The two edges of a chamfer meet at a corner; alone the front one is told apart.
  const auto alone = [&](std::unique_ptr<ElementNode> tree) {
    Apply(*tree, {kEdges, Edges({front_})});
    return tree;
  };
  Case cases[] = {
      {"round", Round(), plate - (1 - std::numbers::pi / 4) * 4 * 40, 40 * 18},
      {"equal", alone(Chamfer(602, 3)), plate - 9.0 / 2 * 40, 40 * 17},
      {"two", alone(Chamfer(603, 4, 2)), plate - 8.0 / 2 * 40, 40 * 16},
      {"angle first", alone(Chamfer(604, 60, 2)), plate - 2 * 2 * tan60 / 2 * 40, 40 * 18},
      {"draft", Draft(), plate - 100 * std::tan(std::numbers::pi / 36) / 2 * 40,
       40 * (20 - 10 * std::tan(std::numbers::pi / 36))},
  };
  for (const Case& one : cases) {
    const FeatureOutcome outcome = Make(*one.tree);
    ASSERT_EQ(outcome.status, PRO_TK_NO_ERROR) << one.what;
    EXPECT_NEAR(part_->topology.mass->volume, one.volume, 1e-5) << one.what;
    const auto& faces = part_->topology.faces;
    const auto top = std::ranges::find(faces, plate_ + ":end", &FaceInfo::key);
    ASSERT_NE(top, faces.end()) << one.what;
    EXPECT_NEAR(top->area, one.top, 1e-6) << one.what;
    const Feature* made = part_->FindFeature(outcome.feature);
    EXPECT_EQ(made->type, std::get<int>(one.tree->Child(387)->value)) << one.what;
    EXPECT_THAT(made->parents, testing::ElementsAre(std::stoi(plate_))) << one.what;
    int id = outcome.feature;
    EXPECT_EQ(ProFeatureDelete(Solid(), &id, 1, nullptr, 0), PRO_TK_NO_ERROR) << one.what;
  }
}

TEST_F(EdgeFeaturesTest, WrongTreesAreRefused) {
  const double infinite = std::numeric_limits<double>::infinity();
  const ItemReference feature{PRO_FEATURE, std::stoi(plate_), SolidHandle(*part_)};
  Collection excluded = std::get<Collection>(Edges({front_}));
  excluded.instructions.front().include = false;
  Collection run_on_first = std::get<Collection>(Edges({front_}));
  std::swap(run_on_first.instructions.front(), run_on_first.instructions.back());
  using Made = std::unique_ptr<ElementNode>;
  const auto round = [this] { return Round(); };
  const auto equal = [this] { return Chamfer(602, 3); };
  const auto two = [this] { return Chamfer(603, 3, 2); };
  const auto angle = [this] { return Chamfer(604, 45, 2); };
  const auto draft = [this] { return Draft(); };
  struct Case {
    std::function<Made()> right;
    int element;  // that the refusal names
    Change wrong;
  };
  const Case cases[] = {
      {round, 2178, {InSet({2178}), std::nullopt}},
      {round, 2119, {InSet({2177, 2119}), 1}},
      {round, 2108, {kFirstLegKind, 0}},
      {round, 2109, {kFirstLeg, 0.0}},
      {round, 2109, {kFirstLeg, infinite}},
      {round, 2107, {InSet({2123, 2122, 2107}), Value{}}},
      {round, 2124, {kEdges, Edges({})}},
      {round, 2124, {kEdges, Edges({top_})}},
      {round, 2124, {kEdges, Faces({top_})}},
      {round, 2124, {kEdges, excluded}},
      {round, 2124, {kEdges, run_on_first}},
      {round, 3042, {{3042}, 1}},
      {equal, 2103, {InSet({2103}), 605}},
      {equal, 2104, {kReference, Items{top_}}},
      {equal, 2113, {{2113}, std::nullopt}},
      {equal, 2106, {kFirstLeg, -1.0}},
      {two, 2104, {kReference, std::nullopt}},
      {two, 2104, {kReference, Items{foot_}}},
      {two, 2107, {kSecondLeg, 0.0}},
      {two, 2107, {InSet({2123, 2122, 2107}), std::nullopt}},
      {angle, 2106, {kFirstLeg, 0.0}},
      {angle, 2106, {kFirstLeg, 90.0}},
      {draft, 2168, {{2164, 2168}, 30.5}},
      {draft, 2168, {{2164, 2168}, std::nan("")}},
      {draft, 2213, {{2213}, Faces({})}},
      {draft, 2213, {{2213}, Faces({foot_})}},
      {draft, 2124, {{2164, 2124}, Edges({foot_})}},
      {draft, 3253, {{3252, 3253}, Items{feature}}},
      {draft, 3254, {{3252, 3254}, 0}},
  };
  const std::string before = Snapshot(*part_);
  for (const Case& wrong : cases) {
    const Made tree = wrong.right();
    Apply(*tree, wrong.wrong);
    const FeatureOutcome outcome = Make(*tree);
    EXPECT_NE(outcome.status, PRO_TK_NO_ERROR) << wrong.element;
    ASSERT_EQ(outcome.errors.size(), 1u) << wrong.element;
    EXPECT_EQ(outcome.errors.front().err_item_id, wrong.element);
  }
  EXPECT_EQ(Snapshot(*part_), before);
}

TEST_F(EdgeFeaturesTest, WhatTheGeometryRefusesLeavesTheModelAsItWas) {
  const std::string before = Snapshot(*part_);
  const auto too_round = Round();
  Apply(*too_round, {kFirstLeg, 12.0});
  const auto far_reference = Chamfer(603, 3, 2);
  Apply(*far_reference, {kReference, Items{Item(PRO_SURFACE, plate_ + ":start")}});
  const auto far_hinge = Draft();
  Apply(*far_hinge, {{2164, 2124}, Edges({left_}, false)});
  for (const auto* tree : {&too_round, &far_reference, &far_hinge})
    EXPECT_NE(Make(**tree).status, PRO_TK_NO_ERROR) << std::get<int>((*tree)->Child(387)->value);
  EXPECT_EQ(Snapshot(*part_), before);
}

}  // namespace
}  // namespace bench
