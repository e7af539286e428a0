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

TEST_F(History, LabelsEachKindInItsOwnWordsAndTakesNoneWhileItReplays) {
  const std::pair<std::function<void()>, const wchar_t*> cases[] = {
      {[] { PushCreateFeature(L"A"); }, L"Create A"},
      {[] { PushSuppress(L"A", true); }, L"Suppress A"},
      {[] { PushSuppress(L"A", false); }, L"Unsuppress A"},
      {[] { PushSuppressOccurrence(L"A", true); }, L"Suppress occurrence A"},
      {[] { PushSuppressOccurrence(L"A", false); }, L"Unsuppress occurrence A"},
      {[] { PushSetParameter(L"A", L"", L"2"); }, L"Set A"},
      {[] { PushCreateSketch(L"{}", L"A"); }, L"Create sketch A"},
      {[] { PushDrawEntity(L"op", L"", L"A", L"L:1;L:2"); }, L"Draw L:1;L:2 in A"},
  };
  for (const auto& [push, label] : cases) {
    ClearHistory();
    push();
    HistoryReplaying = true;
    push();
    HistoryReplaying = false;
    ASSERT_EQ(UndoStack().size(), 1u) << label;
    EXPECT_EQ(UndoStack().back().label, label);
    EXPECT_EQ(UndoStack().back().target, L"A");
  }
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
