// Turning occurrences off and on, and the history of it.
#include "addin/ops/common/history.h"
#include "tests/operations/assembly_pair.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kSuppress = L"api_assembly_suppress_occurrence";
constexpr const wchar_t* kUnsuppress = L"api_assembly_unsuppress_occurrence";
constexpr const wchar_t* kB = LR"({"occurrence_name":"b"})";

class AssemblySuppression : public AssemblyPairTest {
 protected:
  void SetUp() override {
    AssemblyPairTest::SetUp();
    PlaceBlocks();
    ClearHistory();
  }

  bool IsSuppressed(const std::wstring& name) { return Occurrence(name).status == PRO_FEAT_SUPPRESSED; }
};

TEST_F(AssemblySuppression, EachStateIsEnteredOnce) {
  const struct {
    const wchar_t *operation, *message;
    bool suppressed;
    std::size_t steps;
  } cases[] = {
      {kUnsuppress, L"Occurrence 'B' is already active.", false, 0},
      {kSuppress, L"Occurrence 'B' suppressed.", true, 1},
      {kSuppress, L"Occurrence 'B' is already suppressed.", true, 1},
      {kUnsuppress, L"Occurrence 'B' unsuppressed.", false, 2},
  };
  for (const auto& [operation, message, suppressed, steps] : cases) {
    const auto result = Run(operation, kB);
    EXPECT_TRUE(result.success);
    EXPECT_EQ(result.message, message);
    EXPECT_EQ(result.dataJson, L"null");
    EXPECT_EQ(IsSuppressed(L"B"), suppressed);
    EXPECT_FALSE(IsSuppressed(L"A"));
    EXPECT_EQ(UndoStack().size(), steps);
  }
}

TEST_F(AssemblySuppression, TheHistoryWalksBackAndForth) {
  Succeed(kSuppress, kB);
  Succeed(L"api_document_undo");
  EXPECT_FALSE(IsSuppressed(L"B"));
  Succeed(L"api_document_redo");
  EXPECT_TRUE(IsSuppressed(L"B"));
  Succeed(kUnsuppress, kB);
  Succeed(L"api_document_undo");
  EXPECT_TRUE(IsSuppressed(L"B"));
  EXPECT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(RedoStack().size(), 1u);
}

TEST_F(AssemblySuppression, WhatIsRefusedChangesNothing) {
  for (const wchar_t* operation : {kSuppress, kUnsuppress}) {
    ExpectFailure(operation, L"{}", L"'occurrence_name' is required.");
    ExpectFailure(
        operation, LR"({"occurrence_name":"C"})",
        L"Occurrence 'C' not found. Use list_components 'name' (occurrence) or 'part_number' (Model "
        L"Tree name).");
  }
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
      {true, kUnsuppress, "ProArrayObjectAdd", 1, L"Failed to allocate feature id array."},
      {true, kUnsuppress, "ProArrayAlloc", 2, L"Failed to allocate resume options."},
      {true, kUnsuppress, "ProFeatureWithoptionsResume", 1,
       L"Failed to unsuppress occurrence 'B' (status=-8)."},
  };
  for (const auto& [suppressed, operation, call, occurrence, message] : cases) {
    if (suppressed) Succeed(kSuppress, kB);
    ClearHistory();
    faults().Fail(call, -8, occurrence, occurrence);
    ExpectFailure(operation, kB, message);
    faults().Clear();
    EXPECT_EQ(IsSuppressed(L"B"), suppressed);
    EXPECT_TRUE(UndoStack().empty());
    if (suppressed) Succeed(kUnsuppress, kB);
  }
}

}  // namespace
}  // namespace vek::support
