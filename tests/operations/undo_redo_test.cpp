// The session's history: what it holds and tells; walking it: each kind of step reversed and done again, and
// walks that end early.
#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

#include "addin/ops/common/history.h"
#include "addin/text/format.h"
#include "tests/operations/sketch_fixture.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kUndo = L"api_document_undo";
constexpr const wchar_t* kRedo = L"api_document_redo";

class History : public OperationTest {
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
  for (const auto& [arguments, data] : cases)
    ExpectAnswer(L"api_document_get_history", arguments,
                 L"Vek session history (feature creates, suppress toggles, parameter sets, assembly moves).",
                 data);
}

TEST_F(History, RefusesWrongCountsAndStacks) {
  const std::wstring get = L"api_document_get_history";
  NewPart();
  for (const wchar_t* count : {L"0", L"0.4", L"-3", L"\"nan\"", L"\"-inf\""})
    ExpectFailure(get, std::wstring(L"{\"count\":") + count + L"}", L"'count' must be at least 1.");
  for (const wchar_t* count : {L"11", L"10.5", L"1e300", L"\"inf\""})
    ExpectFailure(get, std::wstring(L"{\"count\":") + count + L"}", L"'count' must be between 1 and 10.");
  for (const wchar_t* stack : {L"all", L" "})
    ExpectFailure(get, std::wstring(L"{\"stack\":\"") + stack + L"\"}",
                  L"'stack' must be \"undo\", \"redo\", or \"both\".");
  ExpectFailure(kUndo, L"{}", L"No Vek undo steps available.");
  ExpectFailure(kRedo, L"{}", L"No Vek redo steps available.");
  for (const wchar_t* operation : {kUndo, kRedo}) {
    ExpectFailure(operation, LR"({"count":0})", L"'count' must be at least 1.");
    ExpectFailure(operation, LR"({"count":11})", L"'count' must be between 1 and 10.");
  }
  EXPECT_TRUE(Run(get, L"{\"count\":10.4}").success);
}

class UndoRedo : public SketchTest {
 protected:
  void SetUp() override {
    SketchTest::SetUp();
    NewPart();
  }

  void Walk(const wchar_t* operation, int count = 1) {
    ExpectAnswer(operation, Format(LR"({"count":%d})", count),
                 Format(L"%d %s step(s) applied.", count, operation == kUndo ? L"undo" : L"redo"),
                 Format(LR"({"applied":%d,"requested":%d})", count, count));
  }

  static std::vector<std::wstring> Labels(const std::deque<HistoryEntry>& stack) {
    std::vector<std::wstring> labels;
    for (const HistoryEntry& entry : stack) labels.push_back(entry.label);
    return labels;
  }

  static HistoryEntry Entry(HistoryKind kind, const wchar_t* target) {
    HistoryEntry entry;
    entry.kind = kind;
    entry.target = target;
    return entry;
  }

  std::wstring Set(const wchar_t* depth) { return Format(LR"({"name":"d0","expression":"%s"})", depth); }
};

TEST_F(UndoRedo, ADimensionGoesBackAndForthWithTheGeometry) {
  Block(10, 20, 30);
  Succeed(L"api_parameters_set", Set(L"5 mm"));
  EXPECT_NEAR(Volume(), 10 * 20 * 5, 1e-6);
  Walk(kUndo);
  EXPECT_NEAR(Volume(), 10 * 20 * 30, 1e-6);
  EXPECT_EQ(Labels(RedoStack()), std::vector<std::wstring>{L"Set d0"});
  Walk(kRedo);
  EXPECT_NEAR(Volume(), 10 * 20 * 5, 1e-6);
  EXPECT_TRUE(RedoStack().empty());
  EXPECT_EQ(UndoStack().back().before_text, L"30 mm");
}

TEST_F(UndoRedo, ACreatedFeatureIsSuppressedAndNotDeleted) {
  const std::wstring block = Block(10, 20, 30);
  Walk(kUndo);
  ASSERT_NE(FeatureNamed(block), nullptr);
  EXPECT_EQ(FeatureNamed(block)->status, PRO_FEAT_SUPPRESSED);
  Walk(kRedo);
  EXPECT_NEAR(Volume(), 10 * 20 * 30, 1e-6);
  // One that is suppressed already counts as undone.
  Succeed(L"api_feature_suppress", LR"({"feature_name":")" + block + L"\"}");
  UndoStack().pop_back();
  Walk(kUndo);
  EXPECT_EQ(FeatureNamed(block)->status, PRO_FEAT_SUPPRESSED);
}

TEST_F(UndoRedo, SuppressTogglesAreTurnedRound) {
  const std::wstring block = Block(10, 20, 30);
  const std::wstring named = LR"({"feature_name":")" + block + L"\"}";
  Succeed(L"api_feature_suppress", named);
  Succeed(L"api_feature_unsuppress", named);
  const bench::Feature* const feature = FeatureNamed(block);
  for (const auto& [operation, status] : {std::pair(kUndo, PRO_FEAT_SUPPRESSED),
                                          {kUndo, PRO_FEAT_ACTIVE},
                                          {kRedo, PRO_FEAT_SUPPRESSED},
                                          {kRedo, PRO_FEAT_ACTIVE}}) {
    Walk(operation);
    EXPECT_EQ(feature->status, status);
  }
}

TEST_F(UndoRedo, ASketchAndItsDrawingAreTakenBackAndMadeAgain) {
  Rectangle(L"R", L"XY", 0, 0, 4, 2);
  EXPECT_THAT(Labels(UndoStack()), testing::ElementsAre(L"Create sketch R", testing::HasSubstr(L"in R")));
  Walk(kUndo);
  EXPECT_EQ(Session(L"R").entities.size(), 1u) << "the seed";
  Walk(kUndo);
  EXPECT_EQ(sketch::FindSketchSession(L"R"), nullptr);
  EXPECT_EQ(FeatureNamed(L"R"), nullptr);
  Walk(kRedo, 2);
  EXPECT_EQ(Session(L"R").entities.size(), 1u + 4u);
  ASSERT_NE(FeatureNamed(L"R"), nullptr);
  EXPECT_EQ(UndoStack().size(), 2u);
}

TEST_F(UndoRedo, ADrawingThatIsDoneAgainBearsItsNewLabels) {
  CreateSketch(L"S");
  for (const wchar_t* line : {LR"("x1":0,"y1":0,"x2":1,"y2":0)", LR"("x1":0,"y1":1,"x2":1,"y2":1)",
                              LR"("x1":0,"y1":2,"x2":1,"y2":2)"})
    Draw(L"api_sketch_line_two_points", L"S", line);
  EXPECT_EQ(UndoStack().back().entity, L"L:3");
  Walk(kUndo);
  // The deletion is no step of the history and leaves the redo chain; the other line moves up to L:1.
  Succeed(L"api_sketch_entity_delete", LR"({"sketch_name":"S","entity":"L:1"})");
  Walk(kRedo);
  EXPECT_EQ(UndoStack().back().entity, L"L:2");
  Walk(kUndo);
  EXPECT_EQ(Session(L"S").entities.size(), 1u + 1u) << "the seed and the line that moved up";
  EXPECT_EQ(RedoStack().back().entity, L"L:2");
}

TEST_F(UndoRedo, AWalkEndsWhereTheStackDoes) {
  Block(10, 20, 30);
  ClearHistory();
  Succeed(L"api_parameters_set", Set(L"20"));
  Succeed(L"api_parameters_set", Set(L"10"));
  ExpectFailure(kUndo, LR"({"count":3})", L"Only 2 of 3 undo step(s) applied.");
  EXPECT_NEAR(Volume(), 10 * 20 * 30, 1e-6);
  ExpectFailure(kRedo, LR"({"count":10})", L"Only 2 of 10 redo step(s) applied.");
  EXPECT_NEAR(Volume(), 10 * 20 * 10, 1e-6);
}

TEST_F(UndoRedo, AStepThatFailsEndsTheWalkAndStays) {
  Block(10, 20, 30);
  ClearHistory();
  Succeed(L"api_parameters_set", Set(L"20"));
  PushCreateFeature(L"Gone");
  Succeed(L"api_parameters_set", Set(L"10"));
  const auto lookup = Run(L"api_feature_suppress", LR"({"feature_name":"Gone"})").message;
  ExpectFailure(kUndo, LR"({"count":3})", L"Only 1 of 3 undo step(s) applied: " + lookup);
  EXPECT_NEAR(Volume(), 10 * 20 * 20, 1e-6);
  EXPECT_EQ(Labels(UndoStack()), (std::vector<std::wstring>{L"Set d0", L"Create Gone"}));
  ExpectFailure(kUndo, L"{}", lookup);
  EXPECT_EQ(UndoStack().size(), 2u);
  NewPart();
  ExpectFailure(kUndo, L"{}", L"No Vek undo steps available.");
}

TEST_F(UndoRedo, StepsThatCannotBeAppliedSayWhyAndStay) {
  const wchar_t* const no_assembly = L"Assembly operations require an active assembly document.";
  for (const HistoryKind kind : {HistoryKind::kSuppressOccurrence, HistoryKind::kMove}) {
    UndoStack() = RedoStack() = {Entry(kind, L"A")};
    ExpectFailure(kUndo, L"{}", no_assembly);
    ExpectFailure(kRedo, L"{}", no_assembly);
    EXPECT_EQ(UndoStack().size() + RedoStack().size(), 2u);
    EXPECT_FALSE(HistoryReplaying);
  }
}

TEST_F(UndoRedo, TheOtherStackKeepsItsLimit) {
  Block(10, 20, 30);
  ClearHistory();
  Succeed(L"api_parameters_set", Set(L"20"));
  RedoStack().assign(10, Entry(HistoryKind::kCreateFeature, L"old"));
  Walk(kUndo);
  ASSERT_EQ(RedoStack().size(), 10u);
  EXPECT_EQ(RedoStack().back().label, L"Set d0");
}

TEST_F(UndoRedo, AnExceptionInAStepEndsTheReplayToo) {
  CreateSketch(L"S");
  Walk(kUndo);
  faults().Before("ProMdlCurrentGet", [] { FailNextLine([] { throw std::runtime_error("no memory"); }); });
  EXPECT_FALSE(Run(kRedo).success);
  EXPECT_FALSE(HistoryReplaying);
  EXPECT_EQ(RedoStack().size(), 1u);
  PushCreateFeature(L"A");
  EXPECT_EQ(Labels(UndoStack()), std::vector<std::wstring>{L"Create A"});
}

}  // namespace
}  // namespace vek::support
