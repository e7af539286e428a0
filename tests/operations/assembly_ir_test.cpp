// Constraints and poses in the words of an intermediate representation.
#include <gmock/gmock.h>

#include "addin/ops/common/history.h"
#include "addin/text/utf8.h"
#include "tests/operations/assembly_pair.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

constexpr const wchar_t* kOperation = L"api_assembly_add_ir_constraint";

class AssemblyIr : public AssemblyPairTest {
 protected:
  void ExpectMessage(const std::wstring& arguments, const std::wstring& message) {
    const auto result = Run(kOperation, arguments);
    EXPECT_TRUE(result.success);
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
    EXPECT_EQ(result.dataJson, L"null");
  }
};

// The bottom of B, at z = 7, comes onto the top of A, at z = 30 (the block is 30 high), and stays 5 above it
// with an offset. The normals are opposite already, so B isn't turned: (1, 2, 3) of B goes to
// (100 + 1, 50 + 2, 30 + 3 + offset).
TEST_F(AssemblyIr, AFaceComesOntoTheFaceThatASelectorNames) {
  PlaceBlocks();
  const struct {
    const wchar_t *kind, *param, *label;
    int type;
    double z;
  } cases[] = {
      {L"Plane", L"null", L"Plane (offset=0 mm)", 0, 33},
      {L"Plane", L"5", L"Plane (offset=5 mm)", 1, 38},
      {L"PointOnLine", L"5", L"PointOnLine", 0, 33},
  };
  for (const auto& [kind, param, label, type, z] : cases) {
    ExpectMessage(Format(LR"({"kind":"%s","refs":["B@faces@<Z","A@Faces@> z"],"param":%s})", kind, param),
                  Format(L"%s: constraint added between 'B' and 'A'.", label));
    ASSERT_EQ(Constraints(L"B").size(), 1u);
    EXPECT_EQ(Constraints(L"B")[0].type, type);
    EXPECT_TRUE(Constraints(L"A").empty());
    ExpectPoint(L"B", {1, 2, 3}, {101, 52, z});
    ExpectPoint(L"A", {1, 2, 3}, {1, 2, 3});
  }
}

// As above, with 25.4 mm between the faces: 33 + 25.4.
TEST_F(AssemblyIr, AnInchAssemblyTakesMillimetresAsWell) {
  PlaceBlocks(bench::LengthUnit::kInch);
  Succeed(kOperation, LR"({"kind":"Plane","refs":["B@@<Z","A@@>Z"],"param":25.4})");
  ASSERT_EQ(Constraints(L"B").size(), 1u);
  EXPECT_NEAR(Constraints(L"B")[0].offset.value_or(0), 1, 1e-12);
  ExpectPoint(L"B", {1, 2, 3}, {101, 52, 58.4});
}

TEST_F(AssemblyIr, APositionKeepsTheRotationAndARotationThePosition) {
  PlaceBlocks();
  ClearHistory();
  // A quarter turn about Z takes X to Y and Y to -X: (1, 2, 3) to (-2, 1, 3).
  ExpectMessage(LR"({"kind":"FixedRotation","refs":["B"],"param":[0,0,90]})",
                L"FixedRotation: occurrence 'B' rotated by (0\u00b0, 0\u00b0, 90\u00b0) Euler.");
  ExpectPoint(L"B", {1, 2, 3}, {100 - 2, 50 + 1, 7 + 3});
  ExpectMessage(LR"({"kind":"FixedPoint","refs":["B@faces"],"param":[10 20 30 40]})",
                L"FixedPoint: occurrence 'B' positioned at (10,20,30) mm.");
  ExpectPoint(L"B", {1, 2, 3}, {10 - 2, 20 + 1, 30 + 3});
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(AssemblyIr, AFixedOccurrenceBearsOneFix) {
  PlaceBlocks();
  for (const wchar_t* kind : {L"Fixed", L"FixedAxis"}) {
    ExpectMessage(Format(LR"({"kind":"%s","refs":["B"]})", kind),
                  Format(L"%s: occurrence 'B' grounded.", kind));
    ASSERT_EQ(Constraints(L"B").size(), 1u);
    EXPECT_EQ(Constraints(L"B")[0].type, 13);
    ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
  }
}

TEST_F(AssemblyIr, WhatIsWrongIsTold) {
  PlaceBlocks();
  const wchar_t* kTwo = L"IR kinds Axis/Plane/Point/PointInPlane/PointOnLine require 2 refs.";
  const wchar_t* kReference = L"Invalid IR geometry reference.";
  const wchar_t* kPoint = L"'param' must be [x,y,z] mm for FixedPoint.";
  const struct {
    const wchar_t *arguments, *message;
  } cases[] = {
      {LR"({})", L"'kind' is required."},
      {LR"({"kind":"Plane"})", L"'refs' must be a non-empty array."},
      {LR"({"kind":"Plane","refs":[]})", L"'refs' must be a non-empty array."},
      {LR"({"kind":"Fixed","refs":["@faces"]})", kReference},
      {LR"({"kind":"fixed","refs":["B"]})", kTwo},
      {LR"({"kind":"Plane","refs":["B"]})", kTwo},
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

TEST_F(AssemblyIr, AFailingCallIsToldAndLeavesNothing) {
  PlaceBlocks();
  const struct {
    const char* call;
    int occurrence;
    const wchar_t* message;
  } cases[] = {
      {"ProAsmcomppathInit", 1, L"Failed to build component path for 'A' (status=-8)."},
      {"ProSelectionAlloc", 1, L"Failed to allocate selection for occurrence 'A'."},
      {"ProSelectionAlloc", 2, L"Failed to allocate IR component selection."},
      {"ProAsmcompconstraintAlloc", 1, L"Failed to allocate IR constraint."},
      {"ProAsmcompconstraintTypeSet", 1, L"Failed to populate IR constraint."},
      {"ProAsmcompconstraintAsmreferenceSet", 1, L"Failed to populate IR constraint."},
      {"ProAsmcompconstraintCompreferenceSet", 1, L"Failed to populate IR constraint."},
      {"ProAsmcompconstraintOffsetSet", 1, L"Failed to set IR constraint offset."},
      {"ProArrayAlloc", 1, L"Failed to build IR constraint array."},
      {"ProArrayObjectAdd", 1, L"Failed to build IR constraint array."},
      {"ProAsmcompConstraintsSet", 1, L"Failed to apply IR constraint 'Plane' (status=-8)."},
      {"ProSolidSurfaceVisit", 1, L"No planar face found on 'B'."},
      {"ProSolidSurfaceVisit", 2, L"No planar face found on 'A'."},
  };
  for (const auto& [call, occurrence, message] : cases) {
    faults().Fail(call, -8, occurrence, occurrence);
    ExpectFailure(kOperation, LR"({"kind":"Plane","refs":["B","A"],"param":5})", message);
    faults().Clear();
    EXPECT_TRUE(Constraints(L"B").empty()) << call;
    ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
  }
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
