#include <gtest/gtest.h>

#include <functional>

#include "addin/ops/common/history.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

class History : public support::OperationTest {
 protected:
  void PushFeatures(int first, int last) {
    for (int i = first; i <= last; ++i) PushCreateFeature(L"F" + std::to_wstring(i));
  }
};

TEST_F(History, LabelsEachKindInItsOwnWords) {
  const struct {
    std::function<void()> push;
    int kind;
    const wchar_t* label;
    const wchar_t* target;
    bool flag;
  } cases[] = {
      {[] { PushCreateFeature(L"A"); }, 0, L"Create A", L"A", false},
      {[] { PushSuppress(L"A", true); }, 1, L"Suppress A", L"A", true},
      {[] { PushSuppress(L"A", false); }, 1, L"Unsuppress A", L"A", false},
      {[] { PushSuppressOccurrence(L"A", true); }, 2, L"Suppress occurrence A", L"A", true},
      {[] { PushSuppressOccurrence(L"A", false); }, 2, L"Unsuppress occurrence A", L"A", false},
      {[] { PushSetParameter(L"A", L"", L"2"); }, 3, L"Set A", L"A", false},
      {[] {
         PushMove(L"A", {1, 2, 3}, {4, 5, 6});
       },
       4, L"Move A", L"A", false},
      {[] { PushCreateSketch(L"{}", L"A"); }, 5, L"Create sketch A", L"A", false},
      {[] { PushDrawEntity(L"op", L"", L"A", L"L:1;L:2"); }, 6, L"Draw L:1;L:2 in A", L"A", false},
  };
  for (const auto& each : cases) {
    ClearHistory();
    each.push();
    ASSERT_EQ(UndoStack().size(), 1u) << each.label;
    const HistoryEntry& entry = UndoStack().back();
    EXPECT_EQ(static_cast<int>(entry.kind), each.kind);
    EXPECT_EQ(entry.label, each.label);
    EXPECT_EQ(entry.target, each.target);
    EXPECT_EQ(entry.flag, each.flag) << each.label;
  }
}

TEST_F(History, KeepsWhatAStepNeedsToBeReversed) {
  PushSetParameter(L"A", L"1", L"2");
  EXPECT_EQ(UndoStack().back().before_text, L"1");
  EXPECT_EQ(UndoStack().back().after_text, L"2");

  PushMove(L"A", {1, 2, 3}, {4, 5, 6});
  const HistoryEntry& move = UndoStack().back();
  EXPECT_EQ((std::vector{move.from_x, move.from_y, move.from_z, move.to_x, move.to_y, move.to_z}),
            (std::vector<double>{1, 2, 3, 4, 5, 6}));

  PushCreateSketch(L"{\"plane\":\"XY\"}", L"A");
  EXPECT_EQ(UndoStack().back().operation, L"api_sketch_create");
  EXPECT_EQ(UndoStack().back().arguments, L"{\"plane\":\"XY\"}");

  PushDrawEntity(L"api_sketch_point", L"{\"x\":1}", L"A", L"P:2");
  EXPECT_EQ(UndoStack().back().operation, L"api_sketch_point");
  EXPECT_EQ(UndoStack().back().arguments, L"{\"x\":1}");
  EXPECT_EQ(UndoStack().back().entity, L"P:2");
}

TEST_F(History, TakesNoStepThatLacksWhatItNeeds) {
  PushCreateFeature(L"");
  PushSuppress(L"", true);
  PushSuppressOccurrence(L"", true);
  PushSetParameter(L"", L"1", L"2");
  PushSetParameter(L"A", L"1", L"");
  PushMove(L"", {1, 2, 3}, {4, 5, 6});
  PushCreateSketch(L"", L"A");
  PushCreateSketch(L"{}", L"");
  PushDrawEntity(L"", L"{}", L"A", L"L:1");
  PushDrawEntity(L"op", L"{}", L"", L"L:1");
  PushDrawEntity(L"op", L"{}", L"A", L"");
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(History, TakesNothingWhileItReplays) {
  RedoStack().push_back({});
  HistoryReplaying = true;
  PushCreateFeature(L"A");
  PushSuppress(L"A", true);
  PushSuppressOccurrence(L"A", true);
  PushSetParameter(L"A", L"1", L"2");
  PushMove(L"A", {1, 2, 3}, {4, 5, 6});
  PushCreateSketch(L"{}", L"A");
  PushDrawEntity(L"op", L"{}", L"A", L"L:1");
  EXPECT_TRUE(UndoStack().empty());
  EXPECT_EQ(RedoStack().size(), 1u);
}

TEST_F(History, HoldsTenStepsAndEndsTheRedoChain) {
  RedoStack().push_back({});
  PushFeatures(1, 11);
  ASSERT_EQ(UndoStack().size(), 10u);
  EXPECT_EQ(UndoStack().front().target, L"F2");
  EXPECT_EQ(UndoStack().back().target, L"F11");
  EXPECT_TRUE(RedoStack().empty());
}

TEST_F(History, ListsTheNewestLabelsFirst) {
  NewPart();
  PushFeatures(1, 5);
  HistoryEntry redo;
  redo.label = L"Create \"R\"";
  RedoStack().push_back(redo);

  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {LR"({"count":2})", LR"({"undo":["Create F5","Create F4"]})"},
      {LR"({"count":2.5})", LR"({"undo":["Create F5","Create F4","Create F3"]})"},
      {LR"({"count":1,"stack":" Both "})", LR"({"undo":["Create F5"],"redo":["Create \"R\""]})"},
      {LR"({"stack":"redo"})", LR"({"redo":["Create \"R\""]})"},
      {LR"({"stack":""})", LR"({"undo":["Create F5","Create F4","Create F3","Create F2","Create F1"]})"},
  };
  for (const auto& [arguments, data] : cases) {
    const auto result = Run(L"api_document_get_history", arguments);
    EXPECT_TRUE(result.success);
    EXPECT_EQ(result.dataJson, data);
    EXPECT_EQ(result.message,
              L"Vek session history (feature creates, suppress toggles, parameter sets, assembly moves).");
  }
  ClearHistory();
  EXPECT_EQ(Run(L"api_document_get_history", LR"({"stack":"both"})").dataJson, LR"({"undo":[],"redo":[]})");
}

TEST_F(History, RefusesWrongCountsAndStacks) {
  const std::wstring get = L"api_document_get_history";
  ExpectFailure(get, L"{}", L"No active document.");
  NewPart();
  for (const wchar_t* count : {L"0", L"0.4", L"-3", L"\"nan\"", L"\"-inf\""})
    ExpectFailure(get, std::wstring(L"{\"count\":") + count + L"}", L"'count' must be at least 1.");
  for (const wchar_t* count : {L"11", L"10.5", L"1e300", L"\"inf\""})
    ExpectFailure(get, std::wstring(L"{\"count\":") + count + L"}", L"'count' must be between 1 and 10.");
  for (const wchar_t* stack : {L"all", L" "})
    ExpectFailure(get, std::wstring(L"{\"stack\":\"") + stack + L"\"}",
                  L"'stack' must be \"undo\", \"redo\", or \"both\".");
  EXPECT_TRUE(Run(get, L"{\"count\":10.4}").success);
}

}  // namespace
}  // namespace vek
