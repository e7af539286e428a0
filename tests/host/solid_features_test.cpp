// Features of solids as trees: what a tree must hold, and which number goes where.
#include <gmock/gmock.h>
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <numbers>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::NodeRow;
using support::NodeRows;
using support::With;
using Items = std::vector<ItemReference>;
using Path = std::vector<int>;
using Value = ElementNode::Value;

constexpr double kPi = std::numbers::pi;

// Row vectors: +X goes to +Y, +Y to -X, and all of it 100 along X.
constexpr Matrix kQuarterTurn = {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {100, 0, 0, 1}}};

// A plate of 40 × 20 × 10 on FRONT, and a sketch with a point in its underside.
class SolidFeaturesTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    if (HasFatalFailure()) return;
    SetEnvironmentVariableW(L"PRO_DIRECTORY", nullptr);
    Begin();
  }
  void TearDown() override {
    SetEnvironmentVariableW(L"PRO_DIRECTORY", nullptr);
    FeatureTest::TearDown();
  }

  void Begin() {
    ASSERT_EQ(Extrude(*part_, Plate(), {}).status, PRO_TK_NO_ERROR);
    points_ = Sketch(*part_, L"POINTS", L"FRONT", [](ProSection section) {
      support::AddPoint(section, 10, 10);
      support::AddLine(section, 0, 0, 1, 0);
    });
  }

  Items Face(const std::string& ending) { return {ItemOf(PRO_SURFACE, ending)}; }
  Items Plane(std::wstring_view name) { return {{PRO_SURFACE, PlaneOf(*part_, name).id, Solid()}}; }

  static NodeRows Shell() { return {{{387}, 928}, {{74}, 1.0}, {{2194}, 1}}; }
  static NodeRows Shell(const Items& removed) { return With(Shell(), {{73}, removed}); }
  NodeRows HoleWithoutDirection() {
    return {{{387}, 911},
            {{388}, 1},
            {{1671, 1672}, 16},
            {{1671, 3887}, -1},
            {{1671, 82}, 4.0},
            {{1671, 1684, 1686, 1688}, 1},
            {{1671, 1684, 1686, 434}, 6.0},
            {{1671, 1684, 1685, 1687}, 6},
            {{1671, 1689}, -1},
            {{1671, 6053}, -1},
            {{1340, 1341}, Items{ItemOf(PRO_POINT, ":point:1")}},
            {{1340, 696}, 4}};
  }
  NodeRows Hole() {
    NodeRows rows = HoleWithoutDirection();
    rows.insert(rows.end(),
                {{{1340, 1677}, Plane(L"FRONT")}, {{1340, 6051}, Plane(L"FRONT")}, {{1340, 6052}, 1}});
    return rows;
  }
  static Collection Surfaces(int instruction, const Items& items = {}) {
    return {.of_surfaces = true, .instructions = {{instruction, true, items}}};
  }
  static NodeRows Move(const Matrix& matrix) {
    return {{{387}, 1254},
            {{5471, 2213}, Surfaces(4)},
            {{5400}, 0},
            {{4300, 4301, 4306, 4307, 4308}, 10},
            {{4300, 4301, 4306, 4307, 4309}, matrix}};
  }
  // On the hole's cylinder, from its floor.
  NodeRows Thread() {
    return {{{387}, 1070},
            {{388}, 1},
            {{1964}, std::wstring(L"COSMETIC_THREAD")},
            {{4974}, 1},
            {{4975}, 1},
            {{4976}, 2},
            {{4902}, Face(HoleKey("side"))},
            {{4900}, 4.0},
            {{4901}, Face(HoleKey("end"))},
            {{4903, 4904}, 0},
            {{4903, 4905}, -1},
            {{4903, 4906}, 6.0}};
  }
  std::string HoleKey(const std::string& what) { return std::to_string(hole_) + ":" + what; }
  void MakeHole() {
    const FeatureOutcome outcome = CreateOf(Hole());
    ASSERT_EQ(outcome.status, PRO_TK_NO_ERROR);
    hole_ = outcome.feature;
  }
  void ExpectMade(const NodeRows& rows) { EXPECT_EQ(CreateOf(rows).status, PRO_TK_NO_ERROR); }
  std::vector<int> ParentsOf(int feature) { return part_->FindFeature(feature)->parents; }

  ProFeature points_{};
  int hole_ = 0;
};

TEST_F(SolidFeaturesTest, ShellIsOpenWhereFacesAreRemoved) {
  const Items top = Face(":end");
  ExpectEveryRowToMatter(Shell());
  ExpectRefusal(Shell(Plane(L"FRONT")));
  ExpectRefusal(Shell({ItemOf(PRO_EDGE, "")}));
  ExpectRefusal(With(Shell(), {{74}, 5.0}));  // as thick as half the plate

  // Named twice it is still one face: 8000 less 38 × 18 × 9.
  ExpectMade(Shell({top[0], top[0]}));
  ExpectVolume(8000 - 38 * 18 * 9);
  EXPECT_TRUE(part_->FindItem(PRO_SURFACE, top[0].id)->alive);
}

TEST_F(SolidFeaturesTest, HoleGoesAlongThePlanesNormalOrIntoTheMaterial) {
  const std::vector<int> at{1340, 1341}, plane{1340, 1677}, same_plane{1340, 6051};
  ExpectEveryRowToMatter(Hole());
  ExpectRefusal(With(Hole(), {at, Items{ItemOf(PRO_CURVE, "")}}));
  ExpectRefusal(With(Hole(), {at, Face(":end")}));
  ExpectRefusal(With(Hole(), {same_plane, Plane(L"TOP")}));
  // The normal of a face leads out of the material, beside the body.
  ExpectRefusal(With(With(Hole(), {plane, Face(":start")}), {same_plane, Face(":start")}));
  MakeHole();
  ExpectVolume(8000 - 4 * kPi * 6);

  part_ = &NewPart(L"INCHES");
  part_->length_unit = LengthUnit::kInch;
  Begin();
  ExpectMade(HoleWithoutDirection());
  ExpectVolume((8000 - 4 * kPi * 6) * std::pow(25.4, 3));
}

TEST_F(SolidFeaturesTest, HoleStandsOnThePointOfItsSketch) {
  MakeHole();
  EXPECT_THAT(ParentsOf(hole_), testing::Contains(points_.id));
  const auto without = Redraw(points_, [](ProSection section) { ProSectionEntityDelete(section, 1); });
  EXPECT_NE(without.status, PRO_TK_NO_ERROR);
  ExpectVolume(8000 - 4 * kPi * 6);

  part_->geometry = nullptr;
  const int asked = host().kernel.RequestsSent();
  ASSERT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(host().kernel.RequestsSent(), asked + 1) << "it is rebuilt in one question with the rest";
}

TEST_F(SolidFeaturesTest, MoveTakesTheWholeSolidAndKeepsItsFaces) {
  const auto changed = [](int row, int column, double value) {
    Matrix matrix = kQuarterTurn;
    matrix[row][column] = value;
    return matrix;
  };
  ExpectEveryRowToMatter(Move(kQuarterTurn));
  ExpectRefusal(With(Move(kQuarterTurn), {{5471, 2213}, Surfaces(1, Face(":end"))}));
  ExpectRefusal(Move(changed(0, 1, 1.001)));  // stretched
  ExpectRefusal(Move(changed(2, 2, -1)));     // mirrored
  ExpectRefusal(Move(changed(0, 0, 0.1)));    // sheared
  ExpectRefusal(Move(changed(0, 3, 100)));    // in column form

  const int top = Face(":end")[0].id;
  ExpectMade(Move(kQuarterTurn));
  ExpectOutline({80, 0, 0}, {100, 40, 10});
  EXPECT_TRUE(part_->FindItem(PRO_SURFACE, top)->alive);
}

TEST_F(SolidFeaturesTest, ThreadIsANoteOnACylinderThatBeginsAtItsEnd) {
  MakeHole();
  ExpectEveryRowToMatter(Thread());
  ExpectRefusal(With(Thread(), {{4902}, Face(":start")}));
  // The plate's walls and their edges don't touch the hole.
  ExpectRefusal(With(Thread(), {{4901}, Face(":side:2")}));
  ExpectRefusal(With(Thread(), {{4901}, Items{ItemOf(PRO_EDGE, ":side:2")}}));

  const std::size_t faces = part_->topology.faces.size();
  const FeatureOutcome thread = CreateOf(Thread());
  EXPECT_EQ(thread.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->topology.faces.size(), faces);
  EXPECT_THAT(ParentsOf(thread.feature), testing::Contains(hole_));
  ExpectMade(With(Thread(), {{4901}, Items{ItemOf(PRO_EDGE, HoleKey("side"))}}));
}

TEST_F(SolidFeaturesTest, TheChartsOfTheInstallationBoundTheIndicesOfAThread) {
  MakeHole();
  // A has one row, Iso has three behind a line that is none.
  std::filesystem::create_directories(PathOf(L"text\\hole"));
  WriteFile(L"text\\hole\\A.hol", "THREAD_DATA\nFASTENER_ID\n1/4-20 0.25\n");
  WriteFile(L"text\\hole\\Iso.HOL",
            "M8x1.25 before the table\r\n! a note\nThread_Data in use\n fastener_id PITCH\n"
            "M6x1\t1\n!M7x1\n\n  M8x1.25 1.25\nM8x.75");
  SetEnvironmentVariableW(L"PRO_DIRECTORY", directory().c_str());
  ExpectRefusal(With(Thread(), {{4975}, 2}));
  ExpectRefusal(With(Thread(), {{4976}, 3}));
  ExpectMade(Thread());
  // A thread that stands outlives its chart.
  SetEnvironmentVariableW(L"PRO_DIRECTORY", PathOf(L"nowhere").c_str());
  EXPECT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
}

// Rounds, chamfers and drafts.
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

}  // namespace
}  // namespace bench
