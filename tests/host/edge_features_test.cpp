// Rounds, chamfers and drafts as trees: what a tree must hold, and which number goes where.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::NodeRow;
using support::NodeRows;
using support::With;
using Value = ElementNode::Value;
using Items = std::vector<ItemReference>;
using Path = std::vector<int>;

Path InSet(const Path& rest) {
  Path path{2101, 2102};
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
    front_ = ItemOf(PRO_EDGE, plate_ + ":end|" + plate_ + ":side:1");
    left_ = ItemOf(PRO_EDGE, plate_ + ":end|" + plate_ + ":side:4");
    foot_ = ItemOf(PRO_EDGE, plate_ + ":start|" + plate_ + ":side:1");
    upright_ = ItemOf(PRO_EDGE, plate_ + ":side:3|" + plate_ + ":side:4");
    top_ = ItemOf(PRO_SURFACE, plate_ + ":end");
    wall_ = ItemOf(PRO_SURFACE, plate_ + ":side:1");
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

  NodeRows Round() {
    return {{{387}, 913},
            {InSet({2178}), 0},
            {InSet({2177, 2119}), 2},
            {InSet({2121, 2179}), 1},
            {kEdges, Edges({front_})},
            {kFirstLegKind, 1},
            {kFirstLeg, 2.0},
            {{3042}, 0}};
  }

  NodeRows Chamfer(int scheme, double first, std::optional<double> second = {}) {
    NodeRows rows{{{387}, 914},       {InSet({2103}), scheme}, {InSet({3184}), 1}, {kEdges, Edges({front_})},
                  {kFirstLegKind, 1}, {kFirstLeg, first},      {{3042}, 0},        {{2113}, Value{}}};
    if (second)
      rows.insert(rows.end(), {{kReference, Items{top_}}, {kSecondLegKind, 1}, {kSecondLeg, *second}});
    return rows;
  }

  NodeRows Draft() {
    return {{{387}, 927},
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
            {{2164, 2168}, 5.0}};
  }

  std::string plate_;
  ItemReference front_, left_, foot_, upright_, top_, wall_;
};

TEST_F(EdgeFeaturesTest, AChamfersFirstLegLiesOnItsReference) {
  const FeatureOutcome outcome = CreateOf(Chamfer(603, 4, 2));
  ASSERT_EQ(outcome.status, PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 10 - 4.0 * 2 / 2 * 40);
  const auto& faces = part_->topology.faces;
  const auto top = std::ranges::find(faces, plate_ + ":end", &FaceInfo::key);
  ASSERT_NE(top, faces.end());
  EXPECT_NEAR(top->area, 40 * (20 - 4), 1e-6);
  const Feature* made = part_->FindFeature(outcome.feature);
  EXPECT_EQ(made->type, 914);
  EXPECT_THAT(made->parents, testing::ElementsAre(std::stoi(plate_)));
}

TEST_F(EdgeFeaturesTest, WrongTreesAreRefused) {
  ExpectEveryRowToMatter(Round());
  ExpectEveryRowToMatter(Chamfer(602, 3));
  ExpectEveryRowToMatter(Chamfer(603, 3, 2));
  ExpectEveryRowToMatter(Chamfer(604, 45, 2));

  const double infinite = std::numeric_limits<double>::infinity();
  const ItemReference feature{PRO_FEATURE, std::stoi(plate_), SolidHandle(*part_)};
  Collection excluded = std::get<Collection>(Edges({front_}));
  excluded.instructions.front().include = false;
  Collection run_on_first = std::get<Collection>(Edges({front_}));
  std::swap(run_on_first.instructions.front(), run_on_first.instructions.back());
  const NodeRows round = Round(), equal = Chamfer(602, 3), two = Chamfer(603, 3, 2);
  const NodeRows angle = Chamfer(604, 45, 2), draft = Draft();
  const struct {
    NodeRows right;
    int element;  // that the refusal names
    NodeRow wrong;
  } cases[] = {
      {round, 2119, {InSet({2177, 2119}), 1}},
      {round, 2109, {kFirstLeg, infinite}},
      {round, 2107, {InSet({2123, 2122, 2107}), Value{}}},
      {round, 2124, {kEdges, Edges({})}},
      {round, 2124, {kEdges, Edges({top_})}},
      {round, 2124, {kEdges, Faces({top_})}},
      {round, 2124, {kEdges, excluded}},
      {round, 2124, {kEdges, run_on_first}},
      {equal, 2103, {InSet({2103}), 605}},
      {equal, 2104, {kReference, Items{top_}}},
      {equal, 2106, {kFirstLeg, -1.0}},
      {two, 2104, {kReference, Items{foot_}}},
      {two, 2107, {InSet({2123, 2122, 2107}), {}}},
      {angle, 2106, {kFirstLeg, 90.0}},
      {draft, 2168, {{2164, 2168}, 30.5}},
      {draft, 2168, {{2164, 2168}, std::nan("")}},
      {draft, 2213, {{2213}, Faces({})}},
      {draft, 2213, {{2213}, Faces({foot_})}},
      {draft, 2124, {{2164, 2124}, Edges({foot_})}},
      {draft, 3253, {{3252, 3253}, Items{feature}}},
      {draft, 3254, {{3252, 3254}, 0}},
  };
  for (const auto& [right, element, wrong] : cases) ExpectRefusal(With(right, wrong), element);
  for (const NodeRows& right : {round, equal, two, angle, draft}) {
    FeatureOutcome made = CreateOf(right);
    EXPECT_EQ(made.status, PRO_TK_NO_ERROR);
    EXPECT_EQ(ProFeatureDelete(Solid(), &made.feature, 1, nullptr, 0), PRO_TK_NO_ERROR);
  }
}

TEST_F(EdgeFeaturesTest, WhatTheGeometryRefusesLeavesTheModelAsItWas) {
  ExpectRefusal(With(Round(), {kFirstLeg, 12.0}));
  ExpectRefusal(With(Chamfer(603, 3, 2), {kReference, Items{ItemOf(PRO_SURFACE, plate_ + ":start")}}));
  ExpectRefusal(With(Draft(), {{2164, 2124}, Edges({left_}, false)}));
}

}  // namespace
}  // namespace bench
