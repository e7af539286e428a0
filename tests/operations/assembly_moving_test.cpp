// Moving occurrences: the ladder of attempts, what is read back, and the history of moves.
#include "addin/ops/assembly/moving.h"

#include <gmock/gmock.h>

#include "addin/ops/assembly/placement.h"
#include "addin/ops/common/history.h"
#include "tests/operations/assembly_ground.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

constexpr const wchar_t* kMove = L"api_assembly_move_component";
constexpr const wchar_t* kMoveA = LR"({"occurrence_name":"A","dx_mm":10,"dy_mm":-4,"dz_mm":0.5})";
// From (1, 2, 3) by (10, -4, 0.5).
constexpr const wchar_t* kMovedData =
    LR"({"occurrence_name":"A","from_mm":[1,2,3],"to_mm":[11,-2,3.5],"delta_mm":[10,-4,0.5]})";
constexpr const wchar_t* kUnmovedData =
    LR"({"occurrence_name":"A","from_mm":[1,2,3],"to_mm":[1,2,3],"delta_mm":[0,0,0]})";
const std::vector<std::string> kRungs = {"ProAsmcompPositionSet", "ProFeatureWithoptionsRedefine",
                                         "ProFeatureWithoptionsDelete", "ProAsmcompAssemble"};

class AssemblyMoving : public AssemblyTest {
 protected:
  void SetUp() override {
    AssemblyTest::SetUp();
    part_ = &Part(L"BOLT");
    a_ = Place(*part_, L"A", {1, 2, 3}).id;
    FeatureNamed(L"A")->component->constraints.push_back({13, {}, {}, {}});
    ClearHistory();
  }

  void ExpectFailedMove(const std::wstring& message, const wchar_t* data) {
    const auto result = Run(kMove, kMoveA);
    EXPECT_FALSE(result.success);
    EXPECT_EQ(result.message, message);
    EXPECT_EQ(result.dataJson, data);
    EXPECT_TRUE(UndoStack().empty());
    EXPECT_TRUE(FeatureNamed(L"A") == nullptr || FeatureNamed(L"A")->component->constraints.empty());
  }
  void ExpectMoved() {
    const auto result = Run(kMove, kMoveA);
    EXPECT_EQ(result.message, L"Occurrence 'A' moved by (10,-4,0.5) mm.");
    EXPECT_EQ(result.dataJson, kMovedData);
    EXPECT_TRUE(result.success);
    ExpectAt(L"A", {11, -2, 3.5});
  }

  bench::Model* part_ = nullptr;
  int a_ = -1;
};

TEST_F(AssemblyMoving, AnOccurrenceLosesItsConstraintsAndStandsWhereItWasAsked) {
  ExpectMoved();
  EXPECT_EQ(FeatureNamed(L"A")->id, a_);
  EXPECT_TRUE(FeatureNamed(L"A")->component->constraints.empty());
  ASSERT_EQ(UndoStack().size(), 1u);
  const HistoryEntry& entry = UndoStack().back();
  EXPECT_EQ(entry.label, L"Move A");
  EXPECT_THAT((std::vector{entry.from_x, entry.from_y, entry.from_z}), ElementsAre(1, 2, 3));
  EXPECT_THAT((std::vector{entry.to_x, entry.to_y, entry.to_z}), ElementsAre(11, -2, 3.5));

  ExpectFailure(kMove, L"{}", L"'occurrence_name' is required.");
  NewPart();
  ExpectFailure(kMove, kMoveA, L"Assembly operations require an active assembly document.");
}

TEST_F(AssemblyMoving, AMoveByNothingIsAMove) {
  const auto result = Run(kMove, LR"({"occurrence_name":"bolt"})");
  EXPECT_EQ(result.message, L"Occurrence 'A' moved by (0,0,0) mm.");
  EXPECT_EQ(result.dataJson, kUnmovedData);
  EXPECT_TRUE(FeatureNamed(L"A")->component->constraints.empty());
  EXPECT_EQ(UndoStack().size(), 1u);
}

TEST_F(AssemblyMoving, EachRungIsClimbedOnlyWhenTheOneBelowMissed) {
  const struct {
    const char* what;
    void (*fault)(bench::FaultPlan&);
    std::vector<std::string> climbed;
    bool placed_anew;
  } cases[] = {
      {"all well", [](bench::FaultPlan&) {}, {kRungs[0]}, false},
      {"the position takes a path",
       [](bench::FaultPlan& plan) { plan.Fail("ProAsmcompPositionSet", PRO_TK_BAD_CONTEXT); },
       {kRungs[0], kRungs[0]},
       false},
      {"the position is refused",
       [](bench::FaultPlan& plan) { plan.Fail("ProAsmcompPositionSet", PRO_TK_BAD_CONTEXT, 1, 2); },
       {kRungs[0], kRungs[0], kRungs[1]},
       false},
      {"the position is not taken",
       [](bench::FaultPlan& plan) { plan.NoEffect("ProAsmcompPositionSet"); },
       {kRungs[0], kRungs[1]},
       false},
      {"the redefinition is not taken",
       [](bench::FaultPlan& plan) {
         plan.NoEffect("ProAsmcompPositionSet");
         plan.NoEffect("ProFeatureWithoptionsRedefine");
       },
       {kRungs[0], kRungs[1], kRungs[2], kRungs[3], kRungs[0]},
       true},
      {"the redefinition is refused",
       [](bench::FaultPlan& plan) {
         plan.NoEffect("ProAsmcompPositionSet");
         plan.Fail("ProFeatureWithoptionsRedefine", PRO_TK_GENERAL_ERROR);
         plan.Before(
             "ProAsmcompRegenerate", [] {}, 1);
       },
       {kRungs[0], kRungs[1], kRungs[2], kRungs[3], kRungs[0]},
       true},
  };
  for (const auto& [what, fault, climbed, placed_anew] : cases) {
    SCOPED_TRACE(what);
    bench::Feature& before = *FeatureNamed(L"A");
    before.component->place = bench::Shifted(bench::kNoMove, {1, 2, 3});
    const int id = before.id;
    fault(faults());
    const std::uint64_t mark = host().journal.Mark();
    ExpectMoved();
    faults().Clear();
    EXPECT_EQ(CallsSince(mark, kRungs), climbed);
    EXPECT_EQ(FeatureNamed(L"A")->id != id, placed_anew);
  }
}

TEST_F(AssemblyMoving, ANameThatCameOfTheIdOutlivesIt) {
  bench::Feature& unnamed = Place(*part_, L"");
  const std::wstring name = Format(L"COMP_%d", unnamed.id);
  faults().NoEffect("ProAsmcompPositionSet");
  faults().NoEffect("ProFeatureWithoptionsRedefine");
  Succeed(kMove, Format(LR"({"occurrence_name":"%s","dz_mm":6})", name));
  ExpectAt(name, {0, 0, 6});
  EXPECT_NE(Format(L"COMP_%d", FeatureNamed(name)->id), name);
}

TEST_F(AssemblyMoving, ALastResortThatFailsTellsWhy) {
  const struct {
    const char* call;
    int first, last;
    const wchar_t* reason;
    const wchar_t* data;
  } cases[] = {
      // The model is asked for once by the lookup before.
      {"ProAsmcompMdlGet", 2, 2, L"Failed to resolve model for occurrence 'A' during reassemble move.",
       kUnmovedData},
      // The redefinition's options are the first array.
      {"ProArrayAlloc", 2, 2, L"Failed to allocate feature-id array for delete.", kUnmovedData},
      {"ProArrayAlloc", 3, 3, L"Failed to allocate delete options.", kUnmovedData},
      {"ProFeatureWithoptionsDelete", 1, 1,
       L"Failed to delete occurrence 'A' for reassemble move (status=-1).", kUnmovedData},
      {"ProAsmcompAssemble", 1, 1, L"Failed to reassemble occurrence 'A' at new pose (status=-1).",
       // Nothing is left whose place could be read.
       LR"({"occurrence_name":"A","from_mm":[1,2,3],"to_mm":[0,0,0],"delta_mm":[-1,-2,-3]})"},
  };
  for (const auto& [call, first, last, reason, data] : cases) {
    SCOPED_TRACE(call);
    faults().NoEffect("ProAsmcompPositionSet");
    faults().NoEffect("ProFeatureWithoptionsRedefine");
    faults().Fail(call, PRO_TK_GENERAL_ERROR, first, last);
    ExpectFailedMove(Format(L"Failed to persist placement for 'A' (PositionSet status=0; %s).", reason),
                     data);
    faults().Clear();
  }
  EXPECT_EQ(FeatureNamed(L"A"), nullptr);
}

TEST_F(AssemblyMoving, ASeatThatIsNotTakenIsTriedOnceMoreAndReported) {
  faults().NoEffect("ProAsmcompPositionSet", 1, 3);
  faults().NoEffect("ProFeatureWithoptionsRedefine");
  // The third regeneration is that of the new component: it is pushed away just before.
  const auto push_away = [this] {
    assembly().features.back()->component->place = bench::Shifted(bench::kNoMove, {0, 0, 9});
  };
  faults().Before("ProAsmcompRegenerate", push_away, 3);
  ExpectFailedMove(
      L"Failed to persist placement for 'A' (PositionSet status=0; Reassemble placed 'A' but seed pose "
      L"stayed "
      L"at (0,0,9); requested (11,-2,3.5).).",
      LR"({"occurrence_name":"A","from_mm":[1,2,3],"to_mm":[0,0,9],"delta_mm":[-1,-2,6]})");
  faults().Clear();
  // With a position that is taken at the second try all is well.
  faults().NoEffect("ProAsmcompPositionSet", 1, 2);
  faults().NoEffect("ProFeatureWithoptionsRedefine");
  faults().Before("ProAsmcompRegenerate", push_away, 3);
  Succeed(kMove, LR"({"occurrence_name":"A","dx_mm":5})");
  ExpectAt(L"A", {5, 0, 9});
}

TEST_F(AssemblyMoving, AnOccurrenceThatWandersOffAfterwardsHasNotMoved) {
  faults().Before("ProTreetoolRefresh", [this] {
    FeatureNamed(L"A")->component->place = bench::Shifted(bench::kNoMove, {1, 2, 8});
  });
  ExpectFailedMove(L"Occurrence 'A' pose did not update (requested delta (10,-4,0.5) mm).",
                   LR"({"occurrence_name":"A","from_mm":[1,2,3],"to_mm":[1,2,8],"delta_mm":[0,0,5]})");
}

TEST_F(AssemblyMoving, ThePlaceIsReadByEitherWay) {
  // Neither way tells anything before the move: that ends it before the constraints are gone.
  faults().Fail("ProAsmcompPositionGet", PRO_TK_GENERAL_ERROR, 1, 2);
  faults().Fail("ProAsmcomppathTrfGet", PRO_TK_GENERAL_ERROR);
  ExpectFailure(kMove, kMoveA, L"Failed to read position for occurrence 'A'.");
  EXPECT_EQ(FeatureNamed(L"A")->component->constraints.size(), 1u);
  faults().Clear();
  // The first reading by the path; of the last ones the path's too: the own position reads as the identity.
  faults().Fail("ProAsmcompPositionGet", PRO_TK_GENERAL_ERROR);
  faults().Fail("ProAsmcompPositionGet", PRO_TK_GENERAL_ERROR, 3);
  ExpectMoved();
}

TEST_F(AssemblyMoving, WhatEndsItBeforeTheAttemptsHasNoData) {
  faults().Fail("ProFeatureInit", PRO_TK_E_NOT_FOUND);
  ExpectFailure(kMove, kMoveA, Format(L"Failed to refresh component handle id=%d (status=-4).", a_));
  faults().Clear();
  faults().Fail("ProAsmcomppathInit", PRO_TK_E_NOT_FOUND);
  ExpectFailedMove(L"Failed to build component path for 'A' (status=-4).", kUnmovedData);
}

TEST_F(AssemblyMoving, MillimetresBecomeModelUnits) {
  assembly().length_unit = bench::LengthUnit::kInch;
  // 25.4 mm are an inch; (1, 2, 3) inches are (25.4, 50.8, 76.2) mm.
  const auto data = Run(kMove, LR"({"occurrence_name":"A","dx_mm":25.4})").dataJson;
  ExpectAt(L"A", {2, 2, 3});
  EXPECT_EQ(data,
            LR"({"occurrence_name":"A","from_mm":[25.4,50.8,76.2],"to_mm":[50.8,50.8,76.2],)"
            LR"("delta_mm":[25.4,0,0]})");
}

TEST_F(AssemblyMoving, MovesAreUndoneAndDoneAgainByTheirDifference) {
  ExpectMoved();
  // It goes back by what it moved, from where it stands now.
  FeatureNamed(L"A")->component->place = bench::Shifted(bench::kNoMove, {100, 0, 0});
  Succeed(L"api_document_undo");
  ExpectAt(L"A", {90, 4, -0.5});
  Succeed(L"api_document_redo");
  ExpectAt(L"A", {100, 0, 0});
  EXPECT_EQ(UndoStack().size(), 1u);
  EXPECT_TRUE(RedoStack().empty());
}

TEST_F(AssemblyMoving, ARedefinitionTellsWhichStepFailed) {
  const struct {
    const char* call;
    const wchar_t* message;
  } cases[] = {
      {"ProFeatureElemtreeExtract", L"Failed to extract component element tree (status=-1)."},
      {"ProElempathAlloc", L"Failed to allocate element path."},
      {"ProElemtreeElementGet", L"Component element tree has no PRO_E_COMPONENT_INIT_POS."},
      {"ProElementTransformSet", L"Failed to set INIT_POS transform."},
      {"ProFeatureWithoptionsRedefine", L"Failed to redefine component INIT_POS (status=-1, errors=0)."},
  };
  const auto to = assembly::TranslationInColumn({7, 8, 9});
  for (const auto& [call, message] : cases) {
    faults().Fail(call, PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(assembly::RedefineInitPos(Record(assembly(), *FeatureNamed(L"A")), to).message, message);
    faults().Clear();
    ExpectAt(L"A", {1, 2, 3});
  }
  EXPECT_TRUE(assembly::RedefineInitPos(Record(assembly(), *FeatureNamed(L"A")), to).success);
  ExpectAt(L"A", {7, 8, 9});
  EXPECT_TRUE(FeatureNamed(L"A")->component->constraints.empty());
}

TEST_F(AssemblyMoving, AWholePoseKeepsItsRotationButOnTheLastRung) {
  const std::array<double, 4> turned = {0, -1, 0, 4}, unturned = {1, 0, 0, 4};
  const struct {
    bool set, redefined;
    const std::array<double, 4>& row;
  } cases[] = {{true, true, turned}, {false, true, turned}, {false, false, unturned}};
  assembly::Pose pose = assembly::TranslationInRow({4, 5, 6});
  pose.matrix[0][0] = pose.matrix[1][1] = 0;
  pose.matrix[0][1] = -1;
  pose.matrix[1][0] = 1;
  for (const auto& [set, redefined, row] : cases) {
    bench::Feature& before = *FeatureNamed(L"A");
    before.component->place = bench::kNoMove;
    assembly::OccurrenceInfo info;
    ASSERT_TRUE(assembly::ResolveOccurrence(bench::Handle(assembly()), L"A", info).success);
    if (!set) faults().NoEffect("ProAsmcompPositionSet");
    if (!redefined) faults().NoEffect("ProFeatureWithoptionsRedefine");
    EXPECT_TRUE(assembly::PersistPose(bench::Handle(assembly()), info, pose).success);
    faults().Clear();
    EXPECT_EQ(FeatureNamed(L"A")->component->place[0], row);
    EXPECT_EQ(FeatureNamed(L"A")->id, info.id);
    ExpectAt(L"A", {4, 5, 6});
  }
}

}  // namespace
}  // namespace vek::support
