// Constraints and poses in the words of an intermediate representation.
#include <gmock/gmock.h>

#include "addin/ops/common/history.h"
#include "tests/operations/assembly_ground.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

constexpr const wchar_t* kOperation = L"api_assembly_add_ir_constraint";

using AssemblyIr = AssemblyTest;

// The bottom of B, at z = 7, comes onto the top of A, at z = 30 (the block is 30 high), and stays 25.4 above
// it with an offset. The normals are opposite already, so B isn't turned: (1, 2, 3) of B goes to (30 + 1, 40
// + 2, 30 + 3 + offset).
TEST_F(AssemblyIr, AFaceComesOntoTheFaceThatASelectorNames) {
  PlaceBlocks();
  const struct {
    const wchar_t *kind, *param, *label;
    int type;
    double z;
  } cases[] = {
      {L"Plane", L"null", L"Plane (offset=0 mm)", 0, 33},
      {L"Plane", L"25.4", L"Plane (offset=25.4 mm)", 1, 58.4},
      {L"PointOnLine", L"5", L"PointOnLine", 0, 33},
  };
  for (const auto unit : {bench::LengthUnit::kMillimetre, bench::LengthUnit::kInch}) {
    assembly().length_unit = unit;
    PlaceOf(L"B") = bench::Scaled(bench::Shifted(bench::kNoMove, kPlaceOfB), 1 / bench::MillimetresPer(unit));
    for (const auto& [kind, param, label, type, z] : cases) {
      ExpectMessage(kOperation,
                    Format(LR"({"kind":"%s","refs":["B@faces@<Z","A@Faces@> z"],"param":%s})", kind, param),
                    Format(L"%s: constraint added between 'B' and 'A'.", label));
      ASSERT_EQ(Constraints(L"B").size(), 1u);
      EXPECT_EQ(Constraints(L"B")[0].type, type);
      EXPECT_TRUE(Constraints(L"A").empty());
      ExpectPoint(L"B", {1, 2, 3}, {31, 42, z});
    }
  }
}

TEST_F(AssemblyIr, APositionKeepsTheRotationAndARotationThePosition) {
  PlaceBlocks();
  ClearHistory();
  // A quarter turn about Z takes X to Y and Y to -X: (1, 2, 3) to (-2, 1, 3).
  ExpectMessage(kOperation, LR"({"kind":"FixedRotation","refs":["B"],"param":[0,0,90]})",
                L"FixedRotation: occurrence 'B' rotated by (0\u00b0, 0\u00b0, 90\u00b0) Euler.");
  ExpectPoint(L"B", {1, 2, 3}, {30 - 2, 40 + 1, 7 + 3});
  ExpectMessage(kOperation, LR"({"kind":"FixedPoint","refs":["B@faces"],"param":[10 20 30 40]})",
                L"FixedPoint: occurrence 'B' positioned at (10,20,30) mm.");
  ExpectPoint(L"B", {1, 2, 3}, {10 - 2, 20 + 1, 30 + 3});
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(AssemblyIr, AFixedOccurrenceBearsOneFix) {
  PlaceBlocks();
  for (const wchar_t* kind : {L"Fixed", L"FixedAxis"}) {
    ExpectMessage(kOperation, Format(LR"({"kind":"%s","refs":["B"]})", kind),
                  Format(L"%s: occurrence 'B' grounded.", kind));
    ASSERT_EQ(Constraints(L"B").size(), 1u);
    EXPECT_EQ(Constraints(L"B")[0].type, 13);
    ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
  }
}

TEST_F(AssemblyIr, WhatIsWrongIsToldAndLeavesNothing) {
  PlaceBlocks();
  const wchar_t* kTwo = L"IR kinds Axis/Plane/Point/PointInPlane/PointOnLine require 2 refs.";
  const wchar_t* kReference = L"Invalid IR geometry reference.";
  const wchar_t* kPoint = L"'param' must be [x,y,z] mm for FixedPoint.";
  const struct {
    const wchar_t *arguments, *message;
  } cases[] = {
      {LR"({})", L"'kind' is required."},
      {LR"({"kind":"Plane","refs":[]})", L"'refs' must be a non-empty array."},
      {LR"({"kind":"Fixed","refs":["@faces"]})", kReference},
      {LR"({"kind":"fixed","refs":["B"]})", kTwo},
      {LR"({"kind":"Plane","refs":["B"," "]})", kReference},
      {LR"({"kind":"FixedPoint","refs":["B"]})", kPoint},
      {LR"({"kind":"FixedPoint","refs":["@"],"param":[1,2]})", kPoint},
      {LR"({"kind":"FixedPoint","refs":["B"],"param":"1,2,3"})", kPoint},
      {LR"({"kind":"FixedRotation","refs":["B"],"param":[0,x,0]})",
       L"'param' must be [rx,ry,rz] degrees for FixedRotation."},
      {LR"({"kind":"Gear","refs":["B","C"]})",
       L"Occurrence 'C' not found. Use list_components 'name' (occurrence) or 'part_number' (Model Tree "
       L"name)."},
      {LR"({"kind":"Gear","refs":["B","A"]})",
       L"Unknown IR constraint kind 'Gear'. Supported: Fixed, Axis, Plane, Point, PointInPlane, PointOnLine, "
       L"FixedAxis, FixedPoint, FixedRotation."},
      {LR"({"kind":"Plane","refs":["B@faces@|Z","A"]})", L"No face matched selector '|Z' on 'B'."},
      {LR"({"kind":"Axis","refs":["B","A@@>W"]})", L"No face matched selector '>W' on 'A'."},
  };
  for (const auto& [arguments, message] : cases) ExpectFailure(kOperation, arguments, message);
  EXPECT_TRUE(Constraints(L"B").empty());
  ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
}

// The other operation does the same with words of its own.
TEST_F(AssemblyIr, AFailingCallIsToldInTheWordsOfTheOperation) {
  PlaceBlocks();
  const wchar_t *kPath = L"Failed to build component path for 'A' (status=-8).",
                *kSelection = L"Failed to allocate selection for occurrence 'A'.",
                *kPopulate = L"Failed to populate assembly constraint.",
                *kPopulateIr = L"Failed to populate IR constraint.";
  const struct {
    const char* call;
    int occurrence;
    const wchar_t *of_constraint, *of_ir;
  } cases[] = {
      {"ProSolidSurfaceVisit", 1, L"No compatible face found on 'B'.", L"No planar face found on 'B'."},
      {"ProSolidSurfaceVisit", 2, L"No compatible face found on 'A'.", L"No planar face found on 'A'."},
      {"ProAsmcomppathInit", 1, kPath, kPath},
      {"ProSelectionAlloc", 1, kSelection, kSelection},
      {"ProSelectionAlloc", 2, L"Failed to allocate component geometry selection.",
       L"Failed to allocate IR component selection."},
      {"ProAsmcompconstraintAlloc", 1, L"Failed to allocate assembly constraint.",
       L"Failed to allocate IR constraint."},
      {"ProAsmcompconstraintTypeSet", 1, kPopulate, kPopulateIr},
      {"ProAsmcompconstraintAsmreferenceSet", 1, kPopulate, kPopulateIr},
      {"ProAsmcompconstraintCompreferenceSet", 1, kPopulate, kPopulateIr},
      {"ProAsmcompconstraintOffsetSet", 1, L"Failed to set constraint offset.",
       L"Failed to set IR constraint offset."},
      {"ProArrayAlloc", 1, L"Failed to build constraint array.", L"Failed to build IR constraint array."},
      {"ProArrayObjectAdd", 1, L"Failed to build constraint array.", L"Failed to build IR constraint array."},
      {"ProAsmcompConstraintsSet", 1, L"Failed to apply constraint between 'B' and 'A' (status=-8).",
       L"Failed to apply IR constraint 'Plane' (status=-8)."},
  };
  for (const auto& [call, occurrence, of_constraint, of_ir] : cases) {
    faults().Fail(call, -8, occurrence, occurrence);
    ExpectFailure(L"api_assembly_add_constraint",
                  LR"({"type":"distance","occurrence1":"B","occurrence2":"A"})", of_constraint);
    faults().Clear();
    faults().Fail(call, -8, occurrence, occurrence);
    ExpectFailure(kOperation, LR"({"kind":"Plane","refs":["B","A"],"param":5})", of_ir);
    faults().Clear();
    EXPECT_TRUE(Constraints(L"B").empty()) << call;
  }
  ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
}

TEST_F(AssemblyIr, TheConstraintIsFreedWithItsArrayAndTheSelectionsLast) {
  PlaceBlocks();
  const auto mark = host().journal.Mark();
  Succeed(kOperation, LR"({"kind":"Plane","refs":["B@edges@>Z","A@faces"]})");
  EXPECT_THAT(CallsSince(mark, {"ProSelectionAlloc", "ProAsmcompconstraintAlloc", "ProAsmcompConstraintsSet",
                                "ProAsmcompconstraintArrayFree", "ProAsmcompconstraintFree",
                                "ProSelectionFree", "ProSolidRegenerate"}),
              ElementsAre("ProSelectionAlloc", "ProSelectionAlloc", "ProAsmcompconstraintAlloc",
                          "ProAsmcompConstraintsSet", "ProAsmcompconstraintArrayFree", "ProSelectionFree",
                          "ProSelectionFree", "ProSolidRegenerate"));
}

}  // namespace
}  // namespace vek::support
