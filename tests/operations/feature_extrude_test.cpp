// The extrude operations: arguments, element tree, order of calls, failures; and the solids of each depth
// mode in both directions, added and cut, straight and tapered, on each plane, whose numbers are worked out
// here.
#include <algorithm>
#include <cmath>
#include <numbers>
#include "tests/operations/feature_test.h"

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
  ExpectCreated(Run(kExtrude, LR"({"sketch_name":"s","distance_mm":10})"), L"Extrude 1",
                L"Extrusion 'Extrude 1' created from 's'.");
  ExpectCreated(Run(kAdvanced, LR"({"sketch_name":"S","distance_mm":20,"distance2_mm":5})"), L"Extrude_1",
                L"Advanced extrusion 'Extrude_1' created from 'S'.");
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

TEST_F(ExtrudeOperation, ArgumentsAreChecked) {
  ExpectRefusals({{kExtrude, LR"({"sketch_name":"RIGHT","distance_mm":1})",
                   L"Sketched curve feature 'RIGHT' not found. Create/commit it with api_sketch_* first."},
                  {kExtrude, LR"({"sketch_name":"S","distance_mm":"nan"})", L"'distance_mm' is required."},
                  {kAdvanced, LR"({"sketch_name":"S","distance_mm":5,"distance2_mm":"inf"})",
                   L"Failed to set extrude depth values."},
                  // A taper that is no number is not taken for none.
                  {kExtrude, LR"({"sketch_name":"S","distance_mm":5,"taper_angle_deg":"nan"})",
                   L"Failed to set extrude taper angle."}});
}

TEST_F(ExtrudeOperation, WhatTheHostRefusesLeavesTheModelAsItWas) {
  Block(10, 10, 10);
  Rectangle(L"BESIDE", L"XY", 20, 0, 30, 10);
  const wchar_t* const beside =
      L"Creo could not create the feature from sketch 'BESIDE' (status=-1, errors=1).";
  ExpectRefusals({{kExtrude, LR"({"sketch_name":"BESIDE","distance_mm":5,"operation":"cut"})", beside},
                  {kExtrude, LR"({"sketch_name":"BESIDE","distance_mm":5,"extent_type":"last"})", beside},
                  // A distance of 0 passes here and is the host's to judge.
                  {kExtrude, LR"({"sketch_name":"S","distance_mm":0})",
                   L"Creo could not create the feature from sketch 'S' (status=-1, errors=1)."}});
  EXPECT_EQ(CountCaptured(L"Feature Create (sketched): status=-1 errCount=1 featId=0 sketch='S'"), 1);
}

// The section of all extrusions here: 1 ≤ s ≤ 4, 2 ≤ t ≤ 7.
constexpr double kS0 = 1, kS1 = 4, kT0 = 2, kT1 = 7;
constexpr double kWidth = kS1 - kS0, kHeight = kT1 - kT0;

// A depth mode: its distance, what else it is told, and how far it reaches along its direction and against
// it.
struct Extent {
  const wchar_t* operation;
  double distance;
  const wchar_t* more;
  double ahead, behind;
};
// Symmetric depth is the whole depth. The body ends 10 from the plane, on its next surface and its last.
constexpr Extent kBlind{kExtrude, 5, L"", 5, 0}, kBothSides{kExtrude, 10, L",\"both_sides\":true", 5, 5},
    kTwo{kAdvanced, 5, L",\"distance2_mm\":8", 5, 8}, kLast{kExtrude, 5, L",\"extent_type\":\"last\"", 10, 0},
    kNext{kExtrude, 5, L",\"extent_type\":\"next\"", 10, 0};

// What stands over the section on one side of its plane. At the distance d the section is (a - 2kd) by
// (b - 2kd), so that the volume up to d is
//   a b d - (a + b) k d² + 4/3 k² d³
// and its first moment along the normal
//   a b d²/2 - 2/3 (a + b) k d³ + k² d⁴.
// It narrows about its middle, so the centre stays over that of the rectangle.
SolidSum Prism(int side, double d, double k) {
  const double area = kWidth * kHeight, sides = kWidth + kHeight;
  const double volume = area * d - sides * k * d * d + 4.0 / 3 * k * k * d * d * d;
  const double moment = area * d * d / 2 - 2.0 / 3 * sides * k * d * d * d + k * k * d * d * d * d;
  return {volume, {volume * (kS0 + kS1) / 2, volume * (kT0 + kT1) / 2, side * moment}};
}

class ExtrudeSolids : public FeatureTest, public testing::WithParamInterface<SketchFrame> {
 protected:
  static constexpr bench::Box kBody{{0, 0, -10}, {10, 10, 10}};

  // An extrusion of the section each way, straight and tapered, alone or out of the body.
  void ExpectEachWay(const Extent& extent, bool is_cut) {
    const SketchFrame& frame = GetParam();
    for (const int side : {1, -1})
      for (const double taper : {0.0, 3.0, -3.0}) {
        const std::wstring arguments =
            Format(LR"({"sketch_name":"SECTION","distance_mm":%g,"operation":"%s","taper_angle_deg":%g%s})",
                   side * extent.distance, is_cut ? L"cut" : L"join", taper, extent.more);
        SCOPED_TRACE(EncodeUtf8(frame.plane + arguments));
        const std::wstring name = Create(extent.operation, arguments);
        if (name.empty()) continue;
        // By how much each side of the section moves in for a unit of distance from its plane.
        const double k = std::tan(taper * std::numbers::pi / 180);
        const SolidSum prisms = Prism(side, extent.ahead, k) + Prism(-side, extent.behind, k);
        // A section that widens is widest at the far end.
        const double wider = std::max(0.0, -k * std::max(extent.ahead, extent.behind));
        const double high = side > 0 ? extent.ahead : extent.behind,
                     low = high - extent.ahead - extent.behind;
        if (is_cut)
          ExpectSolid(frame, BoxPiece(kBody.low, kBody.high) - prisms, kBody);
        else
          ExpectSolid(frame, prisms, {{kS0 - wider, kT0 - wider, low}, {kS1 + wider, kT1 + wider, high}});
        Delete(name);
      }
  }
};

TEST_P(ExtrudeSolids, StandOnTheirSection) {
  Rectangle(L"SECTION", GetParam().plane, kS0, kT0, kS1, kT1);
  for (const Extent& extent : {kBlind, kBothSides, kTwo}) ExpectEachWay(extent, false);
}

TEST_P(ExtrudeSolids, TakeAwayWhatLiesInABody) {
  Rectangle(L"BODY", GetParam().plane, 0, 0, 10, 10);
  Succeed(kExtrude, LR"({"sketch_name":"BODY","distance_mm":20,"both_sides":true})");
  Rectangle(L"SECTION", GetParam().plane, kS0, kT0, kS1, kT1);
  for (const Extent& extent : {kBlind, kBothSides, kTwo, kLast, kNext}) ExpectEachWay(extent, true);
}

INSTANTIATE_TEST_SUITE_P(Planes, ExtrudeSolids, testing::Values(kFront, kTop, kRight),
                         [](const auto& info) { return EncodeUtf8(info.param.plane); });

}  // namespace
}  // namespace vek::support
