#include <gmock/gmock.h>
#include <windows.h>

#include <cmath>
#include <filesystem>
#include <numbers>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::NodeRows;
using support::Tree;
using support::With;
using Items = std::vector<ItemReference>;

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

class HoleChartsTest : public SolidFeaturesTest {
 protected:
  // Charts at a place under the test's folder: A has one row, Iso has three behind a line that is none.
  void WriteCharts(const std::wstring& place) {
    std::filesystem::create_directories(PathOf(place));
    WriteFile(place + L"\\A.hol", "THREAD_DATA\nFASTENER_ID\n1/4-20 0.25\n");
    WriteFile(place + L"\\Iso.HOL",
              "M8x1.25 before the table\r\n! a note\nThread_Data in use\n fastener_id PITCH\n"
              "M6x1\t1\n!M7x1\n\n  M8x1.25 1.25\nM8x.75");
  }
  // The indices that the calls leave in a hole's tree, or the status of the first that failed.
  std::vector<int> LookUp(std::wstring series, std::wstring size) {
    Tree tree;
    tree.Integer(tree.Root(), 387, 911);
    const ProElement hole = tree.Compound(tree.Root(), 1671);
    ProElement elements[2] = {};
    const int ids[] = {1356, 1358};
    for (int i = 0; i < 2; ++i) {
      elements[i] = tree.Compound(hole, ids[i]);
      EXPECT_EQ(ProElementIntegerSet(elements[i], 0), PRO_TK_NO_ERROR);
    }
    ProError status = ProElementHoleThreadSeriesSet(tree.Root(), part_, series.data());
    if (status == PRO_TK_NO_ERROR) status = ProElementHoleScrewSizeSet(tree.Root(), part_, size.data());
    if (status != PRO_TK_NO_ERROR) return {status};
    std::vector<int> indices(2);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(ProElementIntegerGet(elements[i], &indices[i]), PRO_TK_NO_ERROR);
    return indices;
  }
  void Install(const std::wstring& place) { SetEnvironmentVariableW(L"PRO_DIRECTORY", place.c_str()); }
};

TEST_F(HoleChartsTest, AreFoundUnderTheInstallationAndBesideIt) {
  EXPECT_EQ(LookUp(L"ISO", L"M6x1"), std::vector<int>{PRO_TK_E_NOT_FOUND});
  const std::wstring places[] = {L"1\\app\\text\\hole", L"2\\app\\Common Files\\text\\hole",
                                 L"3\\Common Files\\text\\hole"};
  for (const std::wstring& place : places) {
    WriteCharts(place);
    Install(PathOf(place.substr(0, 1) + L"\\app"));
    EXPECT_EQ(LookUp(L"ISO", L"m8X1.25"), (std::vector<int>{1, 1}));
  }
  EXPECT_EQ(LookUp(L"a", L"1/4-20"), (std::vector<int>{0, 0}));
  EXPECT_EQ(LookUp(L"ISO", L"M8x.75"), (std::vector<int>{1, 2}));
  for (const wchar_t* none : {L"M7x1", L"FASTENER_ID", L"M8"})
    EXPECT_EQ(LookUp(L"ISO", none), std::vector<int>{PRO_TK_E_NOT_FOUND});
  EXPECT_EQ(LookUp(L"UNC", L"M6x1"), std::vector<int>{PRO_TK_E_NOT_FOUND});
}

TEST_F(HoleChartsTest, BoundTheIndicesOfAThread) {
  MakeHole();
  WriteCharts(L"text\\hole");
  Install(directory());
  ExpectRefusal(With(Thread(), {{4975}, 2}));
  ExpectRefusal(With(Thread(), {{4976}, 3}));
  ExpectMade(Thread());
  // A thread that stands outlives its chart.
  Install(PathOf(L"nowhere"));
  EXPECT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
}

}  // namespace
}  // namespace bench
