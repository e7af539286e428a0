// Moving occurrences: the ladder of attempts, what is read back, and the history of moves.
#include "addin/ops/assembly/moving.h"

#include <gmock/gmock.h>

#include <functional>
#include <tuple>

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

class AssemblyMoving : public AssemblyTest {
 protected:
  void SetUp() override {
    AssemblyTest::SetUp();
    part_ = &Part(L"BOLT");
    a_ = Place(*part_, L"A", {1, 2, 3}).id;
    Constraints(L"A").push_back({13, {}, {}, {}});
    ClearHistory();
  }

  void PutA(const bench::Vector3& at) { PlaceOf(L"A") = bench::Shifted(bench::kNoMove, at); }
  // Nothing but placing anew helps, and then as many positions aren't taken.
  void LeaveTheLastRung(int seats_missed = 0) {
    faults().NoEffect("ProAsmcompPositionSet", 1, 1 + seats_missed);
    faults().NoEffect("ProFeatureWithoptionsRedefine");
  }

  void ExpectFailedMove(const std::wstring& message, const wchar_t* data) {
    const auto result = Run(kMove, kMoveA);
    faults().Clear();
    EXPECT_FALSE(result.success);
    EXPECT_EQ(result.message, message);
    EXPECT_EQ(result.dataJson, data);
    EXPECT_TRUE(UndoStack().empty());
    EXPECT_TRUE(FeatureNamed(L"A") == nullptr || Constraints(L"A").empty());
  }
  void ExpectMoved() {
    ExpectAnswer(kMove, kMoveA, L"Occurrence 'A' moved by (10,-4,0.5) mm.", kMovedData);
    faults().Clear();
    ExpectAt(L"A", {11, -2, 3.5});
  }

  bench::Model* part_ = nullptr;
  int a_ = -1;
};

TEST_F(AssemblyMoving, AnOccurrenceLosesItsConstraintsAndStandsWhereItWasAsked) {
  ExpectMoved();
  EXPECT_EQ(Occurrence(L"A").id, a_);
  EXPECT_TRUE(Constraints(L"A").empty());
  ASSERT_EQ(UndoStack().size(), 1u);
  const HistoryEntry& entry = UndoStack().back();
  EXPECT_EQ(entry.label, L"Move A");
  EXPECT_THAT((std::vector{entry.from_x, entry.from_y, entry.from_z}), ElementsAre(1, 2, 3));
  EXPECT_THAT((std::vector{entry.to_x, entry.to_y, entry.to_z}), ElementsAre(11, -2, 3.5));

  // It goes back by what it moved, from where it stands now.
  PutA({100, 0, 0});
  Succeed(L"api_document_undo");
  ExpectAt(L"A", {90, 4, -0.5});
  Succeed(L"api_document_redo");
  ExpectAt(L"A", {100, 0, 0});
  // Among other steps: what is suppressed can't be moved, so their order matters.
  Succeed(L"api_assembly_suppress_occurrence", LR"({"occurrence_name":"A"})");
  Succeed(L"api_document_undo", LR"({"count":2})");
  ExpectAt(L"A", {90, 4, -0.5});
  EXPECT_EQ(Occurrence(L"A").status, PRO_FEAT_ACTIVE);
  Succeed(L"api_document_redo", LR"({"count":2})");
  ExpectAt(L"A", {100, 0, 0});
  EXPECT_EQ(Occurrence(L"A").status, PRO_FEAT_SUPPRESSED);
  EXPECT_EQ(UndoStack().size(), 2u);
  EXPECT_TRUE(RedoStack().empty());
}

TEST_F(AssemblyMoving, AMoveByNothingIsAMove) {
  ExpectAnswer(kMove, LR"({"occurrence_name":"bolt"})", L"Occurrence 'A' moved by (0,0,0) mm.", kUnmovedData);
  EXPECT_TRUE(Constraints(L"A").empty());
  EXPECT_EQ(UndoStack().size(), 1u);
}

TEST_F(AssemblyMoving, AMoveToNoNumberLeavesTheOccurrenceWhereItIs) {
  const auto result = Run(kMove, LR"({"occurrence_name":"A","dx_mm":nan})");
  EXPECT_EQ(
      result.message,
      L"Failed to persist placement for 'A' (PositionSet status=-2; The target position is not finite.).");
  EXPECT_EQ(result.dataJson, kUnmovedData);
  EXPECT_EQ(bench::TranslationOf(PlaceOf(L"A")), (bench::Vector3{1, 2, 3}));
}

TEST_F(AssemblyMoving, EachRungIsClimbedOnlyWhenTheOneBelowMissed) {
  const std::string set = "ProAsmcompPositionSet", redefine = "ProFeatureWithoptionsRedefine",
                    erase = "ProFeatureWithoptionsDelete", assemble = "ProAsmcompAssemble";
  const std::vector<std::string> to_the_top = {set, redefine, erase, assemble, set};
  const std::tuple<const char*, std::function<void()>, std::vector<std::string>> cases[] = {
      {"all well", [] {}, {set}},
      {"the position takes a path", [&] { faults().Fail(set, PRO_TK_BAD_CONTEXT); }, {set, set}},
      {"the position is refused",
       [&] { faults().Fail(set, PRO_TK_BAD_CONTEXT, 1, 2); },
       {set, set, redefine}},
      {"the position is not taken", [&] { faults().NoEffect(set); }, {set, redefine}},
      {"the redefinition is not taken", [&] { LeaveTheLastRung(); }, to_the_top},
      {"the redefinition is refused",
       [&] {
         faults().NoEffect(set);
         faults().Fail(redefine, PRO_TK_GENERAL_ERROR);
       },
       to_the_top},
  };
  for (const auto& [what, hinder, climbed] : cases) {
    SCOPED_TRACE(what);
    PutA({1, 2, 3});
    const int id = Occurrence(L"A").id;
    hinder();
    const std::uint64_t mark = host().journal.Mark();
    ExpectMoved();
    EXPECT_EQ(CallsSince(mark, {set, redefine, erase, assemble}), climbed);
    EXPECT_EQ(Occurrence(L"A").id != id, climbed == to_the_top);
  }
}

TEST_F(AssemblyMoving, ANameThatCameOfTheIdOutlivesIt) {
  bench::Feature& unnamed = Place(*part_, L"");
  const std::wstring name = Format(L"COMP_%d", unnamed.id);
  LeaveTheLastRung();
  Succeed(kMove, Format(LR"({"occurrence_name":"%s","dz_mm":6})", name));
  ExpectAt(name, {0, 0, 6});
  EXPECT_NE(Format(L"COMP_%d", Occurrence(name).id), name);
}

TEST_F(AssemblyMoving, ALastResortThatFailsTellsWhy) {
  const struct {
    const char* call;
    const wchar_t *reason, *data;
  } cases[] = {
      {"ProFeatureWithoptionsDelete", L"Failed to delete occurrence 'A' for reassemble move (status=-1).",
       kUnmovedData},
      // Nothing is left whose place could be read.
      {"ProAsmcompAssemble", L"Failed to reassemble occurrence 'A' at new pose (status=-1).",
       LR"({"occurrence_name":"A","from_mm":[1,2,3],"to_mm":[0,0,0],"delta_mm":[-1,-2,-3]})"},
  };
  for (const auto& [call, reason, data] : cases) {
    SCOPED_TRACE(call);
    LeaveTheLastRung();
    faults().Fail(call, PRO_TK_GENERAL_ERROR);
    ExpectFailedMove(Format(L"Failed to persist placement for 'A' (PositionSet status=0; %s).", reason),
                     data);
  }
  EXPECT_EQ(FeatureNamed(L"A"), nullptr);
}

TEST_F(AssemblyMoving, ASeatThatIsNotTakenIsTriedOnceMoreAndReported) {
  // The third regeneration is that of the new component: it is pushed away just before.
  const auto push_away = [this] {
    assembly().features.back()->component->place = bench::Shifted(bench::kNoMove, {0, 0, 9});
  };
  LeaveTheLastRung(2);
  faults().Before("ProAsmcompRegenerate", push_away, 3);
  ExpectFailedMove(
      L"Failed to persist placement for 'A' (PositionSet status=0; Reassemble placed 'A' but seed pose "
      L"stayed at (0,0,9); requested (11,-2,3.5).).",
      LR"({"occurrence_name":"A","from_mm":[1,2,3],"to_mm":[0,0,9],"delta_mm":[-1,-2,6]})");
  LeaveTheLastRung(1);
  faults().Before("ProAsmcompRegenerate", push_away, 3);
  Succeed(kMove, LR"({"occurrence_name":"A","dx_mm":5})");
  ExpectAt(L"A", {5, 0, 9});
}

TEST_F(AssemblyMoving, WhereItEndedUpIsReadByEitherWay) {
  // Neither way tells anything before the move: that ends it before the constraints are gone.
  faults().Fail("ProAsmcompPositionGet", PRO_TK_GENERAL_ERROR, 1, 2);
  faults().Fail("ProAsmcomppathTrfGet", PRO_TK_GENERAL_ERROR);
  ExpectFailure(kMove, kMoveA, L"Failed to read position for occurrence 'A'.");
  faults().Clear();
  EXPECT_EQ(Constraints(L"A").size(), 1u);

  // The first reading by the path; of the last ones the path's too: the own position reads as the identity.
  faults().Fail("ProAsmcompPositionGet", PRO_TK_GENERAL_ERROR);
  faults().Fail("ProAsmcompPositionGet", PRO_TK_GENERAL_ERROR, 3);
  ExpectMoved();

  // What wanders off afterwards has not moved.
  PutA({1, 2, 3});
  ClearHistory();
  faults().Before("ProTreetoolRefresh", [this] { PutA({1, 2, 8}); });
  ExpectFailedMove(L"Occurrence 'A' pose did not update (requested delta (10,-4,0.5) mm).",
                   LR"({"occurrence_name":"A","from_mm":[1,2,3],"to_mm":[1,2,8],"delta_mm":[0,0,5]})");
}

TEST_F(AssemblyMoving, MillimetresBecomeModelUnits) {
  assembly().length_unit = bench::LengthUnit::kInch;
  // 25.4 mm are an inch; (1, 2, 3) inches are (25.4, 50.8, 76.2) mm.
  EXPECT_EQ(Run(kMove, LR"({"occurrence_name":"A","dx_mm":25.4})").dataJson,
            LR"({"occurrence_name":"A","from_mm":[25.4,50.8,76.2],"to_mm":[50.8,50.8,76.2],)"
            LR"("delta_mm":[25.4,0,0]})");
  ExpectAt(L"A", {2, 2, 3});
}

TEST_F(AssemblyMoving, ConstraintsThatCouldNotBeTakenAwayGoWithTheRedefinition) {
  faults().Fail("ProAsmcompAllConstrRemove", PRO_TK_GENERAL_ERROR);
  faults().NoEffect("ProAsmcompPositionSet");
  ExpectMoved();
  EXPECT_TRUE(Constraints(L"A").empty());
}

TEST_F(AssemblyMoving, AWholePoseKeepsItsRotationButOnTheLastRung) {
  const std::array<double, 4> turned = {0, -1, 0, 4}, unturned = {1, 0, 0, 4};
  const assembly::Pose pose = {{{0, -1, 0, 0}, {1, 0, 0, 0}, {0, 0, 1, 0}, {4, 5, 6, 1}}};
  for (const bool last : {false, true}) {
    assembly::OccurrenceInfo info;
    ASSERT_TRUE(assembly::ResolveOccurrence(bench::Handle(assembly()), L"A", info).success);
    faults().NoEffect("ProAsmcompPositionSet");
    if (last) faults().NoEffect("ProFeatureWithoptionsRedefine");
    EXPECT_TRUE(assembly::PersistPose(bench::Handle(assembly()), info, pose).success);
    faults().Clear();
    EXPECT_EQ(PlaceOf(L"A")[0], last ? unturned : turned);
    EXPECT_EQ(Occurrence(L"A").id, info.id);
    ExpectAt(L"A", {4, 5, 6});
    PutA({0, 0, 0});
  }
}

}  // namespace
}  // namespace vek::support
