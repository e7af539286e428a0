// Deleting, suppressing and resuming features.
#include <gmock/gmock.h>

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
    NewPart();
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
  auto result = Run(L"api_feature_suppress", LR"({"feature_name":"EXTRUDE_1"})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Suppressed feature 'EXTRUDE_1'.");
  EXPECT_EQ(result.dataJson, L"null");
  EXPECT_NEAR(Volume(), 1000, 1e-6);
  ASSERT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(UndoStack().back().label, L"Suppress EXTRUDE_1");

  // Once more is a success that does nothing and leaves no history.
  const auto mark = host().journal.Mark();
  result = Run(L"api_feature_suppress", LR"({"feature_name":"extrude_1"})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Feature 'extrude_1' is already suppressed.");
  EXPECT_THAT(CallsSince(mark, {"ProArrayAlloc", "ProFeatureWithoptionsSuppress"}), ElementsAre());
  EXPECT_EQ(UndoStack().size(), 1u);

  result = Run(L"api_feature_unsuppress", LR"({"feature_name":"extrude_1"})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Unsuppressed feature 'extrude_1'.");
  EXPECT_EQ(result.dataJson, L"null");
  EXPECT_NEAR(Volume(), 1020, 1e-6);
  ASSERT_EQ(UndoStack().size(), 2u);
  EXPECT_EQ(UndoStack().back().label, L"Unsuppress extrude_1");

  result = Run(L"api_feature_unsuppress", LR"({"feature_name":"Extrude_1"})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Feature 'Extrude_1' is already active.");
  EXPECT_EQ(UndoStack().size(), 2u);
}

TEST_F(FeatureLifecycle, AnUnknownNameChangesNothing) {
  const ModelState before = State();
  for (const wchar_t* operation : {L"api_feature_delete", L"api_feature_suppress", L"api_feature_unsuppress"})
    ExpectFailure(operation, LR"({"feature_name":"Extrude 9"})",
                  L"Feature 'Extrude 9' not found. Call api_feature_list and use an exact name.");
  EXPECT_EQ(State(), before);
}

TEST_F(FeatureLifecycle, EachFailingCallHasItsMessageAndChangesNothing) {
  const struct {
    const wchar_t* operation;
    const char* call;
    int occurrence;
    const wchar_t* message;
  } cases[] = {
      {L"api_feature_delete", "ProArrayAlloc", 1, L"Failed to allocate feature id array."},
      {L"api_feature_delete", "ProArrayObjectAdd", 1, L"Failed to allocate feature id array."},
      {L"api_feature_delete", "ProArrayAlloc", 2, L"Failed to allocate feature delete options."},
      {L"api_feature_delete", "ProArrayObjectAdd", 2, L"Failed to allocate feature delete options."},
      {L"api_feature_delete", "ProFeatureWithoptionsDelete", 1,
       L"Failed to delete feature 'Extrude_1' (status=-8)."},
      {L"api_feature_suppress", "ProArrayAlloc", 1, L"Failed to allocate feature id array."},
      {L"api_feature_suppress", "ProArrayObjectAdd", 2, L"Failed to allocate suppress options."},
      {L"api_feature_suppress", "ProFeatureWithoptionsSuppress", 1,
       L"Failed to suppress feature 'Extrude_1' (status=-8)."},
      {L"api_feature_unsuppress", "ProArrayObjectAdd", 1, L"Failed to allocate feature id array."},
      {L"api_feature_unsuppress", "ProArrayAlloc", 2, L"Failed to allocate resume options."},
      {L"api_feature_unsuppress", "ProFeatureWithoptionsResume", 1,
       L"Failed to unsuppress feature 'Extrude_1' (status=-8)."},
  };
  for (const auto& [operation, call, occurrence, message] : cases) {
    const std::wstring arguments = LR"({"feature_name":"Extrude_1"})";
    if (operation == std::wstring(L"api_feature_unsuppress")) Run(L"api_feature_suppress", arguments);
    const ModelState before = State();
    faults().Fail(call, PRO_TK_BAD_CONTEXT, occurrence);
    ExpectFailure(operation, arguments, message);
    EXPECT_EQ(State(), before) << call;
  }
}

}  // namespace
}  // namespace vek::support
