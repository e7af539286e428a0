// Adding constraints between occurrences, in words and in those of an intermediate representation, and
// listing them.
#include <gmock/gmock.h>

#include <numbers>
#include <tuple>

#include "addin/ops/common/history.h"
#include "tests/operations/assembly_ground.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kAdd = L"api_assembly_add_constraint";
constexpr const wchar_t* kAddIr = L"api_assembly_add_ir_constraint";
constexpr const wchar_t* kList = L"api_assembly_list_constraints";
constexpr double kRoot3 = std::numbers::sqrt3;

class AssemblyConstraints : public AssemblyTest {
 protected:
  // As C and D: about the part's Z axis, from z = 0 to 20, with the radius 5.
  void PlaceShafts() {
    NewPart();
    Succeed(L"api_sketch_create", LR"({"name":"ROUND","plane":"XY"})");
    Succeed(L"api_sketch_circle_center_radius", LR"({"sketch_name":"ROUND","cx":0,"cy":0,"radius":5})");
    Succeed(L"api_feature_extrude", LR"({"sketch_name":"ROUND","distance_mm":20})");
    PlaceTwice(L"shaft", L"C", L"D");
  }
  // Free, at kPlaceOfB, turned about X, Y and Z.
  void Free(const wchar_t* name, const wchar_t* angles) {
    static constexpr wchar_t kPose[] = LR"({"kind":"%s","refs":["%s"],"param":%s})";
    Succeed(kAddIr, Format(kPose, L"FixedPoint", name, L"[30,40,7]"));
    Succeed(kAddIr, Format(kPose, L"FixedRotation", name, angles));
  }
};

// Where the point (1, 2, 3) of the moved part comes to lie. Its origin begins in (30, 40, 7). A half turn
// about X makes (x, -y, -z) of (x, y, z), one about Y (-x, y, -z); the reference in the assembly is A's
// bottom, at z = 0, whose normal is -Z, or C's wall, whose axis is Z.
TEST_F(AssemblyConstraints, AWordAndItsOffsetGiveATypeAPlaceAndAMessage) {
  PlaceBlocks();
  PlaceShafts();
  static constexpr wchar_t kRequest[] =
      LR"({"occurrence1":"%s","occurrence2":"%s","type":"%s","offset_mm":%s,"angle_deg":30})";
  const bench::Vector3 kUp{31, 42, 28.4}, kOnto{31, 38, -3}, kStays{31, 42, 10}, kAt90{31, 37, 9};
  // y is 2 cos 30 - 3 sin 30, z is 2 sin 30 + 3 cos 30.
  const bench::Vector3 kAt30{31, 40 + kRoot3 - 1.5, 7 + 1 + 1.5 * kRoot3};
  const struct {
    const wchar_t *moved, *held_to, *turned, *word, *offset_mm, *head, *tail;
    int type;
    std::optional<double> offset;  // mm, degrees
    bench::Vector3 point;
  } cases[] = {
      // The bottoms face each other already, and come onto each other.
      {L"B", L"A", L"[0,180,0]", L"MATE", L"0", L"mate constraint", L"", 0, {}, {29, 42, -3}},
      // They look the same way: a half turn about X.
      {L"B", L"A", L"[0,0,0]", L"coincident", L"null", L"coincident constraint", L"", 0, {}, {31, 38, -3}},
      // 5 along the normal: the bottom at z = -5.
      {L"B", L"A", L"[180,0,0]", L"mate", L"5", L"mate constraint", L", offset=5 mm", 1, 5, {31, 38, -8}},
      {L"B", L"A", L"[0,0,0]", L"Flush", L"0", L"flush constraint", L"", 2, {}, {31, 42, 3}},
      // 25.4 against the normal: up.
      {L"B", L"A", L"[0,0,0]", L"flush", L"-25.4", L"flush constraint", L", offset=-25.4 mm", 3, -25.4, kUp},
      {L"B", L"A", L"[180,0,0]", L"distance", L"0", L"distance constraint", L", offset=0 mm", 1, 0, kOnto},
      // Back by 30 degrees, or on to 180; the origin stays.
      {L"B", L"A", L"[30,0,0]", L"parallel", L"3", L"parallel constraint", L", offset=3 mm", 5, 3, kStays},
      {L"B", L"A", L"[150,0,0]", L"parallel", L"0", L"parallel constraint", L"", 5, {}, {31, 38, 4}},
      // From 60 degrees about X to 30, or on to 90: y is -3, z is 2.
      {L"B", L"A", L"[60,0,0]", L"angle", L"7", L"Angle constraint 30\u00b0", L"", 31, 30, kAt30},
      {L"B", L"A", L"[60,0,0]", L"perpendicular", L"0", L"perpendicular constraint", L"", 34, {}, kAt90},
      // Upright again and over the axis, at the old height; a turn about the axis stays: (-2, 1).
      {L"D", L"C", L"[0,90,0]", L"insert", L"0", L"insert constraint", L"", 4, {}, {1, 2, 10}},
      {L"D", L"C", L"[0,0,90]", L" Concentric", L"0", L" concentric constraint", L"", 4, {}, {-2, 1, 10}},
      // (30, 40) is 50 from the axis; two radii from it is (6, 8).
      {L"D", L"C", L"[0,0,0]", L"tangent", L"0", L"tangent constraint", L"", 7, {}, {7, 10, 10}},
      // A block has no cylinder, so its bottom serves: the axis a radius below it, at z = -5. A quarter turn
      // about Y makes (3, 2, -1) of (1, 2, 3).
      {L"D", L"A", L"[0,90,0]", L"tangent", L"0", L"tangent constraint", L"", 7, {}, {33, 42, -6}},
  };
  for (const auto unit : {bench::LengthUnit::kMillimetre, bench::LengthUnit::kInch}) {
    assembly().length_unit = unit;
    for (const auto& [moved, held_to, turned, word, offset_mm, head, tail, type, offset, point] : cases) {
      SCOPED_TRACE(EncodeUtf8(Format(L"%s %s", word, turned)));
      Free(moved, turned);
      ExpectAnswer(kAdd, Format(kRequest, moved, held_to, word, offset_mm),
                   Format(L"%s added between '%s' and '%s'%s.", head, moved, held_to, tail));
      ASSERT_EQ(Constraints(moved).size(), 1u);
      const bench::ComponentConstraint& added = Constraints(moved)[0];
      EXPECT_EQ(added.type, type);
      EXPECT_EQ(added.offset.has_value(), offset.has_value());
      const double units = type == 31 ? 1 : bench::MillimetresPer(unit);
      EXPECT_NEAR(added.offset.value_or(0) * units, offset.value_or(0), 1e-9);
      ExpectPoint(moved, {1, 2, 3}, point);
    }
    EXPECT_TRUE(Constraints(L"A").empty());
    ExpectPoint(L"A", {1, 2, 3}, {1, 2, 3});
  }
}

TEST_F(AssemblyConstraints, GroundingAndFloating) {
  PlaceBlocks();
  for (const wchar_t* word : {L"", L"Ground", L"fixed"}) {
    ExpectAnswer(kAdd, Format(LR"({"type":"%s","occurrence1":"b"})", word), L"Occurrence 'B' grounded.");
    ASSERT_EQ(Constraints(L"B").size(), 1u);
    EXPECT_EQ(Constraints(L"B")[0].type, 13);
    ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
  }
  for (const wchar_t* word : {L"unground", L"FLOAT"}) {
    ExpectAnswer(kAdd, Format(LR"({"type":"%s","occurrence1":"b"})", word),
                 L"Occurrence 'B' ungrounded (floated).");
    EXPECT_TRUE(Constraints(L"B").empty());
    Succeed(kAdd, LR"({"occurrence1":"B"})");
  }
}

TEST_F(AssemblyConstraints, WhatIsWrongIsToldAndLeavesNothing) {
  PlaceBlocks();
  const wchar_t* kBoth = L"'occurrence1' and 'occurrence2' are required for binary constraints.";
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {LR"({"type":"float"})", L"'occurrence1' is required for unground constraint."},
      {LR"({"type":"weld","occurrence1":"B"})", kBoth},
      // Only the lookup of other words looks past blanks.
      {LR"({"type":" ground","occurrence1":"B"})", kBoth},
      {LR"({"type":"Weld","occurrence1":"B","occurrence2":"A"})",
       L"Unknown constraint type 'weld'. Supported: ground, mate, flush, angle, tangent, insert, coincident, "
       L"concentric, distance, parallel, perpendicular, fixed, unground."},
      // Blocks have no axes.
      {LR"({"type":"insert","occurrence1":"B","occurrence2":"A"})",
       L"Failed to apply constraint between 'B' and 'A' (status=-1)."},
  };
  for (const auto& [arguments, message] : cases) ExpectFailure(kAdd, arguments, message);

  // B is the second of the first walk.
  faults().Fail("ProAsmcompMdlGet", -8, 2);
  ExpectFailure(kAdd, LR"({"type":"mate","occurrence1":"B","occurrence2":"A"})",
                L"Constraint occurrences must reference loaded models.");
  EXPECT_TRUE(Constraints(L"B").empty());
  ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
}

TEST_F(AssemblyConstraints, TheListingNamesBothSidesAndFilters) {
  PlaceBlocks();
  Succeed(kAdd, LR"({"occurrence1":"A"})");
  Succeed(kAdd, LR"({"type":"flush","occurrence1":"B","occurrence2":"A","offset_mm":1})");
  Succeed(L"api_assembly_suppress_occurrence", LR"({"occurrence_name":"B"})");
  const std::wstring ground =
      LR"({"name":"A_ground_1","type":"ground","suppressed":false,"occ1":"A","occ2":""})";
  const std::wstring flush =
      LR"({"name":"B_align_offset_1","type":"align_offset","suppressed":true,"occ1":"B","occ2":"A"})";
  const std::tuple<const wchar_t*, int, std::wstring> cases[] = {
      {L"a", 2, L"[" + ground + L"," + flush + L"]"}, {L"B|A", 1, L"[" + flush + L"]"}, {L"C", 0, L"[]"}};
  for (const auto& [filter, count, data] : cases) {
    ExpectAnswer(kList, Format(LR"({"occurrence_name":"%s"})", filter),
                 Format(L"%d constraint(s) found.", count), data);
  }
}

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
      ExpectAnswer(kAddIr,
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
  ExpectAnswer(kAddIr, LR"({"kind":"FixedRotation","refs":["B"],"param":[0,0,90]})",
               L"FixedRotation: occurrence 'B' rotated by (0\u00b0, 0\u00b0, 90\u00b0) Euler.");
  ExpectPoint(L"B", {1, 2, 3}, {30 - 2, 40 + 1, 7 + 3});
  ExpectAnswer(kAddIr, LR"({"kind":"FixedPoint","refs":["B@faces"],"param":[10 20 30 40]})",
               L"FixedPoint: occurrence 'B' positioned at (10,20,30) mm.");
  ExpectPoint(L"B", {1, 2, 3}, {10 - 2, 20 + 1, 30 + 3});
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(AssemblyIr, AFixedOccurrenceBearsOneFix) {
  PlaceBlocks();
  for (const wchar_t* kind : {L"Fixed", L"FixedAxis"}) {
    ExpectAnswer(kAddIr, Format(LR"({"kind":"%s","refs":["B"]})", kind),
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
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {LR"({"kind":"Plane","refs":[]})", L"'refs' must be a non-empty array."},
      {LR"({"kind":"Fixed","refs":["@faces"]})", kReference},
      {LR"({"kind":"fixed","refs":["B"]})", kTwo},
      {LR"({"kind":"Plane","refs":["B"," "]})", kReference},
      {LR"({"kind":"FixedPoint","refs":["@"],"param":[1,2]})", kPoint},
      {LR"({"kind":"FixedPoint","refs":["B"],"param":"1,2,3"})", kPoint},
      {LR"({"kind":"FixedRotation","refs":["B"],"param":[0,x,0]})",
       L"'param' must be [rx,ry,rz] degrees for FixedRotation."},
      {LR"({"kind":"Gear","refs":["B","A"]})",
       L"Unknown IR constraint kind 'Gear'. Supported: Fixed, Axis, Plane, Point, PointInPlane, PointOnLine, "
       L"FixedAxis, FixedPoint, FixedRotation."},
      {LR"({"kind":"Plane","refs":["B@faces@|Z","A"]})", L"No face matched selector '|Z' on 'B'."},
      {LR"({"kind":"Axis","refs":["B","A@@>W"]})", L"No face matched selector '>W' on 'A'."},
  };
  for (const auto& [arguments, message] : cases) ExpectFailure(kAddIr, arguments, message);
  EXPECT_TRUE(Constraints(L"B").empty());
  ExpectPoint(L"B", {0, 0, 0}, kPlaceOfB);
}

// The other operation has words of its own.
TEST_F(AssemblyIr, WithoutAFaceNothingIsConstrained) {
  PlaceBlocks();
  for (const auto& [occurrence, name] : {std::pair(1, L"B"), {2, L"A"}}) {
    faults().Fail("ProSolidSurfaceVisit", -8, occurrence, occurrence);
    ExpectFailure(L"api_assembly_add_constraint",
                  LR"({"type":"distance","occurrence1":"B","occurrence2":"A"})",
                  Format(L"No compatible face found on '%s'.", name));
    faults().Clear();
    faults().Fail("ProSolidSurfaceVisit", -8, occurrence, occurrence);
    ExpectFailure(kAddIr, LR"({"kind":"Plane","refs":["B","A"],"param":5})",
                  Format(L"No planar face found on '%s'.", name));
    faults().Clear();
  }
  EXPECT_TRUE(Constraints(L"B").empty());
}

TEST_F(AssemblyIr, TheConstraintIsFreedWithItsArrayAndTheSelectionsLast) {
  PlaceBlocks();
  const auto mark = host().journal.Mark();
  Succeed(kAddIr, LR"({"kind":"Plane","refs":["B@edges@>Z","A@faces"]})");
  EXPECT_THAT(CallsSince(mark, {"ProSelectionAlloc", "ProAsmcompconstraintAlloc", "ProAsmcompConstraintsSet",
                                "ProAsmcompconstraintArrayFree", "ProAsmcompconstraintFree",
                                "ProSelectionFree", "ProSolidRegenerate"}),
              testing::ElementsAre("ProSelectionAlloc", "ProSelectionAlloc", "ProAsmcompconstraintAlloc",
                                   "ProAsmcompConstraintsSet", "ProAsmcompconstraintArrayFree",
                                   "ProSelectionFree", "ProSelectionFree", "ProSolidRegenerate"));
}

}  // namespace
}  // namespace vek::support
