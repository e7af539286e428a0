// Cosmetic threads on holes and studs, and the look-up of threads in the host's charts.
#include "addin/ops/feature/thread_lookup.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const wchar_t* kThread = L"api_feature_thread";
constexpr const wchar_t* kNoCharts = L"Could not locate Creo text\\hole charts (ISO.hol).";

// M8x1.25 is number 1 of its series.
constexpr const char* kChart =
    "! made for tests\n"
    "M6x1 stands before the table\n"
    "THREAD_data\n"
    "Fastener_ID  BASIC_DIAM\n"
    "M8x.75   8.0\n"
    "\n"
    "m8X1.25\t8.0\n"
    "! M7x1   7.0\n"
    "UNTOLD   0.0\n";

class ThreadOperation : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    // Of three charts, ISO is number 1.
    for (const wchar_t* chart : {L"UNC.hol", L"ISO.hol", L"DIN.hol"})
      WriteChart(std::filesystem::path(L"text\\hole") / chart, kChart);
    SetInstallation(directory().wstring());
  }
  void TearDown() override {
    SetInstallation(L"");
    FeatureTest::TearDown();
  }

  static void SetInstallation(const std::wstring& path) {
    ::SetEnvironmentVariableW(L"PRO_DIRECTORY", path.empty() ? nullptr : path.c_str());
  }
  void WriteChart(const std::filesystem::path& place, std::string_view text) {
    const auto path = directory() / place;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
  }
  void RemoveCharts() { std::filesystem::remove_all(directory() / L"text"); }

  // A block of 40 x 20 x 10 mm with a blind hole of 8 x 6 mm in it; "Hole 1".
  CreoMcpOperationResult DrillHole(const std::wstring& more = L"") {
    Block(40, 20, 10);
    CreateSketch(L"P", L"XY");
    Draw(L"api_sketch_point", L"P", LR"("x":10,"y":10)");
    Forget();
    return Run(L"api_feature_hole", LR"({"sketch_name":"P","diameter_mm":8,"depth_mm":6)" + more + L"}");
  }
  // A cylinder of 8 x 7 mm; "Extrude 1".
  void ExtrudeStud() {
    CreateSketch(L"S", L"XY");
    Draw(L"api_sketch_circle_center_radius", L"S", LR"("cx":0,"cy":0,"radius":4)");
    Succeed(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":7})");
    Forget();
  }
  void Forget() {
    ClearHistory();
    ClearCapturedLog();
  }

  static std::wstring On(const std::wstring& feature, const std::wstring& more = L"") {
    return Format(LR"({"feature_name":"%s","thread_designation":"M8x1.25"%s})", feature, more);
  }
  // The depth of a thread that is made there with those calls failing. It doesn't stay.
  double DepthOn(const std::wstring& feature, const std::wstring& more,
                 const std::vector<const char*>& failing = {}) {
    for (const char* call : failing) faults().Fail(call, PRO_TK_GENERAL_ERROR);
    const std::wstring thread = Create(kThread, On(feature, more));
    faults().Clear();
    if (FeatureNamed(thread) == nullptr) return 0;
    const double depth = std::get<double>(FeatureNamed(thread)->tree->Find({4903, 4906})->value);
    Delete(thread);
    return depth;
  }

  // The captured lines of threads and creations, without the numbers that a host gives.
  std::vector<std::string> Attempts() {
    std::vector<std::string> lines;
    for (const auto& line : CapturedLog()) {
      const std::string text = EncodeUtf8(line.text);
      if (text.starts_with("Feature Create") || text.starts_with("Feature Thread: create"))
        lines.push_back(text.substr(0, text.find(" featId")));
    }
    return lines;
  }
};

TEST_F(ThreadOperation, LiesOnTheCylinderOfAHole) {
  DrillHole();
  Forget();
  const double volume = Volume();
  const auto result = Run(kThread, LR"({"feature_name":"hole 1","thread_designation":"m8 x 1.25"})");
  ExpectCreated(result, L"COSMETIC_THREAD",
                L"Cosmetic thread 'COSMETIC_THREAD' (ISO / M8x1.25) created on 'Hole 1' (full depth).");
  EXPECT_EQ(
      TreeOf(FeatureNamed(L"COSMETIC_THREAD")),
      "386(387=1070 388=1 1964 4974=1 4975=1 4976=1 4902=@1 4900=8 4901=@1 4903(4904=0 4905=1 4906=6))");
  EXPECT_NEAR(Volume(), volume, 1e-9) << "a thread is a note and cuts nothing";
}

TEST_F(ThreadOperation, ATappedHoleIsThreadedWithIt) {
  const auto result = DrillHole(LR"(,"hole_type":"clearance","thread_designation":"M8x0.75")");
  EXPECT_EQ(EncodeUtf8(result.message),
            "Hole 'Hole 1' created (diameter 8 mm, depth 6 mm) on point 1 of 'P', axis normal to sketch "
            "plane. Cosmetic thread 'COSMETIC_THREAD' (ISO / M8x.75) created on 'Hole 1' (full depth).");
  ASSERT_EQ(UndoStack().size(), 2u);
  EXPECT_EQ(UndoStack()[0].label, L"Create COSMETIC_THREAD");
  EXPECT_EQ(UndoStack()[1].label, L"Create Hole 1");
}

TEST_F(ThreadOperation, TheDepthComesFromTheFirstThatTellsIt) {
  DrillHole();
  EXPECT_NEAR(DepthOn(L"Hole 1", L""), 6, 1e-9);
  // Without the hole's own depth: the area of its wall over pi times its diameter, which is its length.
  EXPECT_NEAR(DepthOn(L"Hole 1", L"", {"ProElementDoubleGet"}), 6, 1e-9);
  EXPECT_NEAR(DepthOn(L"Hole 1", LR"(,"full_depth":false,"length_mm":2.5)"), 2.5, 1e-9);
  EXPECT_NEAR(DepthOn(L"Hole 1", LR"(,"full_depth":true,"length_mm":2.5)"), 6, 1e-9);
}

TEST_F(ThreadOperation, LengthsAreInModelUnits) {
  Current().length_unit = bench::LengthUnit::kInch;
  ExtrudeStud();
  EXPECT_NEAR(DepthOn(L"Extrude 1", L""), 7 / 25.4, 1e-9);
  // The designation's diameter is the stud's, so that the area gives the same length with either.
  EXPECT_NEAR(DepthOn(L"Extrude 1", L"", {"ProSurfaceDiameterEval"}), 7 / 25.4, 1e-9);
  // Without an area the length that is told, or else a millimetre.
  const std::vector<const char*> both = {"ProSurfaceDiameterEval", "ProSurfaceAreaEval"};
  EXPECT_NEAR(DepthOn(L"Extrude 1", LR"(,"full_depth":false,"length_mm":2.54)", both), 0.1, 1e-12);
  EXPECT_NEAR(DepthOn(L"Extrude 1", L"", both), 1 / 25.4, 1e-12);
}

TEST_F(ThreadOperation, ArgumentsAreChecked) {
  ExtrudeStud();
  ExpectRefusals(
      {{kThread, LR"({"feature_name":"Extrude 1","thread_designation":" \t"})",
        L"'thread_designation' is required (e.g. M8x1.25)."},
       {kThread, LR"({"feature_name":"?","thread_designation":"M8","full_depth":0,"length_mm":"nan"})",
        L"'length_mm' is required (and must be > 0) unless 'full_depth' is true."},
       // A diameter could be read from this one, but no chart has it.
       {kThread, LR"({"feature_name":"Extrude 1","thread_designation":"m9 x 1"})",
        L"Screw size 'M9x1' not found in ISO.hol."},
       {kThread, LR"({"feature_name":"FRONT","thread_designation":"M8x1.25"})",
        L"Feature 'FRONT' has no cylindrical surface for a cosmetic thread."}});
  ExpectFailure(kThread, On(L"Extrude 1", LR"(,"full_depth":false,"length_mm":1e999)"),
                L"Failed to populate cosmetic thread element tree.");
  faults().Fail("ProSurfaceDiameterEval", PRO_TK_GENERAL_ERROR);
  ExpectFailure(kThread, LR"({"feature_name":"Extrude 1","thread_designation":"Untold"})",
                L"Could not determine thread diameter.");
}

TEST_F(ThreadOperation, AttemptsComeInTheirOrderUntilOneIsTaken) {
  ExtrudeStud();
  // Five creations are refused, the sixth is the retry of the third attempt.
  faults().Fail("ProFeatureWithoptionsCreate", PRO_TK_BAD_CONTEXT, 1, 5);
  const std::wstring thread = Create(kThread, On(L"Extrude 1"));
  const auto& start =
      std::get<std::vector<bench::ItemReference>>(FeatureNamed(thread)->tree->Find({4901})->value).at(0);
  const std::string create = "Feature Thread: create startId=" + std::to_string(start.id) + " type=5 ";
  const std::string refused = "status=-8 errCount=0";
  EXPECT_THAT(Attempts(),
              ElementsAre(create + "std=1 flip=1", "Feature Create [thread]: " + refused,
                          "Feature Create [thread-undo]: " + refused, create + "std=1 flip=-1",
                          "Feature Create [thread]: " + refused, "Feature Create [thread-undo]: " + refused,
                          create + "std=0 flip=1", "Feature Create [thread]: " + refused,
                          "Feature Create [thread-undo]: status=0 errCount=0"));
  EXPECT_THAT(TreeOf(FeatureNamed(thread)), HasSubstr(" 4974=0 "));
}

TEST_F(ThreadOperation, EveryStartIsTriedPlanesBeforeEdges) {
  ExtrudeStud();
  const ModelState before = State();
  faults().Fail("ProFeatureWithoptionsCreate", PRO_TK_BAD_CONTEXT, 1, 1000);
  ExpectFailure(kThread, On(L"Extrude 1"),
                L"Creo could not create the thread-undo feature (status=-8, errors=0).");
  EXPECT_EQ(State(), before);

  // Two planes end the stud; each of its edges comes once.
  std::vector<std::string> starts;
  for (const std::string& line : Attempts())
    if (line.ends_with("std=1 flip=1")) starts.push_back(line.substr(0, line.find(" std")));
  ASSERT_GE(starts.size(), 4u);
  for (std::size_t i = 0; i < starts.size(); ++i)
    EXPECT_THAT(starts[i], testing::EndsWith(i < 2 ? " type=5" : " type=6"));
  EXPECT_EQ(std::set(starts.begin(), starts.end()).size(), starts.size());
  // Four attempts of two creations and three lines for each start.
  EXPECT_EQ(Attempts().size(), starts.size() * 4 * 3);
}

class ThreadLookup : public ThreadOperation {
 protected:
  // The indices of series and screw by the charts, or the message.
  static std::string ByChart(const std::wstring& designation = L"M8x1.25",
                             const std::wstring& series = L"ISO") {
    int series_index = -1, screw_index = -1;
    std::wstring message;
    const bool ok = feature::ResolveThreadByChart(series, designation, series_index, screw_index, message);
    return EncodeUtf8(ok ? Format(L"%d %d", series_index, screw_index) : message);
  }
};

TEST_F(ThreadLookup, BothWaysGiveTheSameIndices) {
  DrillHole();
  Succeed(kThread, On(L"Hole 1"));
  EXPECT_EQ(CountCaptured(L"Feature Thread: series='ISO' idx=1 screw='M8x1.25' idx=1"), 1);
  EXPECT_EQ(ByChart(), "1 1");
  EXPECT_EQ(ByChart(L"untold", L"unc"), "2 2");
}

TEST_F(ThreadLookup, TheChartsServeWhereTheHostFails) {
  ExtrudeStud();
  faults().Fail("ProElementHoleScrewSizeSet", PRO_TK_BAD_CONTEXT);
  Delete(Create(kThread, On(L"Extrude 1")));
  EXPECT_EQ(
      CountCaptured(L"Feature Thread: hole-helper lookup failed: Screw size 'M8x1.25' not found in series "
                    L"'ISO' (status=-8). Use an ISO.hol FASTENER_ID like M8x1.25."),
      1);
  RemoveCharts();
  ExpectFailure(kThread, On(L"Extrude 1"), kNoCharts);
}

TEST_F(ThreadLookup, ChartsAreFoundInEachOfTheirPlaces) {
  RemoveCharts();
  for (const std::wstring& nowhere : {directory().wstring(), std::wstring()}) {
    SetInstallation(nowhere);
    EXPECT_EQ(ByChart(), EncodeUtf8(kNoCharts));
  }
  // The likelier place wins: each new chart has one row more in front.
  const std::wstring installation = (directory() / L"Creo" / L"Parametric").wstring();
  const wchar_t* const places[] = {L"Creo\\Common Files\\text\\hole\\iso.HOL",
                                   L"Creo\\Parametric\\Common Files\\text\\hole\\ISO.hol",
                                   L"Creo\\Parametric\\text\\hole\\ISO.hol"};
  std::string rows = "M8x1.25\n";
  for (int i = 0; i < 3; ++i) {
    WriteChart(places[i], "THREAD_DATA\n" + rows);
    rows = "M1x1\n" + rows;
    SetInstallation(installation + (i == 1 ? L"\\" : L""));
    EXPECT_EQ(ByChart(), "0 " + std::to_string(i)) << EncodeUtf8(places[i]);
  }
}

TEST_F(ThreadLookup, EachFailureOfTheChartsHasItsMessage) {
  EXPECT_EQ(ByChart(L"M6x1"), "Screw size 'M6x1' not found in ISO.hol.");
  // A series in a folder of its own is found on the disk, but is none of the charts.
  WriteChart(L"text\\hole\\more\\OWN.hol", kChart);
  EXPECT_EQ(ByChart(L"M8x1.25", L"more\\OWN"), "Series 'more\\OWN' not found among *.hol charts.");
}

}  // namespace
}  // namespace vek::support
