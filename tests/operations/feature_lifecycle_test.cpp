// Deleting, suppressing and resuming features.
#include <gmock/gmock.h>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

// A block of 10 × 10 × 10 with a column of 2 × 2 × 5 on its side: 1000 + 20 mm³.
class FeatureLifecycle : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    Block(10, 10, 10);
    Rectangle(L"COLUMN", L"XY", 10, 0, 12, 2);
    Succeed(L"api_feature_extrude", LR"({"sketch_name":"COLUMN","distance_mm":5})");
    ASSERT_NE(FeatureNamed(L"Extrude_1"), nullptr);
    ASSERT_NEAR(Volume(), 1020, 1e-6);
    ClearHistory();
  }
};

TEST_F(FeatureLifecycle, ADeletedFeatureIsGoneWithItsGeometryAndLeavesNoHistory) {
  const auto mark = host().journal.Mark();
  const auto result = Run(L"api_feature_delete", LR"({"feature_name":"extrude_1"})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Deleted feature 'extrude_1'.");
  EXPECT_EQ(result.dataJson, L"null");
  EXPECT_THAT(CallsSince(mark, {"ProArrayAlloc", "ProArrayObjectAdd", "ProFeatureWithoptionsDelete",
                                "ProWindowRepaint", "ProArrayFree"}),
              ElementsAre("ProArrayAlloc", "ProArrayObjectAdd", "ProArrayAlloc", "ProArrayObjectAdd",
                          "ProFeatureWithoptionsDelete", "ProWindowRepaint", "ProArrayFree", "ProArrayFree"));
  EXPECT_EQ(FeatureNamed(L"Extrude_1"), nullptr);
  EXPECT_NEAR(Volume(), 1000, 1e-6);
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(FeatureLifecycle, SuppressingAndResumingTakesTheGeometryAwayAndBack) {
  const struct {
    const wchar_t* operation;
    const wchar_t* name;
    const wchar_t* message;
    double volume;
    std::vector<std::wstring> history;
  } steps[] = {
      {L"api_feature_suppress",
       L"EXTRUDE_1",
       L"Suppressed feature 'EXTRUDE_1'.",
       1000,
       {L"Suppress EXTRUDE_1"}},
      // Once more is a success that does nothing and leaves no history.
      {L"api_feature_suppress", L"extrude_1", L"Feature 'extrude_1' is already suppressed.", 1000, {}},
      {L"api_feature_unsuppress",
       L"extrude_1",
       L"Unsuppressed feature 'extrude_1'.",
       1020,
       {L"Unsuppress extrude_1"}},
      {L"api_feature_unsuppress", L"Extrude_1", L"Feature 'Extrude_1' is already active.", 1020, {}},
  };
  for (const auto& [operation, name, message, volume, history] : steps) {
    ClearHistory();
    const auto mark = host().journal.Mark();
    const auto result = Run(operation, Format(LR"({"feature_name":"%s"})", name));
    EXPECT_TRUE(result.success);
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
    EXPECT_EQ(result.dataJson, L"null");
    EXPECT_NEAR(Volume(), volume, 1e-6);
    std::vector<std::wstring> labels;
    for (const auto& step : UndoStack()) labels.push_back(step.label);
    EXPECT_EQ(labels, history);
    EXPECT_EQ(CallsSince(mark, {"ProFeatureWithoptionsSuppress", "ProFeatureWithoptionsResume"}).size(),
              history.size());
  }
}

TEST_F(FeatureLifecycle, ANameIsRequiredAndMustBeKnown) {
  const wchar_t* const unknown =
      L"Feature 'Extrude 9' not found. Call api_feature_list and use an exact name.";
  for (const wchar_t* operation : {L"api_feature_delete", L"api_feature_suppress", L"api_feature_unsuppress"})
    ExpectRefusals({{operation, LR"({"feature_name":7})", L"'feature_name' is required."},
                    {operation, LR"({"feature_name":"Extrude 9"})", unknown}});
}

TEST_F(FeatureLifecycle, EachFailingCallHasItsMessageAndChangesNothing) {
  const std::wstring column = LR"({"feature_name":"Extrude_1"})";
  const wchar_t* const ids = L"Failed to allocate feature id array.";
  ExpectFailures(L"api_feature_delete", column,
                 {{"ProArrayAlloc", 1, ids},
                  {"ProArrayObjectAdd", 1, ids},
                  {"ProArrayAlloc", 2, L"Failed to allocate feature delete options."},
                  {"ProArrayObjectAdd", 2, L"Failed to allocate feature delete options."},
                  {"ProFeatureWithoptionsDelete", 1, L"Failed to delete feature 'Extrude_1' (status=-8)."}});
  ExpectFailures(
      L"api_feature_suppress", column,
      {{"ProArrayAlloc", 1, ids},
       {"ProArrayObjectAdd", 2, L"Failed to allocate suppress options."},
       {"ProFeatureWithoptionsSuppress", 1, L"Failed to suppress feature 'Extrude_1' (status=-8)."}});
  faults().Clear();
  Succeed(L"api_feature_suppress", column);
  ExpectFailures(
      L"api_feature_unsuppress", column,
      {{"ProArrayObjectAdd", 1, ids},
       {"ProArrayAlloc", 2, L"Failed to allocate resume options."},
       {"ProFeatureWithoptionsResume", 1, L"Failed to unsuppress feature 'Extrude_1' (status=-8)."}});
}

}  // namespace
}  // namespace vek::support
