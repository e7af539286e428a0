// Turning occurrences off and on, and the history of it.
#include "addin/ops/common/history.h"
#include "tests/operations/assembly_ground.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kSuppress = L"api_assembly_suppress_occurrence";
constexpr const wchar_t* kUnsuppress = L"api_assembly_unsuppress_occurrence";
constexpr const wchar_t* kB = LR"({"occurrence_name":"b"})";

class AssemblySuppression : public AssemblyTest {
 protected:
  void SetUp() override {
    AssemblyTest::SetUp();
    bench::Model& part = Part(L"BOLT");
    Place(part, L"A");
    Place(part, L"B");
  }

  bool IsSuppressed(const std::wstring& name) { return Occurrence(name).status == PRO_FEAT_SUPPRESSED; }
};

TEST_F(AssemblySuppression, EachStateIsEnteredOnceAndTheHistoryWalksBackAndForth) {
  const wchar_t *kNull = L"null", *kOne = LR"({"applied":1,"requested":1})";
  const struct {
    const wchar_t *operation, *message, *data;
    bool suppressed;
    std::size_t steps;
  } cases[] = {
      {kUnsuppress, L"Occurrence 'B' is already active.", kNull, false, 0},
      {kSuppress, L"Occurrence 'B' suppressed.", kNull, true, 1},
      {kSuppress, L"Occurrence 'B' is already suppressed.", kNull, true, 1},
      {kUnsuppress, L"Occurrence 'B' unsuppressed.", kNull, false, 2},
      {L"api_document_undo", L"1 undo step(s) applied.", kOne, true, 1},
      {L"api_document_undo", L"1 undo step(s) applied.", kOne, false, 0},
      {L"api_document_redo", L"1 redo step(s) applied.", kOne, true, 1},
  };
  for (const auto& [operation, message, data, suppressed, steps] : cases) {
    const auto result = Run(operation, kB);
    EXPECT_TRUE(result.success);
    EXPECT_EQ(result.message, message);
    EXPECT_EQ(result.dataJson, data);
    EXPECT_EQ(IsSuppressed(L"B"), suppressed);
    EXPECT_FALSE(IsSuppressed(L"A"));
    EXPECT_EQ(UndoStack().size(), steps);
  }
  EXPECT_EQ(RedoStack().size(), 1u);
}

TEST_F(AssemblySuppression, WhatIsRefusedChangesNothing) {
  const struct {
    bool suppressed;
    const wchar_t* operation;
    const char* call;
    int occurrence;
    const wchar_t* message;
  } cases[] = {
      {false, kSuppress, "ProArrayAlloc", 1, L"Failed to allocate feature id array."},
      {false, kSuppress, "ProArrayObjectAdd", 2, L"Failed to allocate suppress options."},
      {false, kSuppress, "ProFeatureWithoptionsSuppress", 1,
       L"Failed to suppress occurrence 'B' (status=-8)."},
      {true, kUnsuppress, "ProArrayAlloc", 2, L"Failed to allocate resume options."},
      {true, kUnsuppress, "ProFeatureWithoptionsResume", 1,
       L"Failed to unsuppress occurrence 'B' (status=-8)."},
  };
  for (const auto& [suppressed, operation, call, occurrence, message] : cases) {
    Run(suppressed ? kSuppress : kUnsuppress, kB);
    ClearHistory();
    ExpectFailure(operation, L"{}", L"'occurrence_name' is required.");
    faults().Fail(call, -8, occurrence, occurrence);
    ExpectFailure(operation, kB, message);
    faults().Clear();
    EXPECT_EQ(IsSuppressed(L"B"), suppressed);
    EXPECT_TRUE(UndoStack().empty());
  }
}

}  // namespace
}  // namespace vek::support
