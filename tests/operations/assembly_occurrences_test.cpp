// What an assembly holds: the listing, the ways in which a text means an occurrence, new names, and what is
// turned off and on.
#include "addin/ops/assembly/occurrences.h"

#include <tuple>

#include "addin/ops/common/history.h"
#include "tests/operations/assembly_ground.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kList = L"api_assembly_list_components";
constexpr const wchar_t* kSuppress = L"api_assembly_suppress_occurrence";
constexpr const wchar_t* kUnsuppress = L"api_assembly_unsuppress_occurrence";
constexpr const wchar_t* kB = LR"({"occurrence_name":"b"})";

class AssemblyOccurrences : public AssemblyTest {
 protected:
  // The id of what the query means, or the message.
  std::wstring Resolve(const std::wstring& query) {
    assembly::OccurrenceInfo info;
    const auto result = assembly::ResolveOccurrence(bench::Handle(assembly()), query, info);
    EXPECT_EQ(result.success, info.id >= 0);
    return result.success ? info.name : result.message;
  }
  std::wstring Assign(const bench::Feature& feature, std::wstring_view desired) {
    return assembly::AssignOccurrenceName(bench::Handle(assembly()), Record(feature), desired);
  }
};

TEST_F(AssemblyOccurrences, WithoutComponentsTheListingIsEmptyAndWithoutAnAssemblyThereIsNone) {
  ExpectAnswer(kList, L"{}", L"0 unique component(s) found (0 total occurrences).", L"[]");
  NewPart();
  ExpectFailure(kList, L"{}", L"Assembly operations require an active assembly document.");
}

TEST_F(AssemblyOccurrences, ModelsAreListedOnceByTheirPathInAnyCase) {
  bench::Model& bolt = Part(L"BOLT", L"C:\\B");
  bench::Model& same = Part(L"SAME", L"c:\\b");
  same.name = L"bolt";
  bench::Model& elsewhere = Part(L"ELSEWHERE", L"C:\\A");
  elsewhere.name = L"BOLT";
  Place(bolt, L"FIRST");
  Place(elsewhere, L"OTHER").status = PRO_FEAT_SUPPRESSED;
  Place(bolt, L"SECOND");
  Place(same, L"");
  const int lost = Place(bolt, L"no_NAME").id;
  faults().Fail("ProAsmcompMdlGet", PRO_TK_E_NOT_FOUND, 5);
  ExpectAnswer(
      kList, L"{}", L"3 unique component(s) found (5 total occurrences).",
      Format(LR"([{"name":"OTHER","part_number":"BOLT","full_path":"C:\\A\\BOLT.prt","occurrence_count":1},)"
             LR"({"name":"FIRST","part_number":"BOLT","full_path":"C:\\B\\BOLT.prt","occurrence_count":3},)"
             LR"({"name":"COMP_%d","part_number":"COMP_%d","full_path":"","occurrence_count":1}])",
             lost, lost));
  faults().Fail("ProAsmcompMdlGet", PRO_TK_E_NOT_FOUND, 1, 5);
  EXPECT_EQ(Run(kList).message, L"5 unique component(s) found (5 total occurrences).");
}

TEST_F(AssemblyOccurrences, AnOccurrencesNameBeatsItsModels) {
  bench::Model& bolt = Part(L"BOLT");
  Part(L"PIN-4");
  Place(bolt, L"LEFT");
  Place(bolt, L"Right Side");
  Place(Part(L"NUT"), L"BOLT");
  const int unnamed = Place(Part(L"DISC"), L"").id;
  Place(Part(L"RING"), L"R1");
  Place(*host().session.FindByName(L"RING", PRO_MDL_PART), L"R2");
  const std::pair<std::wstring, std::wstring> cases[] = {
      {L"left", L"LEFT"},
      {L"right-side", L"Right Side"},
      {L"C:/x/RIGHT SIDE.asm.3", L"Right Side"},
      {L"Bolt", L"BOLT"},
      {L"nut.prt", L"BOLT"},
      {L"disc", Format(L"COMP_%d", unnamed)},
      {Format(L"comp_%d", unnamed), Format(L"COMP_%d", unnamed)},
      {L"ring.prt.2",
       L"Multiple occurrences match part 'ring.prt.2'. Use a specific occurrence name: R1, R2"},
      {L"Gone",
       L"Occurrence 'Gone' not found. Use list_components 'name' (occurrence) or 'part_number' (Model Tree "
       L"name)."},
  };
  for (const auto& [query, expected] : cases) EXPECT_EQ(Resolve(query), expected);
}

TEST_F(AssemblyOccurrences, NewNamesAreFreeOnes) {
  bench::Model& bolt = Part(L"BOLT");
  const bench::Feature& first = Place(bolt, L"");
  const bench::Feature& second = Place(bolt, L"");
  EXPECT_EQ(Assign(first, L" NAME "), L"NAME");
  EXPECT_EQ(Assign(second, L"NAME"), L"NAME_2");
  EXPECT_EQ(second.name, L"NAME_2");
  // Who bears a name already keeps it.
  EXPECT_EQ(Assign(second, L"NAME"), L"NAME_2");
  EXPECT_EQ(Assign(first, L""), L"NAME");

  const bench::Feature& third = Place(bolt, L"comp_X");
  EXPECT_EQ(Assign(third, L" "), L"Component");
  EXPECT_EQ(third.name, L"Component");
  // The host takes 31 characters; the client is told all of them.
  const std::wstring longer(40, L'L');
  EXPECT_EQ(Assign(third, longer), longer);
  EXPECT_EQ(third.name, longer.substr(0, 31));
  // A host that gives no name leaves the one that is shown.
  const bench::Feature& fourth = Place(bolt, L"");
  faults().Fail("ProModelitemNameSet", PRO_TK_GENERAL_ERROR);
  EXPECT_EQ(Assign(fourth, L"LAST"), Format(L"COMP_%d", fourth.id));
}

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
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*, bool, std::size_t> cases[] = {
      {kUnsuppress, L"Occurrence 'B' is already active.", kNull, false, 0},
      {kSuppress, L"Occurrence 'B' suppressed.", kNull, true, 1},
      {kSuppress, L"Occurrence 'B' is already suppressed.", kNull, true, 1},
      {kUnsuppress, L"Occurrence 'B' unsuppressed.", kNull, false, 2},
      {L"api_document_undo", L"1 undo step(s) applied.", kOne, true, 1},
      {L"api_document_undo", L"1 undo step(s) applied.", kOne, false, 0},
      {L"api_document_redo", L"1 redo step(s) applied.", kOne, true, 1},
  };
  for (const auto& [operation, message, data, suppressed, steps] : cases) {
    ExpectAnswer(operation, kB, message, data);
    EXPECT_EQ(IsSuppressed(L"B"), suppressed);
    EXPECT_FALSE(IsSuppressed(L"A"));
    EXPECT_EQ(UndoStack().size(), steps);
  }
  EXPECT_EQ(RedoStack().size(), 1u);
}

TEST_F(AssemblySuppression, WhatTheHostRefusesChangesNothing) {
  faults().Fail("ProFeatureWithoptionsSuppress", -8);
  ExpectFailure(kSuppress, kB, L"Failed to suppress occurrence 'B' (status=-8).");
  EXPECT_FALSE(IsSuppressed(L"B"));
  Succeed(kSuppress, kB);
  ClearHistory();
  faults().Fail("ProFeatureWithoptionsResume", -8);
  ExpectFailure(kUnsuppress, kB, L"Failed to unsuppress occurrence 'B' (status=-8).");
  EXPECT_TRUE(IsSuppressed(L"B"));
  EXPECT_TRUE(UndoStack().empty());
}

}  // namespace
}  // namespace vek::support
