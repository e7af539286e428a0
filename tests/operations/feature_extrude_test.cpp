// The extrude operations: arguments, element tree, order of calls, failures.
#include <gmock/gmock.h>

#include "addin/ops/feature/extrude_revolve.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class ExtrudeOperation : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    NewPart();
    Rectangle(L"S", L"XY", 0, 0, 10, 10);
    ClearHistory();
  }

  // The tree of the extrusion that these arguments make of the sketch; empty when they make none.
  std::vector<std::string> TreeOf(const wchar_t* operation, const std::wstring& arguments) {
    const auto data = Succeed(operation, L"{\"sketch_name\":\"S\"," + arguments + L"}");
    if (!data.is_object()) return {};
    const std::wstring name = DecodeUtf8(data.value("feature_name", ""));
    const bench::Feature* feature = FeatureNamed(name);
    std::vector<std::string> rows = feature != nullptr ? RowsOf(*feature) : std::vector<std::string>();
    Succeed(L"api_feature_delete", Format(LR"({"feature_name":"%s"})", name));
    return rows;
  }
};

// The rows of a tree whose depth and draft rows are those given.
std::vector<std::string> Tree(int removal, int direction, const std::vector<std::string>& depth,
                              const std::vector<std::string>& draft = {"386/5096/5097=-1"}) {
  std::vector<std::string> rows{"386",
                                "386/387=917",
                                "386/388=1",
                                "386/1956=917",
                                "386/2023=" + std::to_string(removal),
                                "386/3176=0",
                                "386/447",
                                "386/436=" + std::to_string(direction),
                                "386/515"};
  rows.insert(rows.end(), depth.begin(), depth.end());
  rows.push_back("386/5096");
  rows.insert(rows.end(), draft.begin(), draft.end());
  return rows;
}

std::vector<std::string> Blind(const char* depth) {
  return {"386/515/428", "386/515/428/430=4096", "386/515/429", "386/515/429/433=262144",
          std::string("386/515/429/434=") + depth};
}

TEST_F(ExtrudeOperation, TheTreeFollowsTheArguments) {
  const std::vector<std::string> symmetric{"386/515/428", "386/515/428/430=4096", "386/515/429",
                                           "386/515/429/433=268435456", "386/515/429/434=10"};
  const struct {
    const wchar_t* arguments;
    std::vector<std::string> rows;
  } cases[] = {
      {L"\"distance_mm\":7", Tree(-1, -1, Blind("7"))},
      {L"\"distance_mm\":\"7\"", Tree(-1, -1, Blind("7"))},
      {L"\"distance_mm\":-7,\"extent_type\":\"\"", Tree(-1, 1, Blind("7"))},
      {L"\"distance_mm\":-7,\"extent_type\":\" Blind \",\"operation\":\"newbody\"", Tree(-1, 1, Blind("7"))},
      {L"\"distance_mm\":10,\"both_sides\":true", Tree(-1, -1, symmetric)},
      {L"\"distance_mm\":-10,\"both_sides\":1", Tree(-1, -1, symmetric)},
      {L"\"distance_mm\":7,\"taper_angle_deg\":-2.5",
       Tree(-1, -1, Blind("7"), {"386/5096/5097=80", "386/5096/5098=-2.5"})},
      {L"\"distance_mm\":7,\"taper_angle_deg\":0.0000000001", Tree(-1, -1, Blind("7"))},
  };
  for (const auto& [arguments, rows] : cases)
    EXPECT_THAT(TreeOf(L"api_feature_extrude", arguments), ElementsAreArray(rows)) << EncodeUtf8(arguments);
}

TEST_F(ExtrudeOperation, TheTreeOfTwoDistancesReadsNoExtent) {
  EXPECT_THAT(TreeOf(L"api_feature_extrude_advanced",
                     L"\"distance_mm\":-7,\"distance2_mm\":-5,\"both_sides\":true,\"extent_type\":\"odd\""),
              ElementsAreArray(Tree(-1, 1,
                                    {"386/515/428", "386/515/428/430=128", "386/515/428/431=5", "386/515/429",
                                     "386/515/429/433=262144", "386/515/429/434=7"})));
}

TEST_F(ExtrudeOperation, TheTreesThatGoToTheBodyHaveNoDepth) {
  Block(12, 12, 10);
  const auto to = [](const char* type) {
    return std::vector<std::string>{"386/515/428", "386/515/428/430=4096", "386/515/429",
                                    std::string("386/515/429/433=") + type};
  };
  const struct {
    const wchar_t* extent;
    std::vector<std::string> rows;
  } cases[] = {
      {L"next", to("524288")},
      {L"last", to("1048576")},
      {L"through_all", to("1048576")},
      {L"THROUGH-ALL ", to("1048576")},
  };
  for (const auto& [extent, rows] : cases) {
    // The distance counts for its sign alone, and both sides not at all.
    EXPECT_THAT(TreeOf(L"api_feature_extrude",
                       Format(LR"("distance_mm":1000,"both_sides":true,"operation":"cut","extent_type":"%s")",
                              extent)),
                ElementsAreArray(Tree(916, -1, rows)))
        << EncodeUtf8(extent);
  }
  Rectangle(L"BELOW", L"XY", 0, 0, 12, 12);
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"BELOW","distance_mm":-10})");
  EXPECT_THAT(
      TreeOf(L"api_feature_extrude", LR"("distance_mm":-0.001,"operation":"remove","extent_type":"last")"),
      ElementsAreArray(Tree(916, 1, to("1048576"))));
}

TEST_F(ExtrudeOperation, AnUnknownDepthModeIsBuiltAsBlind) {
  feature::ExtrudeRecipe recipe;
  recipe.depth_mode = 5;
  recipe.depth1 = 3;
  const auto mark = host().journal.Mark();
  EXPECT_TRUE(feature::ExtrudeTree(recipe).ok());
  std::vector<std::string> allocated;
  for (const auto& entry : host().journal.Since(mark))
    if (entry.name == "ProElementAlloc") allocated.push_back(entry.arguments);
  EXPECT_THAT(allocated, ElementsAre("386", "387", "388", "1956", "2023", "3176", "447", "436", "515", "428",
                                     "429", "430", "433", "434", "5096", "5097"));
}

TEST_F(ExtrudeOperation, RowsComeInTheOrderOfTheirTable) {
  feature::ExtrudeRecipe recipe;
  recipe.depth_mode = feature::kTwoDistances;
  recipe.taper_deg = 1;
  const auto mark = host().journal.Mark();
  {
    const auto tree = feature::ExtrudeTree(recipe);
    EXPECT_TRUE(tree.ok());
  }
  std::vector<std::string> allocated;
  for (const auto& entry : host().journal.Since(mark))
    if (entry.name == "ProElementAlloc") allocated.push_back(entry.arguments);
  EXPECT_THAT(allocated, ElementsAre("386", "387", "388", "1956", "2023", "3176", "447", "436", "515", "428",
                                     "429", "430", "431", "433", "434", "5096", "5097", "5098"));
}

TEST_F(ExtrudeOperation, DepthsAreInModelUnits) {
  Current().length_unit = bench::LengthUnit::kInch;
  EXPECT_THAT(TreeOf(L"api_feature_extrude", L"\"distance_mm\":50.8"),
              ElementsAreArray(Tree(-1, -1, Blind("2"))));
}

TEST_F(ExtrudeOperation, AnswersWithTheNewNameAndEntersItIntoTheHistory) {
  auto result = Run(L"api_feature_extrude", LR"({"sketch_name":"s","distance_mm":10})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Extrusion 'Extrude 1' created from 's'.");
  EXPECT_EQ(result.dataJson, LR"({"feature_name":"Extrude 1"})");
  ASSERT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(UndoStack().back().label, L"Create Extrude 1");
  EXPECT_NE(FeatureNamed(L"Extrude 1"), nullptr);

  result = Run(L"api_feature_extrude_advanced", LR"({"sketch_name":"S","distance_mm":20,"distance2_mm":5})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Advanced extrusion 'Extrude_1' created from 'S'.");
  EXPECT_EQ(result.dataJson, LR"({"feature_name":"Extrude_1"})");
  EXPECT_EQ(UndoStack().back().label, L"Create Extrude_1");
}

TEST_F(ExtrudeOperation, TheSketchIsCopiedAndCanGo) {
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})");
  Circle(L"S", 5, 5, 2);
  EXPECT_NEAR(Volume(), 1000, 1e-6);
  Succeed(L"api_feature_delete", LR"({"feature_name":"S"})");
  EXPECT_NEAR(Volume(), 1000, 1e-6);
}

TEST_F(ExtrudeOperation, CallsComeInTheirOrder) {
  const auto mark = host().journal.Mark();
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})");
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
  const struct {
    const wchar_t* operation;
    const wchar_t* arguments;
    const wchar_t* message;
  } cases[] = {
      {L"api_feature_extrude", L"{\"distance_mm\":1}", L"'sketch_name' is required."},
      {L"api_feature_extrude", L"{\"sketch_name\":\"\",\"distance_mm\":1}", L"'sketch_name' is required."},
      {L"api_feature_extrude", L"{\"sketch_name\":\"?\",\"operation\":\"odd\"}",
       L"'distance_mm' is required."},
      {L"api_feature_extrude", L"{\"sketch_name\":\"?\",\"distance_mm\":null,\"extent_type\":\"next\"}",
       L"'distance_mm' is required."},
      {L"api_feature_extrude",
       L"{\"sketch_name\":\"?\",\"distance_mm\":1,\"operation\":\"odd\",\"extent_type\":\"?\"}",
       L"Unsupported operation 'odd'. Use 'join' or 'cut'."},
      {L"api_feature_extrude", L"{\"sketch_name\":\"?\",\"distance_mm\":1,\"extent_type\":\"to next\"}",
       L"Invalid 'extent_type'. Valid values: 'blind', 'next', 'last'."},
      {L"api_feature_extrude", L"{\"sketch_name\":\"RIGHT\",\"distance_mm\":1}",
       L"Sketched curve feature 'RIGHT' not found. Create/commit it with api_sketch_* first."},
      {L"api_feature_extrude_advanced", L"{\"sketch_name\":\"?\",\"distance2_mm\":1}",
       L"'distance_mm' is required."},
      {L"api_feature_extrude_advanced",
       L"{\"sketch_name\":\"?\",\"distance_mm\":1,\"operation\":\"intersect\"}",
       L"Creo feature operations do not support operation='intersect'. Use 'join' or 'cut'."},
      {L"api_feature_extrude_advanced", L"{\"sketch_name\":\"?\",\"distance_mm\":1}",
       L"'distance2_mm' is required."},
      {L"api_feature_extrude_advanced", L"{\"sketch_name\":\"?\",\"distance_mm\":1,\"distance2_mm\":1}",
       L"Sketched curve feature '?' not found. Create/commit it with api_sketch_* first."},
  };
  const ModelState before = State();
  for (const auto& [operation, arguments, message] : cases) ExpectFailure(operation, arguments, message);
  EXPECT_EQ(State(), before);
}

TEST_F(ExtrudeOperation, WhatTheHostRefusesLeavesTheModelAsItWas) {
  NewSketch(L"OPEN", L"XY");
  Line(L"OPEN", 0, 0, 10, 0);
  Line(L"OPEN", 10, 0, 10, 10);
  Block(10, 10, 10);
  Rectangle(L"BESIDE", L"XY", 20, 0, 30, 10);
  const struct {
    const wchar_t* sketch;
    const wchar_t* arguments;
  } cases[] = {
      {L"OPEN", L"\"distance_mm\":5"},
      {L"BESIDE", L"\"distance_mm\":5,\"operation\":\"cut\""},
      {L"BESIDE", L"\"distance_mm\":5,\"extent_type\":\"next\""},
      {L"BESIDE", L"\"distance_mm\":5,\"extent_type\":\"last\""},
      // A distance of 0 passes here and is the host's to judge.
      {L"S", L"\"distance_mm\":0"},
      {L"S", L"\"distance_mm\":5,\"taper_angle_deg\":90"},
      // The walls of the section meet before the depth is reached: 10 / 2 / tan 60° = 2.9.
      {L"S", L"\"distance_mm\":5,\"taper_angle_deg\":60"},
  };
  const ModelState before = State();
  for (const auto& [sketch, arguments] : cases) {
    SCOPED_TRACE(EncodeUtf8(sketch) + " " + EncodeUtf8(arguments));
    ExpectFailureStart(Run(L"api_feature_extrude", Format(LR"({"sketch_name":"%s",%s})", sketch, arguments)),
                       Format(L"Creo could not create the feature from sketch '%s' (status=-", sketch));
    EXPECT_EQ(State(), before);
  }
}

TEST_F(ExtrudeOperation, TheHostsErrorsAreCounted) {
  NewSketch(L"OPEN", L"XY");
  Line(L"OPEN", 0, 0, 10, 0);
  const auto result = Run(L"api_feature_extrude", LR"({"sketch_name":"open","distance_mm":5})");
  // One refusal makes one error. Nothing was made, so the id is that of no feature.
  EXPECT_TRUE(result.message.ends_with(L", errors=1).")) << EncodeUtf8(result.message);
  const std::size_t from = result.message.find(L"status=");
  const std::wstring status = result.message.substr(from, result.message.find(L',') - from);
  EXPECT_EQ(CountCaptured(Format(L"Feature Create (sketched): %s errCount=1 featId=0 sketch='OPEN'", status)),
            1);
}

TEST_F(ExtrudeOperation, NumbersThatAreNotFiniteAreRefused) {
  const struct {
    const wchar_t* operation;
    const wchar_t* arguments;
    const wchar_t* message;
  } cases[] = {
      {L"api_feature_extrude", L"\"distance_mm\":\"nan\"", L"Failed to set extrude depth values."},
      {L"api_feature_extrude", L"\"distance_mm\":NaN", L"Failed to set extrude depth values."},
      {L"api_feature_extrude", L"\"distance_mm\":\"inf\"", L"Failed to set extrude depth values."},
      {L"api_feature_extrude", L"\"distance_mm\":\"-Infinity\",\"both_sides\":true",
       L"Failed to set extrude depth values."},
      {L"api_feature_extrude", L"\"distance_mm\":1e999", L"Failed to set extrude depth values."},
      {L"api_feature_extrude_advanced", L"\"distance_mm\":\"nan\",\"distance2_mm\":5",
       L"Failed to set extrude depth values."},
      {L"api_feature_extrude_advanced", L"\"distance_mm\":5,\"distance2_mm\":\"inf\"",
       L"Failed to set extrude depth values."},
      // A taper that is no number is not taken for none.
      {L"api_feature_extrude", L"\"distance_mm\":5,\"taper_angle_deg\":\"nan\"",
       L"Failed to set extrude taper angle."},
      {L"api_feature_extrude", L"\"distance_mm\":5,\"taper_angle_deg\":\"-inf\"",
       L"Failed to set extrude taper angle."},
      {L"api_feature_extrude_advanced", L"\"distance_mm\":5,\"distance2_mm\":5,\"taper_angle_deg\":\"nan\"",
       L"Failed to set extrude taper angle."},
  };
  const ModelState before = State();
  for (const auto& [operation, arguments, message] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    ExpectFailure(operation, Format(LR"({"sketch_name":"S",%s})", arguments), message);
    EXPECT_EQ(State(), before);
  }
}

TEST_F(ExtrudeOperation, EachFailingCallHasItsMessage) {
  const struct {
    const char* call;
    int occurrence;
    const wchar_t* message;
  } cases[] = {
      {"ProSolidFeatVisit", 1, L"Failed to visit features (status=-10)."},
      {"ProElementAlloc", 1, L"Failed to allocate extrude element tree."},
      {"ProElementAlloc", 2, L"Failed to populate extrude feature type elements."},
      {"ProElementIntegerSet", 5, L"Failed to populate extrude feature type elements."},
      {"ProElementAlloc", 7, L"Failed to add extrude section element."},
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
       L"Creo could not create the feature from sketch 'S' (status=-10, errors=0)."},
  };
  const ModelState before = State();
  for (const auto& [call, occurrence, message] : cases) {
    SCOPED_TRACE(std::string(call) + " " + std::to_string(occurrence));
    faults().Clear();
    faults().Fail(call, PRO_TK_OUT_OF_MEMORY, occurrence);
    ExpectFailure(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})", message);
    EXPECT_EQ(State(), before);
  }
  const std::pair<const char*, int> taper_calls[] = {{"ProElementIntegerSet", 9}, {"ProElementDoubleSet", 2}};
  for (const auto& [call, occurrence] : taper_calls) {
    faults().Clear();
    faults().Fail(call, PRO_TK_OUT_OF_MEMORY, occurrence);
    ExpectFailure(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10,"taper_angle_deg":1})",
                  L"Failed to set extrude taper angle.");
  }
}

}  // namespace
}  // namespace vek::support
