// Adding constraints between occurrences, and listing them.
#include "addin/text/utf8.h"
#include "tests/operations/assembly_pair.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kAdd = L"api_assembly_add_constraint";
constexpr const wchar_t* kList = L"api_assembly_list_constraints";

class AssemblyConstraints : public AssemblyPairTest {
 protected:
  void ExpectMessage(const std::wstring& arguments, const std::wstring& message) {
    const auto result = Run(kAdd, arguments);
    EXPECT_TRUE(result.success);
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
    EXPECT_EQ(result.dataJson, L"null");
  }
};

TEST_F(AssemblyConstraints, AWordAndItsOffsetGiveATypeAndAMessage) {
  PlaceBlocks();
  const struct {
    const wchar_t* request;
    const wchar_t* message;
    int type;
    std::optional<double> offset;
  } cases[] = {
      {LR"("type":"MATE")", L"mate constraint added between 'B' and 'A'.", 0, {}},
      {LR"("type":"mate","offset_mm":0)", L"mate constraint added between 'B' and 'A'.", 0, {}},
      {LR"("type":"mate","offset_mm":5)", L"mate constraint added between 'B' and 'A', offset=5 mm.", 1, 5},
      {LR"("type":"flush","offset_mm":-2.5)", L"flush constraint added between 'B' and 'A', offset=-2.5 mm.",
       3, -2.5},
      {LR"("type":"distance")", L"distance constraint added between 'B' and 'A', offset=0 mm.", 1, 0},
      {LR"("type":"parallel","offset_mm":3)", L"parallel constraint added between 'B' and 'A', offset=3 mm.",
       5, 3},
      {LR"("type":"angle","angle_deg":30,"offset_mm":7)",
       L"Angle constraint 30\u00b0 added between 'B' and 'A'.", 31, 30},
      {LR"("type":"perpendicular")", L"perpendicular constraint added between 'B' and 'A'.", 34, {}},
  };
  for (const auto& [request, message, type, offset] : cases) {
    ExpectMessage(Format(LR"({%s,"occurrence1":"B","occurrence2":"A"})", request), message);
    ASSERT_EQ(Constraints(L"B").size(), 1u);
    EXPECT_EQ(Constraints(L"B")[0].type, type);
    EXPECT_EQ(Constraints(L"B")[0].offset, offset);
    EXPECT_TRUE(Constraints(L"A").empty());
  }
}

// Both axes run along Z, so B only comes over A: (1, 2, 3) of B goes to (1, 2, 7 + 3).
TEST_F(AssemblyConstraints, AnInsertedShaftComesIntoLine) {
  PlaceShafts();
  for (const wchar_t* word : {L"insert", L" Concentric"}) {
    Succeed(kAdd, Format(LR"({"type":"%s","occurrence1":"B","occurrence2":"A"})", word));
    ASSERT_EQ(Constraints(L"B").size(), 1u);
    EXPECT_EQ(Constraints(L"B")[0].type, 4);
    ExpectPoint(L"B", {1, 2, 3}, {1, 2, 10});
  }
}

TEST_F(AssemblyConstraints, GroundingAndFloating) {
  PlaceBlocks();
  for (const wchar_t* word : {L"", L"Ground", L"fixed"}) {
    ExpectMessage(Format(LR"({"type":"%s","occurrence1":"b"})", word), L"Occurrence 'B' grounded.");
    ASSERT_EQ(Constraints(L"B").size(), 1u);
    EXPECT_EQ(Constraints(L"B")[0].type, 13);
    ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
  }
  for (const wchar_t* word : {L"unground", L"FLOAT"}) {
    ExpectMessage(Format(LR"({"type":"%s","occurrence1":"b"})", word),
                  L"Occurrence 'B' ungrounded (floated).");
    EXPECT_TRUE(Constraints(L"B").empty());
    Succeed(kAdd, LR"({"occurrence1":"B"})");
  }
}

TEST_F(AssemblyConstraints, WhatIsWrongIsTold) {
  PlaceBlocks();
  const wchar_t* kBoth = L"'occurrence1' and 'occurrence2' are required for binary constraints.";
  const struct {
    const wchar_t *arguments, *message;
  } cases[] = {
      {L"{}", L"'occurrence1' is required for ground constraint."},
      {LR"({"type":"float"})", L"'occurrence1' is required for unground constraint."},
      {LR"({"type":"weld","occurrence1":"B"})", kBoth},
      // Only the lookup of other words looks past blanks.
      {LR"({"type":" ground","occurrence1":"B"})", kBoth},
      {LR"({"type":"Weld","occurrence1":"C","occurrence2":"A"})",
       L"Unknown constraint type 'weld'. Supported: ground, mate, flush, angle, tangent, insert, coincident, "
       L"concentric, distance, parallel, perpendicular, fixed, unground."},
      {LR"({"type":"mate","occurrence1":"B","occurrence2":"C"})",
       L"Occurrence 'C' not found. Use list_components 'name' (occurrence) or 'part_number' (Model Tree "
       L"name)."},
  };
  for (const auto& [arguments, message] : cases) ExpectFailure(kAdd, arguments, message);
}

TEST_F(AssemblyConstraints, AFailingCallIsToldAndLeavesNothing) {
  PlaceBlocks();
  const struct {
    const char* call;
    int occurrence;
    const wchar_t* message;
  } cases[] = {
      {"ProSolidSurfaceVisit", 1, L"No compatible face found on 'B'."},
      {"ProSolidSurfaceVisit", 2, L"No compatible face found on 'A'."},
      {"ProSelectionAlloc", 1, L"Failed to allocate selection for occurrence 'A'."},
      {"ProSelectionAlloc", 2, L"Failed to allocate component geometry selection."},
      {"ProAsmcompconstraintAlloc", 1, L"Failed to allocate assembly constraint."},
      {"ProAsmcompconstraintCompreferenceSet", 1, L"Failed to populate assembly constraint."},
      {"ProAsmcompconstraintOffsetSet", 1, L"Failed to set constraint offset."},
      {"ProArrayObjectAdd", 1, L"Failed to build constraint array."},
      {"ProAsmcompConstraintsSet", 1, L"Failed to apply constraint between 'B' and 'A' (status=-8)."},
  };
  for (const auto& [call, occurrence, message] : cases) {
    faults().Fail(call, -8, occurrence, occurrence);
    ExpectFailure(kAdd, LR"({"type":"distance","occurrence1":"B","occurrence2":"A"})", message);
    faults().Clear();
    EXPECT_TRUE(Constraints(L"B").empty()) << call;
    ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
  }
  faults().Fail("ProAsmcompAllConstrRemove", -8);
  ExpectFailure(kAdd, LR"({"type":"float","occurrence1":"B"})",
                L"Failed to unground occurrence 'B' (status=-8).");
}

TEST_F(AssemblyConstraints, TheListingNamesBothSidesAndFilters) {
  PlaceBlocks();
  Succeed(kAdd, LR"({"occurrence1":"A"})");
  Succeed(kAdd, LR"({"type":"flush","occurrence1":"B","occurrence2":"A","offset_mm":1})");
  const std::wstring ground =
      LR"({"name":"A_ground_1","type":"ground","suppressed":false,"occ1":"A","occ2":""})";
  const std::wstring flush =
      LR"({"name":"B_align_offset_1","type":"align_offset","suppressed":false,"occ1":"B","occ2":"A"})";
  const struct {
    const wchar_t* filter;
    int count;
    std::wstring data;
  } cases[] = {
      {L"", 2, L"[" + ground + L"," + flush + L"]"},
      {L"a", 2, L"[" + ground + L"," + flush + L"]"},
      {L"b", 1, L"[" + flush + L"]"},
      {L"B|A", 1, L"[" + flush + L"]"},
      {L"C", 0, L"[]"},
  };
  for (const auto& [filter, count, data] : cases) {
    const auto result = Run(kList, Format(LR"({"occurrence_name":"%s"})", filter));
    EXPECT_TRUE(result.success);
    EXPECT_EQ(result.message, Format(L"%d constraint(s) found.", count));
    EXPECT_EQ(EncodeUtf8(result.dataJson), EncodeUtf8(data));
  }

  // What can't be read leaves a gap, never a failure.
  faults().Fail("ProAsmcompConstraintsGet", -8, 1, 1);
  faults().Fail("ProSelectionAsmcomppathGet", -8);
  EXPECT_EQ(Succeed(kList)[0]["occ2"], "");
}

}  // namespace
}  // namespace vek::support
