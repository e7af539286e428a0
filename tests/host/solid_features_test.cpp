#include <ProArray.h>
#include <ProReference.h>
#include <ProSelection.h>
#include <gmock/gmock.h>
#include <windows.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <numbers>
#include <variant>

#include "bench/host/model/item_lookup.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Creation;
using support::Tree;

constexpr double kPi = std::numbers::pi;

struct Compound {};
using Items = std::vector<ProModelitem>;
struct Surfaces {
  int instruction = 4;  // the whole solid
};
using Value = std::variant<Compound, int, double, std::wstring, ProModelitem, Items, Surfaces, Matrix>;

// An element by the path that leads to it.
struct Row {
  std::vector<int> path;
  Value value;
  bool required = true;
};
using Rows = std::vector<Row>;

Rows With(Rows rows, int id, Value value) {
  for (Row& row : rows)
    if (row.path.back() == id) row.value = value;
  return rows;
}

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

  // The first face or edge whose key ends so, or the first item of its type of the sketch.
  ProModelitem Find(ProType type, const std::string& ending) {
    for (const auto& feature : part_->features)
      for (const GeometryItem& item : feature->items)
        if (item.type == type && item.alive && item.key.ends_with(ending)) return {type, item.id, part_};
    ADD_FAILURE() << "no item " << ending;
    return {};
  }
  ProModelitem Face(const std::string& ending) { return Find(PRO_SURFACE, ending); }
  ProModelitem Point() { return Find(PRO_POINT, ":point:1"); }
  ProModelitem Plane(std::wstring_view name) { return PlaneOf(*part_, name); }

  Rows Shell(const Items& removed) {
    return {{{387}, 928}, {{73}, removed, false}, {{74}, 1.0}, {{2194}, 1}};
  }
  Rows Hole() {
    return {{{387}, 911},
            {{388}, 1},
            {{1671}, Compound{}},
            {{1671, 1672}, 16},
            {{1671, 3887}, -1},
            {{1671, 82}, 4.0},
            {{1671, 1684}, Compound{}},
            {{1671, 1684, 1686}, Compound{}},
            {{1671, 1684, 1686, 1688}, 1},
            {{1671, 1684, 1686, 434}, 6.0},
            {{1671, 1684, 1685}, Compound{}},
            {{1671, 1684, 1685, 1687}, 6},
            {{1671, 1689}, -1},
            {{1671, 6053}, -1},
            {{1340}, Compound{}},
            {{1340, 1341}, Point()},
            {{1340, 696}, 4},
            {{1340, 1677}, Plane(L"FRONT")},
            {{1340, 6051}, Plane(L"FRONT")},
            {{1340, 6052}, 1}};
  }
  Rows HoleWithoutDirection() {
    Rows rows = Hole();
    rows.resize(rows.size() - 3);
    return rows;
  }
  Rows Move(const Matrix& matrix) {
    return {{{387}, 1254},
            {{5471}, Compound{}},
            {{5471, 2213}, Surfaces{}},
            {{5400}, 0},
            {{4300}, Compound{}},
            {{4300, 4301}, Compound{}},
            {{4300, 4301, 4306}, Compound{}},
            {{4300, 4301, 4306, 4307}, Compound{}},
            {{4300, 4301, 4306, 4307, 4308}, 10},
            {{4300, 4301, 4306, 4307, 4309}, matrix}};
  }
  // On the hole's cylinder, from its floor.
  Rows Thread() {
    return {{{387}, 1070},
            {{388}, 1},
            {{1964}, std::wstring(L"COSMETIC_THREAD")},
            {{4974}, 1},
            {{4975}, 1},
            {{4976}, 2},
            {{4902}, Face(":side")},
            {{4900}, 4.0},
            {{4901}, Face(HoleKey("end"))},
            {{4903}, Compound{}},
            {{4903, 4904}, 0},
            {{4903, 4905}, -1},
            {{4903, 4906}, 6.0}};
  }
  std::string HoleKey(const std::string& what) { return std::to_string(hole_.id) + ":" + what; }
  void MakeHole() {
    const Creation creation = Make(Hole());
    ASSERT_EQ(creation.status, PRO_TK_NO_ERROR);
    hole_ = creation.feature;
  }

  Creation Make(const Rows& rows, int left_out = 0);
  // Refused, with an error, and the model as it was.
  void ExpectRefused(const Rows& rows, const std::string& what, int left_out = 0) {
    const std::string before = Snapshot(*part_);
    const Creation creation = Make(rows, left_out);
    EXPECT_NE(creation.status, PRO_TK_NO_ERROR) << what;
    EXPECT_GT(creation.errors, 0) << what;
    EXPECT_EQ(Snapshot(*part_), before) << what;
  }
  // Each row must be there, whole numbers must be as told and lengths above 0.
  void ExpectEveryRowToMatter(const Rows& rows) {
    for (const Row& row : rows) {
      const int id = row.path.back();
      if (row.required) ExpectRefused(rows, "without " + std::to_string(id), id);
      if (std::holds_alternative<int>(row.value)) ExpectRefused(With(rows, id, -9), std::to_string(id));
      if (std::holds_alternative<double>(row.value)) ExpectRefused(With(rows, id, 0.0), std::to_string(id));
    }
  }

  ProFeature points_{}, hole_{};
};

ProReference ReferenceTo(ProModelitem item) {
  ProSelection selection = nullptr;
  ProReference reference = nullptr;
  EXPECT_EQ(ProSelectionAlloc(nullptr, &item, &selection), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionToReference(selection, &reference), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
  return reference;
}

void SetItems(ProElement element, const Items& items) {
  ProArray array = nullptr;
  EXPECT_EQ(ProArrayAlloc(static_cast<int>(items.size()), sizeof(ProReference), 1, &array), PRO_TK_NO_ERROR);
  auto* references = static_cast<ProReference*>(array);
  std::transform(items.begin(), items.end(), references, ReferenceTo);
  EXPECT_EQ(ProElementReferencesSet(element, references), PRO_TK_NO_ERROR);
  for (std::size_t i = 0; i < items.size(); ++i) EXPECT_EQ(ProReferenceFree(references[i]), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
}

void SetSurfaces(ProElement element, const Surfaces& surfaces, ProModelitem face) {
  ProCollection collection = nullptr;
  ProSrfcollinstr instruction = nullptr;
  const auto type = static_cast<ProSrfcollinstrType>(surfaces.instruction);
  EXPECT_EQ(ProSrfcollectionAlloc(&collection), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSrfcollinstrAlloc(type, PRO_B_TRUE, &instruction), PRO_TK_NO_ERROR);
  if (surfaces.instruction == 1) {
    ProSrfcollref surface = nullptr;
    const ProReference reference = ReferenceTo(face);
    EXPECT_EQ(ProSrfcollrefAlloc(static_cast<ProSrfcollrefType>(1), reference, &surface), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSrfcollinstrReferenceAdd(instruction, surface), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProReferenceFree(reference), PRO_TK_NO_ERROR);
  }
  EXPECT_EQ(ProSrfcollectionInstructionAdd(collection, instruction), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementCollectionSet(element, collection), PRO_TK_NO_ERROR);
}

void SetMatrix(ProElement element, const Matrix& matrix) {
  ProMatrix rows;
  for (int row = 0; row < 4; ++row) std::ranges::copy(matrix[row], rows[row]);
  EXPECT_EQ(ProFeatureD3elemMatrixSet(element, rows), PRO_TK_NO_ERROR);
}

Creation SolidFeaturesTest::Make(const Rows& rows, int left_out) {
  Tree tree(left_out);
  std::map<std::vector<int>, ProElement> parents{{{}, tree.Root()}};
  for (const Row& row : rows) {
    const ProElement parent = parents.at({row.path.begin(), row.path.end() - 1});
    const int id = row.path.back();
    if (const auto* integer = std::get_if<int>(&row.value)) tree.Integer(parent, id, *integer);
    if (const auto* number = std::get_if<double>(&row.value)) tree.Double(parent, id, *number);
    if (const auto* text = std::get_if<std::wstring>(&row.value)) tree.Text(parent, id, *text);
    if (const auto* item = std::get_if<ProModelitem>(&row.value)) tree.Reference(parent, id, *item);
    const auto* items = std::get_if<Items>(&row.value);
    const auto* surfaces = std::get_if<Surfaces>(&row.value);
    const auto* matrix = std::get_if<Matrix>(&row.value);
    const bool is_compound = std::holds_alternative<Compound>(row.value);
    if (!is_compound && !(items && !items->empty()) && !surfaces && !matrix) continue;
    const ProElement element = parents[row.path] = tree.Compound(parent, id);
    if (items) SetItems(element, *items);
    if (surfaces) SetSurfaces(element, *surfaces, Face(":end"));
    if (matrix) SetMatrix(element, *matrix);
  }
  return Create(*part_, tree.Root(), 1);
}

TEST_F(SolidFeaturesTest, ShellIsOpenWhereFacesAreRemoved) {
  const ProModelitem top = Face(":end");
  ExpectEveryRowToMatter(Shell({top}));
  ExpectRefused(Shell({Plane(L"FRONT")}), "datum plane");
  ExpectRefused(Shell({Find(PRO_EDGE, "")}), "edge");
  ExpectRefused(With(Shell({}), 74, 5.0), "as thick as half the plate");

  // Named twice it is still one face: 8000 less 38 × 18 × 9.
  EXPECT_EQ(Make(Shell({top, top})).status, PRO_TK_NO_ERROR);
  ExpectVolume(8000 - 38 * 18 * 9);
  EXPECT_TRUE(ItemExists(top));
}

TEST_F(SolidFeaturesTest, HoleGoesAlongThePlanesNormalOrIntoTheMaterial) {
  ExpectEveryRowToMatter(Hole());
  ExpectRefused(With(Hole(), 1341, Find(PRO_CURVE, "")), "curve");
  ExpectRefused(With(Hole(), 1341, Face(":end")), "face");
  ExpectRefused(With(Hole(), 6051, Plane(L"TOP")), "two planes");
  // The normal of a face leads out of the material.
  ExpectRefused(With(With(Hole(), 1677, Face(":start")), 6051, Face(":start")), "beside the body");
  MakeHole();
  ExpectVolume(8000 - 4 * kPi * 6);

  part_ = &NewPart(L"INCHES");
  part_->length_unit = LengthUnit::kInch;
  Begin();
  EXPECT_EQ(Make(HoleWithoutDirection()).status, PRO_TK_NO_ERROR);
  ExpectVolume((8000 - 4 * kPi * 6) * std::pow(25.4, 3));
}

TEST_F(SolidFeaturesTest, HoleStandsOnThePointOfItsSketch) {
  MakeHole();
  EXPECT_THAT(FindFeature(&hole_)->parents, testing::Contains(points_.id));
  const Creation without = Redraw(points_, [](ProSection section) { ProSectionEntityDelete(section, 1); });
  EXPECT_NE(without.status, PRO_TK_NO_ERROR);
  ExpectVolume(8000 - 4 * kPi * 6);
}

TEST_F(SolidFeaturesTest, MoveTakesTheWholeSolidAndKeepsItsFaces) {
  const auto changed = [](int row, int column, double value) {
    Matrix matrix = kQuarterTurn;
    matrix[row][column] = value;
    return matrix;
  };
  ExpectEveryRowToMatter(Move(kQuarterTurn));
  ExpectRefused(With(Move(kQuarterTurn), 2213, Surfaces{1}), "one face");
  ExpectRefused(Move(changed(0, 1, 1.001)), "stretched");
  ExpectRefused(Move(changed(2, 2, -1)), "mirrored");
  ExpectRefused(Move(changed(0, 0, 0.1)), "sheared");
  ExpectRefused(Move(changed(0, 3, 100)), "column form");

  const ProModelitem top = Face(":end");
  EXPECT_EQ(Make(Move(kQuarterTurn)).status, PRO_TK_NO_ERROR);
  ExpectOutline({80, 0, 0}, {100, 40, 10});
  EXPECT_TRUE(ItemExists(top));
  const Matrix identity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
  EXPECT_EQ(Make(Move(identity)).status, PRO_TK_NO_ERROR);
  ExpectOutline({80, 0, 0}, {100, 40, 10});
}

TEST_F(SolidFeaturesTest, ThreadIsANoteOnACylinderThatBeginsAtItsEnd) {
  MakeHole();
  ExpectEveryRowToMatter(Thread());
  ExpectRefused(With(Thread(), 4902, Face(":start")), "on a plane");
  // The plate's walls and their edges don't touch the hole.
  ExpectRefused(With(Thread(), 4901, Face(":side:2")), "from elsewhere");
  ExpectRefused(With(Thread(), 4901, Find(PRO_EDGE, ":side:2")), "from an edge elsewhere");

  const std::size_t faces = part_->topology.faces.size();
  const Creation thread = Make(Thread());
  EXPECT_EQ(thread.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->topology.faces.size(), faces);
  EXPECT_THAT(FindFeature(&thread.feature)->parents, testing::Contains(hole_.id));
  EXPECT_EQ(Make(With(Thread(), 4901, Find(PRO_EDGE, HoleKey("side")))).status, PRO_TK_NO_ERROR);
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
  ExpectRefused(With(Thread(), 4975, 2), "no such series");
  ExpectRefused(With(Thread(), 4976, 3), "no such screw size");
  EXPECT_EQ(Make(Thread()).status, PRO_TK_NO_ERROR);
  // A thread that stands outlives its chart.
  Install(PathOf(L"nowhere"));
  EXPECT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
}

}  // namespace
}  // namespace bench
