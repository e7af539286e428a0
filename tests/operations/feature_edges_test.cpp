// The edge operations: which edges a client's words mean, what rounds and chamfers take from the solid, their
// element trees, and failures.
#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>
#include <set>
#include <tuple>

#include "addin/ops/feature/edge_selection.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kFillet = L"api_edge_fillet";
constexpr const wchar_t* kChamfer = L"api_edge_chamfer";

// What a round of radius 1 takes from a sharp corner, per length: the unit square without its quarter circle.
constexpr double kCorner = 1 - std::numbers::pi / 4;

// The two ends of an edge, the lesser first.
using Ends = std::pair<Vector3, Vector3>;

Ends Line(const Vector3& a, const Vector3& b) {
  return std::minmax(a, b);
}

Ends Rounded(const bench::EdgeInfo& edge) {
  Vector3 from{}, to{};
  for (int i = 0; i < 3; ++i) {
    from[i] = std::round(edge.from[i] * 1e6) / 1e6 + 0.0;  // no negative zero
    to[i] = std::round(edge.to[i] * 1e6) / 1e6 + 0.0;
  }
  return Line(from, to);
}

class EdgeOperation : public FeatureOnABlock {
 protected:
  // The ends of the edges that a round with these arguments takes. The round doesn't stay.
  std::multiset<Ends> Chosen(const std::wstring& arguments) {
    const bench::Topology before = Current().topology;
    std::map<int, Ends> edges;
    for (const auto& edge : before.edges) edges[Current().ids_of_keys.at(edge.key)] = Rounded(edge);
    const std::wstring name = Create(kFillet, Format(LR"({"radius_mm":0.1%s})", arguments));
    std::multiset<Ends> chosen;
    const bench::Feature* const round = FeatureNamed(name);
    if (round == nullptr) return chosen;
    const auto* const node = round->tree->Find({2101, 2102, 2121, 2124});
    for (const auto& instruction : std::get<bench::Collection>(node->value).instructions)
      for (const auto& item : instruction.items) chosen.insert(edges.at(item.id));
    Delete(name);
    return chosen;
  }
};

TEST_F(EdgeOperation, SelectorsChooseEdgesOneAfterAnother) {
  const Ends top_front = Line({0, 0, 10}, {40, 0, 10}), top_back = Line({0, 20, 10}, {40, 20, 10});
  const Ends top_left = Line({0, 0, 10}, {0, 20, 10}), top_right = Line({40, 0, 10}, {40, 20, 10});
  const Ends upright = Line({40, 20, 0}, {40, 20, 10});
  const std::tuple<const wchar_t*, std::multiset<Ends>> cases[] = {
      {LR"([">Z","|X"])", {top_front, top_back}},
      {LR"([" > z ","|top Y"])", {top_left, top_right}},
      {LR"([">AZ"])", {top_front, top_back, top_left, top_right}},
      {LR"([">X",">Y","|Z"])", {upright}},
      {LR"([">Z","<Y"])", {top_front}}};
  for (const auto& [selectors, edges] : cases) {
    SCOPED_TRACE(EncodeUtf8(selectors));
    EXPECT_EQ(Chosen(Format(LR"(,"edge_selectors":%s)", selectors)), edges);
  }
}

TEST_F(EdgeOperation, OfADraftedBlockTheFootReachesFurthest) {
  Succeed(L"api_edge_draft", Format(LR"({"feature_name":"%s","angle_deg":3})", block_));
  const auto chosen = [&](const wchar_t* selectors) {
    return Chosen(Format(LR"(,"edge_selectors":%s)", selectors));
  };
  EXPECT_THAT(chosen(LR"([">X"])"), testing::ElementsAre(Line({40, 0, 0}, {40, 20, 0})));
  EXPECT_EQ(chosen(LR"([">Z"])").size(), 4u);
  // The corners lean by tan 3° = 0.05 on both other axes, and count as upright.
  EXPECT_EQ(chosen(LR"(["|Z"])").size(), 4u);
}

TEST_F(EdgeOperation, TheScopeCountsOnlyWithoutAFeature) {
  const auto edges_of = [&](const wchar_t* more) { return Chosen(more).size(); };
  const wchar_t* const none = L"No edges matched the requested fillet/chamfer target.";
  EXPECT_EQ(edges_of(L""), 12u);
  EXPECT_EQ(edges_of(LR"(,"edge_scope":"outside")"), 12u);
  EXPECT_EQ(edges_of(Format(LR"(,"edge_scope":"outer","feature_name":"%s")", block_).c_str()), 12u);
  // Each edge of a closed solid has two neighbours.
  ExpectRefusals({{kFillet, LR"({"radius_mm":1,"edge_scope":"Outer "})", none},
                  {kChamfer, LR"({"distance_mm":1,"edge_scope":"outer"})", none},
                  // A datum plane has no surfaces.
                  {kFillet, LR"({"radius_mm":1,"feature_name":"RIGHT"})", none}});
}

TEST_F(EdgeOperation, CirclesAreChosenByTheirEndsAndRunAlongNoAxis) {
  // A boss of radius 4 about (20, 10), from 0 up to 25.
  CreateSketch(L"BOSS", L"XY");
  Draw(L"api_sketch_circle_center_radius", L"BOSS", LR"("cx":20,"cy":10,"radius":4)");
  const std::wstring boss = Create(L"api_feature_extrude", LR"({"sketch_name":"BOSS","distance_mm":25})");
  // Its rims, each with one point for its ends: the one that it has in common with the block, and the upper.
  for (const auto& [selector, height] : {std::pair(L"<Z", 10), {L">Z", 25}}) {
    const auto rim = Chosen(Format(LR"(,"feature_name":"%s","edge_selectors":["%s"])", boss, selector));
    ASSERT_EQ(rim.size(), 1u);
    EXPECT_EQ(rim.begin()->first, rim.begin()->second);
    EXPECT_EQ(rim.begin()->first[2], height);
  }
  ExpectFailure(kFillet, Format(LR"({"radius_mm":1,"feature_name":"%s","edge_selectors":["|Z"]})", boss),
                L"No edges matched the requested fillet/chamfer target.");
}

TEST_F(EdgeOperation, AFaceSelectorTakesTheFirstOfTheOutermostSurfaces) {
  const auto chosen = [&](const wchar_t* selector) -> std::string {
    bench::Model& part = Current();
    const ProMdl model = bench::Handle(part);
    std::optional<ProGeomitem> item;
    const auto result = feature::ResolveFaceSelector(model, feature::SolidSurfaces(model), selector, item);
    if (!result.success || !item) return "none";
    const std::string key = part.FindItem(PRO_SURFACE, item->id)->key;
    return key.substr(key.find(':') + 1);
  };
  // Floor, roof and walls are visited in this order. Floor and roof reach as far sideways as the walls do,
  // and the walls as far up and down as they.
  const std::tuple<const wchar_t*, const char*> cases[] = {
      {L">Z", "end"}, {L"< z", "start"}, {L">X", "start"}, {L"<AY", "start"}};
  for (const auto& [selector, key] : cases)
    EXPECT_EQ(chosen(selector), key) << "block " << EncodeUtf8(selector);
  Delete(block_);
  CreateSketch(L"PIN", L"XY");
  Draw(L"api_sketch_circle_center_radius", L"PIN", LR"("cx":0,"cy":0,"radius":4)");
  Create(L"api_feature_extrude", LR"({"sketch_name":"PIN","distance_mm":10})");
  for (const auto& [selector, key] : cases)
    EXPECT_EQ(chosen(selector), key) << "pin " << EncodeUtf8(selector);
  faults().Fail("ProSurfaceExtremesEval", PRO_TK_GENERAL_ERROR, 1, 3);
  ExpectFailure(L"api_feature_shell", LR"({"thickness_mm":1,"face_selectors":[" >Z"]})",
                L"No surface matched selector ' >Z'.");
}

TEST_F(EdgeOperation, EachFormHasItsTreeAndTakesItsCornerOfTheBlock) {
  const double tan30 = 1 / std::numbers::sqrt3;
  const std::string equal =
      "386(387=914 2101(2102(2103=602 3184=1 2121(2124=101+114) "
      "2123(2122(2106(2108=1 2109=2))))) 3042=0 2113)";
  const auto sides = [](const char* scheme, const char* first, const char* second) {
    return std::string("386(387=914 2101(2102(2103=") + scheme +
           " 3184=1 2121(2124=101+114 2104=@1) 2123(2122(" + "2106(2108=1 2109=" + first +
           ") 2107(2108=1 2109=" + second + "))))) 3042=0 2113)";
  };
  const struct {
    const wchar_t* operation;
    const wchar_t* arguments;
    const wchar_t* message;
    double area;  // of the corner, over edges that are 20 long
    std::string tree;
  } cases[] = {
      {kFillet, LR"({"radius_mm":1.5,"edge_selectors":[">X","|Y"]})",
       L"Fillet 'Round 1' applied: r=1.5 mm on 2 edge(s).", kCorner * 1.5 * 1.5 * 2,
       "386(387=913 2101(2102(2178=0 2177(2119=2) 2121(2179=1 2124=101+101+114) "
       "2123(2122(2106(2108=1 2109=1.5))))) 3042=0)"},
      {kChamfer, LR"({"distance_mm":2,"edge_selectors":[">Z",">X"]})",
       L"Chamfer 'Chamfer 1' applied: type=equal_distance, d=2 mm on 1 edge(s).", 2.0 * 2 / 2, equal},
      {kChamfer,
       LR"({"distance_mm":2,"edge_selectors":[">Z",">X"],"type":" Two_Distance","distance2_mm":"3"})",
       L"Chamfer 'Chamfer 1' applied: type=two_distance, d=2 mm on 1 edge(s).", 2.0 * 3 / 2,
       sides("603", "2", "3")},
      // The angle comes first.
      {kChamfer, LR"({"distance_mm":2,"edge_selectors":[">Z",">X"],"type":"distance_angle","angle_deg":30})",
       L"Chamfer 'Chamfer 1' applied: type=distance_angle, d=2 mm on 1 edge(s).", 2 * 2 * tan30 / 2,
       sides("604", "30", "2")}};
  for (const auto& [operation, arguments, message, area, tree] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    const auto result = Run(operation, arguments);
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
    EXPECT_NEAR(Volume(), 8000 - area * 20, 1e-5);
    const std::wstring name = operation == kFillet ? L"Round 1" : L"Chamfer 1";
    ASSERT_NE(FeatureNamed(name), nullptr);
    EXPECT_EQ(TreeOf(FeatureNamed(name)), tree);
    Delete(name);
  }
}

TEST_F(EdgeOperation, AnswersWithTheNewNameAndEntersItIntoTheHistory) {
  const wchar_t* const names[] = {L"Round 1", L"Round_1", L"Round 2"};
  const wchar_t* const selectors[] = {LR"([">X",">Y","|Z"])", LR"(["<X",">Y","|Z"])", LR"(["<X","<Y","|Z"])"};
  for (int i = 0; i < 3; ++i) {
    const auto result = Run(kFillet, Format(LR"({"radius_mm":0.12345,"edge_selectors":%s})", selectors[i]));
    const std::wstring message = Format(L"Fillet '%s' applied: r=0.123 mm on 1 edge(s).", names[i]);
    ExpectCreated(result, names[i], message);
    EXPECT_EQ(CountCaptured(L"CreoMcpEdge: " + message), 1);
  }
  faults().Fail("ProModelitemNameSet", PRO_TK_GENERAL_ERROR, 1, 2);
  const std::wstring name = Create(kChamfer, LR"({"distance_mm":1,"edge_selectors":[">X","<Y","|Z"]})");
  EXPECT_EQ(name, Format(L"Chamfer_%d", Current().features.back()->id));
}

TEST_F(EdgeOperation, ArgumentsAreChecked) {
  const wchar_t* const angle = L"'angle_deg' is required for distance_angle chamfer.";
  const wchar_t* const equals = L"Unsupported edge selector '=Z'. Use '>Z', '<X', or '|Y'.";
  const wchar_t* const other_end = L"Unsupported edge selector '>ZA'. Use '>Z', '<X', or '|Y'.";
  ExpectRefusals(
      {{kFillet, LR"({"radius_mm":"nan"})", L"'radius_mm' is required and must be greater than 0."},
       {kFillet, LR"({"radius_mm":1,"edge_selectors":["=Z"]})", equals},
       // What nothing is left for is checked all the same.
       {kFillet, LR"({"radius_mm":1,"edge_selectors":[">Z","|Z",">ZA"]})", other_end},
       {kFillet, LR"({"radius_mm":1,"edge_selectors":[">Z","|Z",">X"]})",
        L"No edges matched the requested fillet/chamfer target."},
       {kChamfer, LR"({"distance_mm":"nan"})", L"'distance_mm' is required and must be greater than 0."},
       {kChamfer, LR"({"distance_mm":1,"type":"two_distance"})",
        L"'distance2_mm' is required for two_distance chamfer."},
       {kChamfer, LR"({"distance_mm":1,"type":"distance_angle","feature_name":"?"})", angle}});
}

TEST_F(EdgeOperation, WhatTheHostRefusesLeavesTheModelAsItWas) {
  const std::tuple<const wchar_t*, const wchar_t*, const char*> cases[] = {
      // Two meet over 20 mm.
      {kFillet, LR"({"radius_mm":11,"edge_selectors":["|Z"]})", "Creo could not create the fillet feature"},
      {kFillet, LR"({"radius_mm":"inf","edge_selectors":["|Z"]})", "Failed to set round/chamfer leg value."},
      // An angle of 0 passes here and is the host's to judge.
      {kChamfer, LR"({"distance_mm":1,"type":"distance_angle","angle_deg":0,"edge_selectors":["|Z"]})",
       "Creo could not create the chamfer feature (status=-"}};
  const ModelState before = State();
  for (const auto& [operation, arguments, message] : cases) {
    EXPECT_THAT(EncodeUtf8(Run(operation, arguments).message), testing::StartsWith(message));
    EXPECT_EQ(State(), before);
  }
}

TEST_F(EdgeOperation, TheEdgesStandWithoutTheirTangentChain) {
  faults().Fail("ProCrvcollinstrAlloc", PRO_TK_GENERAL_ERROR, 2);
  Succeed(kFillet, LR"({"radius_mm":1,"edge_selectors":[">X",">Z"]})");
  EXPECT_NEAR(Volume(), 8000 - kCorner * 20, 1e-5);
}

}  // namespace
}  // namespace vek::support
