// The extrude operations: arguments, element tree, order of calls, failures.
#include <gmock/gmock.h>

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
  ExpectTrees(
      -1, {
              {kExtrude, LR"("distance_mm":"7")", -1, blind},
              {kExtrude, LR"("distance_mm":-7,"extent_type":"")", 1, blind},
              {kExtrude, LR"("distance_mm":-7,"extent_type":" Blind ","operation":"newbody")", 1, blind},
              {kExtrude, LR"("distance_mm":10,"both_sides":true)", -1, symmetric},
              {kExtrude, LR"("distance_mm":-10,"both_sides":1)", -1, symmetric},
              {kExtrude, LR"("distance_mm":7,"taper_angle_deg":-2.5)", -1, blind, "5097=80 5098=-2.5"},
              {kExtrude, LR"("distance_mm":7,"taper_angle_deg":0.0000000001)", -1, blind},
              // Two distances read no extent.
              {kAdvanced, LR"("distance_mm":-7,"distance2_mm":-5,"both_sides":true,"extent_type":"odd")", 1,
               "428(430=128 431=5) 429(433=262144 434=7)"},
          });
}

TEST_F(ExtrudeOperation, TheTreesThatGoToTheBodyHaveNoDepth) {
  Rectangle(L"BODY", L"XY", 0, 0, 12, 12);
  Succeed(kExtrude, LR"({"sketch_name":"BODY","distance_mm":20,"both_sides":true})");
  const char* const next = "428(430=4096) 429(433=524288)";
  const char* const last = "428(430=4096) 429(433=1048576)";
  // The distance counts for its sign alone, and both sides not at all.
  ExpectTrees(
      916, {
               {kExtrude, LR"("distance_mm":1000,"both_sides":true,"operation":"cut","extent_type":"next")",
                -1, next},
               {kExtrude, LR"("distance_mm":1000,"both_sides":true,"operation":"cut","extent_type":"last")",
                -1, last},
               {kExtrude, LR"("distance_mm":1,"operation":"cut","extent_type":"through_all")", -1, last},
               {kExtrude, LR"("distance_mm":1,"operation":"cut","extent_type":"THROUGH-ALL ")", -1, last},
               {kExtrude, LR"("distance_mm":-0.001,"operation":"remove","extent_type":"last")", 1, last},
           });
}

TEST_F(ExtrudeOperation, AnswersWithTheNewNameAndEntersItIntoTheHistory) {
  auto result = Run(kExtrude, LR"({"sketch_name":"s","distance_mm":10})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Extrusion 'Extrude 1' created from 's'.");
  EXPECT_EQ(result.dataJson, LR"({"feature_name":"Extrude 1"})");
  ASSERT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(UndoStack().back().label, L"Create Extrude 1");

  result = Run(kAdvanced, LR"({"sketch_name":"S","distance_mm":20,"distance2_mm":5})");
  EXPECT_EQ(result.message, L"Advanced extrusion 'Extrude_1' created from 'S'.");
  EXPECT_EQ(result.dataJson, LR"({"feature_name":"Extrude_1"})");
  EXPECT_EQ(UndoStack().back().label, L"Create Extrude_1");
}

TEST_F(ExtrudeOperation, TheSketchIsCopiedAndCanGo) {
  Succeed(kExtrude, LR"({"sketch_name":"S","distance_mm":10})");
  DrawCircle(L"S");
  EXPECT_NEAR(Volume(), 1000, 1e-6);
  Delete(L"S");
  EXPECT_NEAR(Volume(), 1000, 1e-6);
}

TEST_F(ExtrudeOperation, CallsComeInTheirOrder) {
  const auto mark = host().journal.Mark();
  Succeed(kExtrude, LR"({"sketch_name":"S","distance_mm":10})");
  // What the visit asks of each feature, and what the rows of the tree are made of, is left out.
  EXPECT_THAT(
      CallsSince(mark, {"ProMdlCurrentGet", "ProMdlTypeGet", "ProUnitInit", "ProUnitConversionCalculate",
                        "ProSolidFeatVisit", "ProMdlToModelitem", "ProSelectionAlloc", "ProSelectionCopy",
                        "ProArrayAlloc", "ProFeatureSketchedWithOptionsCreate", "ProSolidRegenerate",
                        "ProWindowRepaint", "ProArrayFree", "ProSelectionFree", "ProElementFree",
                        "ProModelitemByNameInit", "ProModelitemNameSet"}),
      ElementsAre("ProMdlCurrentGet", "ProMdlTypeGet", "ProUnitInit", "ProUnitConversionCalculate",
                  "ProSolidFeatVisit", "ProMdlToModelitem", "ProSelectionAlloc", "ProSelectionAlloc",
                  "ProArrayAlloc", "ProSelectionCopy", "ProArrayAlloc", "ProFeatureSketchedWithOptionsCreate",
                  "ProSolidRegenerate", "ProWindowRepaint", "ProArrayFree", "ProSelectionFree",
                  "ProArrayFree", "ProSelectionFree", "ProSelectionFree", "ProElementFree",
                  "ProModelitemByNameInit", "ProModelitemNameSet", "ProSolidRegenerate"));
  EXPECT_EQ(CountCaptured(Format(L"Feature Create (sketched): status=0 errCount=0 featId=%d sketch='S'",
                                 FeatureNamed(L"Extrude 1")->id)),
            1);
}

TEST_F(ExtrudeOperation, ArgumentsAreCheckedInTheirOrder) {
  ExpectRefusals({
      {kExtrude, LR"({"distance_mm":1})", L"'sketch_name' is required."},
      {kExtrude, LR"({"sketch_name":"?","operation":"odd"})", L"'distance_mm' is required."},
      {kExtrude, LR"({"sketch_name":"?","distance_mm":null,"extent_type":"next"})",
       L"'distance_mm' is required."},
      {kExtrude, LR"({"sketch_name":"?","distance_mm":1,"operation":"odd","extent_type":"?"})",
       L"Unsupported operation 'odd'. Use 'join' or 'cut'."},
      {kExtrude, LR"({"sketch_name":"?","distance_mm":1,"extent_type":"to next"})",
       L"Invalid 'extent_type'. Valid values: 'blind', 'next', 'last'."},
      {kExtrude, LR"({"sketch_name":"RIGHT","distance_mm":1})",
       L"Sketched curve feature 'RIGHT' not found. Create/commit it with api_sketch_* first."},
      {kAdvanced, LR"({"sketch_name":"?","distance2_mm":1})", L"'distance_mm' is required."},
      {kAdvanced, LR"({"sketch_name":"?","distance_mm":1})", L"'distance2_mm' is required."},
  });
}

TEST_F(ExtrudeOperation, NumbersThatAreNotFiniteAreRefused) {
  const wchar_t* const depth = L"Failed to set extrude depth values.";
  const wchar_t* const taper = L"Failed to set extrude taper angle.";
  ExpectRefusals({
      {kExtrude, LR"({"sketch_name":"S","distance_mm":"nan"})", L"'distance_mm' is required."},
      {kExtrude, LR"({"sketch_name":"S","distance_mm":"nan","extent_type":"next"})",
       L"'distance_mm' is required."},
      {kExtrude, LR"({"sketch_name":"S","distance_mm":1e999})", depth},
      {kExtrude, LR"({"sketch_name":"S","distance_mm":"-Infinity","both_sides":true})", depth},
      {kAdvanced, LR"({"sketch_name":"S","distance_mm":5,"distance2_mm":"inf"})", depth},
      // A taper that is no number is not taken for none.
      {kExtrude, LR"({"sketch_name":"S","distance_mm":5,"taper_angle_deg":"nan"})", taper},
      {kExtrude, LR"({"sketch_name":"S","distance_mm":5,"taper_angle_deg":"-inf"})", taper},
  });
}

TEST_F(ExtrudeOperation, WhatTheHostRefusesLeavesTheModelAsItWas) {
  NewSketch(L"OPEN", L"XY");
  Draw(L"api_sketch_polyline", L"OPEN", LR"("points":[[0,0],[10,0],[10,10]])");
  Block(10, 10, 10);
  Rectangle(L"BESIDE", L"XY", 20, 0, 30, 10);
  ExpectHostRefusal(kExtrude, L"OPEN", LR"(,"distance_mm":5)");
  ExpectHostRefusal(kExtrude, L"BESIDE", LR"(,"distance_mm":5,"operation":"cut")");
  ExpectHostRefusal(kExtrude, L"BESIDE", LR"(,"distance_mm":5,"extent_type":"next")");
  ExpectHostRefusal(kExtrude, L"BESIDE", LR"(,"distance_mm":5,"extent_type":"last")");
  // A distance of 0 passes here and is the host's to judge.
  ExpectHostRefusal(kExtrude, L"S", LR"(,"distance_mm":0)");
  // The walls of the section meet before the depth is reached: 10 / 2 / tan 60° = 2.9.
  ExpectHostRefusal(kExtrude, L"S", LR"(,"distance_mm":5,"taper_angle_deg":60)");
}

TEST_F(ExtrudeOperation, EachFailingCallHasItsMessage) {
  ExpectFailures(kExtrude, LR"({"sketch_name":"S","distance_mm":10})",
                 {
                     {"ProSolidFeatVisit", 1, L"Failed to visit features (status=-8)."},
                     {"ProElementAlloc", 1, L"Failed to allocate extrude element tree."},
                     {"ProElementAlloc", 2, L"Failed to populate extrude feature type elements."},
                     {"ProElementIntegerSet", 5, L"Failed to populate extrude feature type elements."},
                     {"ProElemtreeElementAdd", 6, L"Failed to add extrude section element."},
                     {"ProElementIntegerSet", 6, L"Failed to set extrude direction."},
                     {"ProElementAlloc", 9, L"Failed to build extrude depth compound."},
                     {"ProElemtreeElementAdd", 10, L"Failed to build extrude depth compound."},
                     {"ProElementIntegerSet", 7, L"Failed to set extrude depth values."},
                     {"ProElementDoubleSet", 1, L"Failed to set extrude depth values."},
                     {"ProElementAlloc", 15, L"Failed to add extrude draft compound."},
                     {"ProElementIntegerSet", 9, L"Failed to set extrude draft option."},
                     {"ProMdlToModelitem", 1, L"Failed to select the active part for feature creation."},
                     {"ProSelectionAlloc", 1, L"Failed to select the active part for feature creation."},
                     {"ProSelectionAlloc", 2, L"Failed to select the sketched curve feature."},
                     {"ProArrayAlloc", 1, L"Failed to build sketch selection array."},
                     {"ProSelectionCopy", 1, L"Failed to build sketch selection array."},
                     {"ProArrayAlloc", 2, L"Failed to allocate feature create options."},
                     {"ProFeatureSketchedWithOptionsCreate", 1,
                      L"Creo could not create the feature from sketch 'S' (status=-8, errors=0)."},
                 });
  ExpectFailures(kExtrude, LR"({"sketch_name":"S","distance_mm":10,"taper_angle_deg":1})",
                 {{"ProElementIntegerSet", 9, L"Failed to set extrude taper angle."},
                  {"ProElementDoubleSet", 2, L"Failed to set extrude taper angle."}});
}

}  // namespace
}  // namespace vek::support
