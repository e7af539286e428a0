// The extrude operations: arguments, element tree, order of calls, failures; and the solids of each depth
// mode in both directions, added and cut, straight and tapered, on each plane, whose numbers are worked out
// here.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

struct TreeCase {
  const wchar_t* operation;
  const wchar_t* arguments;
  int direction;
  const char* sides;  // of the depth
  const char* draft = "5097=-1";
};

constexpr const wchar_t* kExtrude = L"api_feature_extrude";
constexpr const wchar_t* kAdvanced = L"api_feature_extrude_advanced";

class ExtrudeOperation : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    Rectangle(L"S", L"XY", 0, 0, 10, 10);
    ClearHistory();
  }

  // Each extrusion alone, made of the sketch S.
  void ExpectTrees(int removal, const std::vector<TreeCase>& cases) {
    for (const auto& [operation, arguments, direction, sides, draft] : cases) {
      SCOPED_TRACE(EncodeUtf8(arguments));
      const std::wstring name = Create(operation, Format(LR"({"sketch_name":"S",%s})", arguments));
      EXPECT_EQ(TreeOf(FeatureNamed(name)), "386(387=917 388=1 1956=917 2023=" + std::to_string(removal) +
                                                " 3176=0 447 436=" + std::to_string(direction) + " 515(" +
                                                sides + ") 5096(" + draft + "))");
      Delete(name);
    }
  }
};

TEST_F(ExtrudeOperation, TheTreeFollowsTheArguments) {
  const char* const blind = "428(430=4096) 429(433=262144 434=7)";
  const char* const symmetric = "428(430=4096) 429(433=268435456 434=10)";
  ExpectTrees(-1, {{kExtrude, LR"("distance_mm":"7")", -1, blind},
                   {kExtrude, LR"("distance_mm":-7,"extent_type":" Blind ","operation":"newbody")", 1, blind},
                   {kExtrude, LR"("distance_mm":10,"both_sides":true)", -1, symmetric},
                   {kExtrude, LR"("distance_mm":-10,"both_sides":1)", -1, symmetric},
                   {kExtrude, LR"("distance_mm":7,"taper_angle_deg":-2.5)", -1, blind, "5097=80 5098=-2.5"},
                   {kExtrude, LR"("distance_mm":7,"taper_angle_deg":0.0000000001)", -1, blind},
                   // Two distances read no extent.
                   {kAdvanced, LR"("distance_mm":-7,"distance2_mm":-5,"both_sides":true,"extent_type":"odd")",
                    1, "428(430=128 431=5) 429(433=262144 434=7)"}});
}

TEST_F(ExtrudeOperation, TheTreesThatGoToTheBodyHaveNoDepth) {
  Rectangle(L"BODY", L"XY", 0, 0, 12, 12);
  Succeed(kExtrude, LR"({"sketch_name":"BODY","distance_mm":20,"both_sides":true})");
  const char* const next = "428(430=4096) 429(433=524288)";
  const char* const last = "428(430=4096) 429(433=1048576)";
  // The distance counts for its sign alone, and both sides not at all.
  ExpectTrees(
      916, {{kExtrude, LR"("distance_mm":1000,"both_sides":true,"operation":"cut","extent_type":"next")", -1,
             next},
            {kExtrude, LR"("distance_mm":1,"operation":"cut","extent_type":"THROUGH-ALL ")", -1, last},
            {kExtrude, LR"("distance_mm":-0.001,"operation":"remove","extent_type":"last")", 1, last}});
}

TEST_F(ExtrudeOperation, AnswersWithTheNewNameAndEntersItIntoTheHistory) {
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {kExtrude, LR"({"sketch_name":"s","distance_mm":10})", L"Extrude 1",
       L"Extrusion 'Extrude 1' created from 's'."},
      {kAdvanced, LR"({"sketch_name":"S","distance_mm":20,"distance2_mm":5})", L"Extrude_1",
       L"Advanced extrusion 'Extrude_1' created from 'S'."}};
  for (const auto& [operation, arguments, name, message] : cases) {
    ExpectCreated(Run(operation, arguments), name, message);
  }
  // The sketch was copied and can go.
  const double volume = Volume();
  DrawCircle(L"S");
  Delete(L"S");
  EXPECT_NEAR(Volume(), volume, 1e-6);
}

TEST_F(ExtrudeOperation, CallsComeInTheirOrder) {
  const auto mark = host().journal.Mark();
  Succeed(kExtrude, LR"({"sketch_name":"S","distance_mm":10})");
  EXPECT_THAT(
      CallsSince(mark, {"ProSolidFeatVisit", "ProMdlToModelitem", "ProSelectionAlloc", "ProSelectionCopy",
                        "ProArrayAlloc", "ProFeatureSketchedWithOptionsCreate", "ProSolidRegenerate",
                        "ProWindowRepaint", "ProModelitemByNameInit", "ProModelitemNameSet"}),
      ElementsAre("ProSolidFeatVisit", "ProMdlToModelitem", "ProSelectionAlloc", "ProSelectionAlloc",
                  "ProArrayAlloc", "ProSelectionCopy", "ProArrayAlloc", "ProFeatureSketchedWithOptionsCreate",
                  "ProSolidRegenerate", "ProWindowRepaint", "ProModelitemByNameInit", "ProModelitemNameSet",
                  "ProSolidRegenerate"));
  EXPECT_EQ(CountCaptured(Format(L"Feature Create (sketched): status=0 errCount=0 featId=%d sketch='S'",
                                 FeatureNamed(L"Extrude 1")->id)),
            1);
}

TEST_F(ExtrudeOperation, ArgumentsAreCheckedInTheirOrder) {
  ExpectRefusals({{kExtrude, LR"({"distance_mm":1})", L"'sketch_name' is required."},
                  {kExtrude, LR"({"sketch_name":"?","operation":"odd"})", L"'distance_mm' is required."},
                  {kExtrude, LR"({"sketch_name":"?","distance_mm":1,"operation":"odd","extent_type":"?"})",
                   L"Unsupported operation 'odd'. Use 'join' or 'cut'."},
                  {kExtrude, LR"({"sketch_name":"?","distance_mm":1,"extent_type":"to next"})",
                   L"Invalid 'extent_type'. Valid values: 'blind', 'next', 'last'."},
                  {kExtrude, LR"({"sketch_name":"RIGHT","distance_mm":1})",
                   L"Sketched curve feature 'RIGHT' not found. Create/commit it with api_sketch_* first."},
                  {kAdvanced, LR"({"sketch_name":"?","distance_mm":1})", L"'distance2_mm' is required."}});
}

TEST_F(ExtrudeOperation, NumbersThatAreNotFiniteAreRefused) {
  ExpectRefusals({{kExtrude, LR"({"sketch_name":"S","distance_mm":"nan"})", L"'distance_mm' is required."},
                  {kAdvanced, LR"({"sketch_name":"S","distance_mm":5,"distance2_mm":"inf"})",
                   L"Failed to set extrude depth values."},
                  // A taper that is no number is not taken for none.
                  {kExtrude, LR"({"sketch_name":"S","distance_mm":5,"taper_angle_deg":"nan"})",
                   L"Failed to set extrude taper angle."}});
}

TEST_F(ExtrudeOperation, WhatTheHostRefusesLeavesTheModelAsItWas) {
  Block(10, 10, 10);
  Rectangle(L"BESIDE", L"XY", 20, 0, 30, 10);
  ExpectHostRefusal(kExtrude, L"BESIDE", LR"(,"distance_mm":5,"operation":"cut")");
  ExpectHostRefusal(kExtrude, L"BESIDE", LR"(,"distance_mm":5,"extent_type":"last")");
  // A distance of 0 passes here and is the host's to judge.
  ExpectHostRefusal(kExtrude, L"S", LR"(,"distance_mm":0)");
}

// The section of all extrusions here: 1 ≤ s ≤ 4, 2 ≤ t ≤ 7.
constexpr double kS0 = 1, kS1 = 4, kT0 = 2, kT1 = 7;
constexpr double kWidth = kS1 - kS0, kHeight = kT1 - kT0;

constexpr double kDepth = 5, kOtherDepth = 8;

enum class Mode { kBlind, kBothSides, kTwo, kLast, kNext };

struct ExtrudeCase {
  Mode mode;
  bool against_normal;
  bool is_cut;
  double taper_deg;

  // By how much each side of the section moves in for a unit of distance from its plane.
  double Narrowing() const { return std::tan(taper_deg * std::numbers::pi / 180); }
};

// All cases of one plane, joined or cut.
std::vector<ExtrudeCase> CasesOf(std::initializer_list<Mode> modes, bool is_cut) {
  std::vector<ExtrudeCase> cases;
  for (const Mode mode : modes)
    for (const bool against : {false, true})
      for (const double taper : {0.0, 3.0, -3.0}) cases.push_back({mode, against, is_cut, taper});
  return cases;
}

// From the sketch plane to one side of it.
struct Stretch {
  int side;  // 1 along the normal, -1 against it
  double to;
};

// What stands over a stretch. At the distance d the section is (a - 2kd) by (b - 2kd), so that the volume up
// to d is
//   a b d - (a + b) k d² + 4/3 k² d³
// and its first moment along the normal
//   a b d²/2 - 2/3 (a + b) k d³ + k² d⁴.
// It narrows about its middle, so the centre stays over that of the rectangle.
SolidSum Prism(const Stretch& stretch, double k) {
  const double area = kWidth * kHeight, sides = kWidth + kHeight, d = stretch.to;
  const double volume = area * d - sides * k * d * d + 4.0 / 3 * k * k * d * d * d;
  const double moment = area * d * d / 2 - 2.0 / 3 * sides * k * d * d * d + k * k * d * d * d * d;
  return {volume, {volume * (kS0 + kS1) / 2, volume * (kT0 + kT1) / 2, stretch.side * moment}};
}

std::wstring ExtrudeArguments(const ExtrudeCase& each) {
  const double sign = each.against_normal ? -1 : 1;
  // Symmetric depth is the whole depth.
  const double distance = sign * (each.mode == Mode::kBothSides ? 2 * kDepth : kDepth);
  std::wstring extent;
  if (each.mode == Mode::kBothSides) extent = L",\"both_sides\":true";
  if (each.mode == Mode::kTwo) extent = Format(L",\"distance2_mm\":%g", kOtherDepth);
  if (each.mode == Mode::kLast) extent = L",\"extent_type\":\"last\"";
  if (each.mode == Mode::kNext) extent = L",\"extent_type\":\"next\"";
  return Format(LR"({"sketch_name":"SECTION","distance_mm":%g,"operation":"%s","taper_angle_deg":%g%s})",
                distance, each.is_cut ? L"cut" : L"join", each.taper_deg, extent);
}

std::vector<Stretch> ExtentOf(const ExtrudeCase& each) {
  const int side = each.against_normal ? -1 : 1;
  if (each.mode == Mode::kBothSides) return {{1, kDepth}, {-1, kDepth}};
  if (each.mode == Mode::kTwo) return {{side, kDepth}, {-side, kOtherDepth}};
  if (each.mode == Mode::kLast || each.mode == Mode::kNext) return {{side, 10}};
  return {{side, kDepth}};
}

class ExtrudeSolids : public FeatureTest {
 protected:
  // The section on a plane of the part.
  void DrawSection(const SketchFrame& frame) { Rectangle(L"SECTION", frame.plane, kS0, kT0, kS1, kT1); }

  // Runs the extrusion, holds what came of it against `expected`, and deletes it.
  void Check(const ExtrudeCase& each, const SketchFrame& frame, const SolidSum& expected,
             const bench::Box& outline) {
    const std::wstring arguments = ExtrudeArguments(each);
    SCOPED_TRACE(EncodeUtf8(frame.plane + arguments));
    const std::wstring name =
        Create(each.mode == Mode::kTwo ? L"api_feature_extrude_advanced" : L"api_feature_extrude", arguments);
    if (name.empty()) return;
    ExpectSolid(frame, expected, outline);
    Delete(name);
  }
};

class ExtrudeInAnEmptyPart : public ExtrudeSolids, public testing::WithParamInterface<SketchFrame> {};

TEST_P(ExtrudeInAnEmptyPart, StandsOnItsSection) {
  const SketchFrame frame = GetParam();
  DrawSection(frame);
  for (const ExtrudeCase& each : CasesOf({Mode::kBlind, Mode::kBothSides, Mode::kTwo}, false)) {
    const double k = each.Narrowing();
    SolidSum expected;
    double low = 0, high = 0;
    for (const Stretch& stretch : ExtentOf(each)) {
      expected = expected + Prism(stretch, k);
      (stretch.side > 0 ? high : low) = stretch.side * stretch.to;
    }
    // A section that widens is widest at the far end.
    const double wider = std::max(0.0, -k * std::max(-low, high));
    Check(each, frame, expected, {{kS0 - wider, kT0 - wider, low}, {kS1 + wider, kT1 + wider, high}});
  }
}

class ExtrudeIntoABody : public ExtrudeSolids, public testing::WithParamInterface<SketchFrame> {};

TEST_P(ExtrudeIntoABody, TakesAwayWhatLiesInIt) {
  const SketchFrame frame = GetParam();
  // A body of 10 × 10 that ends 10 on each side of the plane, which is the next surface and the last.
  Rectangle(L"BODY", frame.plane, 0, 0, 10, 10);
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"BODY","distance_mm":20,"both_sides":true})");
  DrawSection(frame);
  const bench::Box outline{{0, 0, -10}, {10, 10, 10}};
  for (const ExtrudeCase& each :
       CasesOf({Mode::kBlind, Mode::kBothSides, Mode::kTwo, Mode::kLast, Mode::kNext}, true)) {
    SolidSum expected = BoxPiece(outline.low, outline.high);
    for (const Stretch& stretch : ExtentOf(each)) expected = expected - Prism(stretch, each.Narrowing());
    Check(each, frame, expected, outline);
  }
}

constexpr auto kFrames = {kFront, kTop, kRight};

INSTANTIATE_TEST_SUITE_P(Planes, ExtrudeInAnEmptyPart, testing::ValuesIn(kFrames),
                         [](const auto& info) { return EncodeUtf8(info.param.plane); });

INSTANTIATE_TEST_SUITE_P(Planes, ExtrudeIntoABody, testing::ValuesIn(kFrames),
                         [](const auto& info) { return EncodeUtf8(info.param.plane); });

}  // namespace
}  // namespace vek::support
