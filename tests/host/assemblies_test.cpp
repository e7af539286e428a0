// Components in assemblies: blocks of 40 × 20 × 10 that lie on FRONT, with a corner in their origin.
#include <ProAsmcomp.h>
#include <ProIntf.h>
#include <ProMatrix.h>
#include <ProSelection.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <numbers>

#include "bench/host/model/component.h"
#include "bench/host/model/extent.h"
#include "bench/host/storage/model_store.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::MdlNameBuffer;
using support::PathBuffer;

constexpr double kHalf = std::numbers::sqrt2 / 2;

struct Side {
  Vector3 normal;
  double distance;
};
constexpr Side kTop{{0, 0, 1}, 10}, kBottom{{0, 0, -1}, 0}, kRight{{1, 0, 0}, 40}, kLeft{{-1, 0, 0}, 0};

class AssembliesTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    if (HasFatalFailure()) return;
    Extrude(*part_, Plate(), {});
    assembly_ = &NewAssembly(L"FRAME");
    base_ = Place(*part_, {0, 0, 0});
    mover_ = Place(*part_, {100, 50, 70});
  }

  ProSolid Assembly() { return SolidHandle(*assembly_); }

  ProAsmcomp Place(Model& model, const Vector3& at, Matrix turn = kNoMove, Model* into = nullptr) {
    ProMatrix place;
    WriteMatrix(Shifted(turn, at), place);
    ProAsmcomp component{};
    EXPECT_EQ(
        ProAsmcompAssemble(SolidHandle(into ? *into : *assembly_), SolidHandle(model), place, &component),
        PRO_TK_NO_ERROR);
    return component;
  }
  const Component& At(const ProAsmcomp& component) {
    return *host().session.Find(component.owner)->FindFeature(component.id)->component;
  }
  void ExpectAt(const ProAsmcomp& component, const Vector3& origin) {
    EXPECT_LT(Length(TranslationOf(At(component).place) - origin), 1e-6)
        << testing::PrintToString(TranslationOf(At(component).place));
  }

  ProModelitem Face(Model& model, const Side& side) {
    for (const FaceInfo& face : model.topology.faces)
      if (face.type == "plane" && Length(face.normal - side.normal) < 1e-6 &&
          std::abs(Dot(face.point, side.normal) - side.distance) < 1e-6)
        return {PRO_SURFACE, model.ids_of_keys.at(face.key), &model};
    ADD_FAILURE() << "no such face";
    return {};
  }
  ProModelitem Cylinder(Model& model) {
    for (const FaceInfo& face : model.topology.faces)
      if (face.type == "cylinder") return {PRO_SURFACE, model.ids_of_keys.at(face.key), &model};
    ADD_FAILURE() << "no cylinder";
    return {};
  }

  struct Wanted {
    int type;
    std::vector<int> path;  // to what holds
    ProModelitem holds;
    ProModelitem held;
    std::optional<double> offset{};
  };
  ProError Hold(ProAsmcomp component, const std::vector<Wanted>& set) {
    ProArray array = nullptr;
    EXPECT_EQ(ProArrayAlloc(0, sizeof(ProAsmcompconstraint), 1, &array), PRO_TK_NO_ERROR);
    for (const Wanted& each : set) {
      ProAsmcompconstraint constraint = nullptr;
      EXPECT_EQ(ProAsmcompconstraintAlloc(&constraint), PRO_TK_NO_ERROR);
      EXPECT_EQ(ProAsmcompconstraintTypeSet(constraint, static_cast<ProAsmcompConstrType>(each.type)),
                PRO_TK_NO_ERROR);
      if (each.type != 13) SetReferences(constraint, each);
      if (each.offset) {
        EXPECT_EQ(ProAsmcompconstraintOffsetSet(constraint, *each.offset), PRO_TK_NO_ERROR);
      }
      EXPECT_EQ(ProArrayObjectAdd(&array, -1, 1, &constraint), PRO_TK_NO_ERROR);
    }
    auto* constraints = static_cast<ProAsmcompconstraint*>(array);
    const ProError status = ProAsmcompConstraintsSet(nullptr, &component, constraints);
    EXPECT_EQ(ProAsmcompconstraintArrayFree(constraints), PRO_TK_NO_ERROR);
    return status;
  }
  void SetReferences(ProAsmcompconstraint constraint, Wanted each) {
    ProAsmcomppath path;
    ProSelection holds = nullptr, held = nullptr;
    EXPECT_EQ(ProAsmcomppathInit(Assembly(), each.path.data(), static_cast<int>(each.path.size()), &path),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionAlloc(&path, &each.holds, &holds), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionAlloc(nullptr, &each.held, &held), PRO_TK_NO_ERROR);
    const ProDatumside side = PRO_DATUM_SIDE_NONE;
    EXPECT_EQ(ProAsmcompconstraintAsmreferenceSet(constraint, holds, side), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProAsmcompconstraintCompreferenceSet(constraint, held, side), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionFree(&holds), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionFree(&held), PRO_TK_NO_ERROR);
  }
  // Held to a face of the base.
  ProError HoldToBase(int type, const Side& on_base, const Side& on_mover,
                      std::optional<double> offset = {}) {
    return Hold(mover_, {{type, {base_.id}, Face(*part_, on_base), Face(*part_, on_mover), offset}});
  }

  Model* assembly_ = nullptr;
  ProAsmcomp base_{}, mover_{};
};

TEST_F(AssembliesTest, AConstraintMovesItsComponentAsLittleAsItAsks) {
  // The mover's origin is at (100, 50, 70); where it turns, it turns about that.
  const struct {
    const char* what;
    int type;
    Side on_base, on_mover;
    std::optional<double> offset;
    Vector3 origin;       // of the mover afterwards
    Vector3 mover_sense;  // of its face, in the assembly
  } cases[] = {
      {"mate: bottom on top at z = 10", 0, kTop, kBottom, {}, {100, 50, 10}, {0, 0, -1}},
      {"mate of tops: a half turn, the top 10 below the origin",
       0,
       kTop,
       kTop,
       {},
       {100, 50, 20},
       {0, 0, -1}},
      {"mate 5 above", 1, kTop, kBottom, 5, {100, 50, 15}, {0, 0, -1}},
      {"mate along -x: the left side looks that way", 1, kLeft, kRight, 5, {-45, 50, 70}, {1, 0, 0}},
      {"align: tops level", 2, kTop, kTop, {}, {100, 50, 0}, {0, 0, 1}},
      {"align 3 below", 3, kTop, kTop, -3, {100, 50, -3}, {0, 0, 1}},
      {"parallel already", 5, kTop, kBottom, {}, {100, 50, 70}, {0, 0, -1}},
      {"perpendicular already", 34, kTop, kRight, {}, {100, 50, 70}, {1, 0, 0}},
      {"45° from z on the way to x", 31, kTop, kRight, 45, {100, 50, 70}, {kHalf, 0, kHalf}},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    ProMatrix start;
    WriteMatrix(Shifted(kNoMove, {100, 50, 70}), start);
    ASSERT_EQ(ProAsmcompPositionSet(nullptr, &mover_, start), PRO_TK_NO_ERROR);
    EXPECT_EQ(HoldToBase(each.type, each.on_base, each.on_mover, each.offset), PRO_TK_NO_ERROR);
    ExpectAt(mover_, each.origin);
    EXPECT_LT(Length(TurnedBy(At(mover_).place, each.on_mover.normal) - each.mover_sense), 1e-6);
    ExpectAt(base_, {0, 0, 0});
  }
}

TEST_F(AssembliesTest, WhatMakesNoSenseOrContradictsItselfIsRefusedAndNothingMoves) {
  const auto top = Face(*part_, kTop), bottom = Face(*part_, kBottom);
  ASSERT_EQ(HoldToBase(0, kTop, kBottom), PRO_TK_NO_ERROR);
  const std::vector<Wanted> cases[] = {
      {{4, {base_.id}, top, bottom}},
      {{7, {base_.id}, top, bottom}},
      {{99, {base_.id}, top, bottom}},
      {{0, {mover_.id}, top, bottom}},
      {{1, {base_.id}, top, bottom, 5}, {1, {base_.id}, top, bottom, 6}},
      {{13, {}, {}, {}}, {1, {base_.id}, top, bottom, 5}},
  };
  for (const auto& set : cases) {
    SCOPED_TRACE(set.front().type);
    EXPECT_NE(Hold(mover_, set), PRO_TK_NO_ERROR);
    ExpectAt(mover_, {100, 50, 10});
    EXPECT_EQ(At(mover_).constraints.size(), 1u);
  }
  EXPECT_NE(Hold(base_, {{0, {mover_.id}, top, bottom}}), PRO_TK_NO_ERROR) << "in a circle";
}

TEST_F(AssembliesTest, WhatIsHeldFollowsAndTakesItsHoldersFateIntoAccount) {
  ASSERT_EQ(HoldToBase(0, kTop, kBottom), PRO_TK_NO_ERROR);
  ProMatrix raised;
  double x[] = {1, 0, 0}, y[] = {0, 1, 0}, z[] = {0, 0, 1}, up[] = {0, 0, 25};
  ASSERT_EQ(ProMatrixInit(x, y, z, up, raised), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProAsmcompPositionSet(nullptr, &base_, raised), PRO_TK_NO_ERROR);
  ExpectAt(mover_, {100, 50, 10});
  EXPECT_EQ(ProSolidRegenerate(Assembly(), 16), PRO_TK_NO_ERROR);
  ExpectAt(mover_, {100, 50, 25 + 10});

  int* ids = nullptr;
  ASSERT_EQ(ProArrayAlloc(1, sizeof(int), 1, reinterpret_cast<ProArray*>(&ids)), PRO_TK_NO_ERROR);
  ProFeatureDeleteOptions* options = nullptr;
  ASSERT_EQ(ProArrayAlloc(1, sizeof(int), 1, reinterpret_cast<ProArray*>(&options)), PRO_TK_NO_ERROR);
  ids[0] = base_.id;
  EXPECT_EQ(ProFeatureWithoptionsDelete(Assembly(), ids, options, 0), PRO_TK_BAD_CONTEXT);
  EXPECT_EQ(ProAsmcompAllConstrRemove(&mover_), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProFeatureWithoptionsDelete(Assembly(), ids, options, 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProArrayFree(reinterpret_cast<ProArray*>(&ids)), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProArrayFree(reinterpret_cast<ProArray*>(&options)), PRO_TK_NO_ERROR);
  ExpectAt(mover_, {100, 50, 35});
}

TEST_F(AssembliesTest, InsertBringsAxesOntoOneLineAndTangentLaysRoundOnFlat) {
  Model& pin = NewPart(L"PIN");
  const ProFeature circle =
      Sketch(pin, L"ROUND", L"FRONT", [](ProSection section) { support::AddCircle(section, 0, 0, 5); });
  ASSERT_EQ(Extrude(pin, circle, {.depth = 30}).status, PRO_TK_NO_ERROR);
  const ProAsmcomp still = Place(pin, {10, 20, 0}), moved = Place(pin, {50, 60, 7});
  const ProModelitem round = Cylinder(pin);
  EXPECT_EQ(Hold(moved, {{4, {still.id}, round, round}}), PRO_TK_NO_ERROR);
  ExpectAt(moved, {10, 20, 7});
  // The right side is at x = 40, the axis 5 in front of it.
  EXPECT_EQ(Hold(moved, {{7, {base_.id}, Face(*part_, kRight), round}}), PRO_TK_NO_ERROR);
  ExpectAt(moved, {40 + 5, 20, 7});
  // Along x from the still one's axis at (10, 20): 35 now, 5 + 5 where they touch.
  EXPECT_EQ(Hold(moved, {{7, {still.id}, round, round}}), PRO_TK_NO_ERROR);
  ExpectAt(moved, {10 + 5 + 5, 20, 7});
}

TEST_F(AssembliesTest, PathsLeadThroughSubassembliesAndUnits) {
  Model& outer = NewAssembly(L"OUTER");
  outer.length_unit = LengthUnit::kInch;
  assembly_->features[5]->component->place = kNoMove;
  // The frame a quarter turn about z at (1, 0, 2) inches: x runs along y.
  const ProAsmcomp frame =
      Place(*assembly_, {1, 0, 2}, Turned(kNoMove, {0, 0, 1}, std::numbers::pi / 2), &outer);
  const ProAsmcomp free = Place(*part_, {0, 0, 9}, kNoMove, &outer);
  int ids[PRO_MAX_ASSEM_LEVEL] = {frame.id, mover_.id};
  ProMatrix start, place;
  WriteMatrix(Shifted(kNoMove, {25.4, 0, 0}), start);
  ASSERT_EQ(ProAsmcompPositionSet(nullptr, &mover_, start), PRO_TK_NO_ERROR);
  ProAsmcomppath path;
  ASSERT_EQ(ProAsmcomppathInit(SolidHandle(outer), ids, 2, &path), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProAsmcomppathTrfGet(&path, PRO_B_TRUE, place), PRO_TK_NO_ERROR);
  EXPECT_LT(Length(TranslationOf(MatrixOf(place)) - Vector3{1, 1, 2}), 1e-9);
  assembly_ = &outer;
  EXPECT_EQ(Hold(free, {{0, {frame.id, mover_.id}, Face(*part_, kTop), Face(*part_, kBottom)}}),
            PRO_TK_NO_ERROR);
  ExpectAt(free, {0, 0, 2 + 10 / 25.4});

  ProModelitem of_no_part = Face(*part_, kTop);
  of_no_part = {PRO_FEATURE, frame.id, &outer};
  ProSelection selection = nullptr;
  EXPECT_EQ(ProSelectionAlloc(&path, &of_no_part, &selection), PRO_TK_BAD_INPUTS);
  ids[1] = 4711;
  EXPECT_EQ(ProAsmcomppathInit(SolidHandle(outer), ids, 2, &path), PRO_TK_E_NOT_FOUND);
  ProMatrix at;
  WriteMatrix(kNoMove, at);
  ProAsmcomp none{};
  EXPECT_NE(ProAsmcompAssemble(SolidHandle(*host().session.FindByName(L"FRAME", PRO_MDL_ASSEMBLY)),
                               SolidHandle(outer), at, &none),
            PRO_TK_NO_ERROR)
      << "into itself";
}

TEST_F(AssembliesTest, AnInitialPositionPlacesAnewAndDropsTheConstraintsThatItsTreeLacks) {
  ASSERT_EQ(HoldToBase(0, kTop, kBottom), PRO_TK_NO_ERROR);
  ProElement tree = nullptr;
  ASSERT_EQ(ProFeatureElemtreeExtract(&mover_, nullptr, PRO_FEAT_EXTRACT_NO_OPTS, &tree), PRO_TK_NO_ERROR);
  ProElempath path = nullptr;
  ASSERT_EQ(ProElempathAlloc(&path), PRO_TK_NO_ERROR);
  ProElempathItem item{PRO_ELEM_PATH_ITEM_ID, {611}};
  ProElement element = nullptr;
  ASSERT_EQ(ProElempathDataSet(path, &item, 1), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProElemtreeElementGet(tree, path, &element), PRO_TK_NO_ERROR);
  ProMatrix place;
  WriteMatrix(Shifted(kNoMove, {1, 2, 3}), place);
  EXPECT_EQ(ProElementTransformSet(element, place), PRO_TK_NO_ERROR);
  // With its constraints it stays on the base's top.
  EXPECT_EQ(Redefine(mover_, tree).status, PRO_TK_NO_ERROR);
  ExpectAt(mover_, {1, 2, 10});
  item.path_item.elem_id = 605;
  ASSERT_EQ(ProElempathDataSet(path, &item, 1), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProElemtreeElementRemove(tree, path, &element), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementFree(&element), PRO_TK_NO_ERROR);
  EXPECT_EQ(Redefine(mover_, tree).status, PRO_TK_NO_ERROR);
  ExpectAt(mover_, {1, 2, 3});
  EXPECT_TRUE(At(mover_).constraints.empty());
  EXPECT_EQ(ProElempathFree(&path), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProFeatureElemtreeFree(&mover_, tree), PRO_TK_NO_ERROR);
}

TEST_F(AssembliesTest, AnAssemblyComesBackFromItsFilesWithWhatItPlaces) {
  ASSERT_EQ(HoldToBase(1, kTop, kBottom, 5), PRO_TK_NO_ERROR);
  const std::wstring part = part_->name;
  PathBuffer here(directory());
  ASSERT_EQ(ProMdlnameBackup(Assembly(), here), PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->directory, directory());
  EXPECT_EQ(ProMdlErase(part_), PRO_TK_BAD_CONTEXT) << "the assembly places it";
  ASSERT_EQ(ProMdlErase(assembly_), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(part_), PRO_TK_NO_ERROR);

  ASSERT_EQ(RetrieveModel(L"FRAME", PRO_MDL_ASSEMBLY, assembly_), PRO_TK_NO_ERROR);
  part_ = host().session.FindByName(part, PRO_MDL_PART);
  ASSERT_NE(part_, nullptr);
  mover_.owner = base_.owner = assembly_;
  ExpectAt(mover_, {100, 50, 15});
  // Two blocks of 8000 mm³, from the one's origin to the other's far corner.
  EXPECT_NEAR(*ExtentOf(*assembly_).volume, 2 * 40 * 20 * 10, 1e-6);
  EXPECT_LT(Length(ExtentOf(*assembly_).outline->high - Vector3{140, 70, 25}), 1e-6);
  ProAsmcompconstraint* constraints = nullptr;
  ASSERT_EQ(ProAsmcompConstraintsGet(&mover_, &constraints), PRO_TK_NO_ERROR);
  ProSelection reference = nullptr;
  ProDatumside side;
  ASSERT_EQ(ProAsmcompconstraintAsmreferenceGet(constraints[0], &reference, &side), PRO_TK_NO_ERROR);
  ProAsmcomppath path;
  EXPECT_EQ(ProSelectionAsmcomppathGet(reference, &path), PRO_TK_NO_ERROR);
  EXPECT_EQ(path.table_num, 1);
  EXPECT_EQ(path.comp_id_table[0], base_.id);
  EXPECT_EQ(ProSelectionFree(&reference), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProAsmcompconstraintArrayFree(constraints), PRO_TK_NO_ERROR);
}

TEST_F(AssembliesTest, AMissingModelLeavesAComponentWithoutOneAndAComplaint) {
  ASSERT_EQ(ProMdlSave(assembly_), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(assembly_), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(part_), PRO_TK_NO_ERROR);
  for (const std::wstring& file : FilesHere())
    if (file.find(L".prt") != std::wstring::npos) std::filesystem::remove(PathOf(file));
  ASSERT_EQ(RetrieveModel(L"FRAME", PRO_MDL_ASSEMBLY, assembly_), PRO_TK_NO_ERROR);
  EXPECT_TRUE(Complained("is missing"));
  mover_.owner = assembly_;
  ProMdl model = nullptr;
  EXPECT_EQ(ProAsmcompMdlGet(&mover_, &model), PRO_TK_E_NOT_FOUND);
  EXPECT_FALSE(ExtentOf(*assembly_).volume);
  ExpectAt(mover_, {100, 50, 70});
}

TEST_F(AssembliesTest, ComponentsAreNotExportedAndNoFileSaysOtherwise) {
  PathBuffer path(directory() + L"\\frame");
  constexpr auto kStep = static_cast<ProIntf3DFileType>(1);
  EXPECT_EQ(ProIntf3DFileWriteWithDefaultProfile(Assembly(), kStep, path), PRO_TK_NOT_IMPLEMENTED);
  EXPECT_FALSE(std::filesystem::exists(PathOf(L"frame.stp")));
}

}  // namespace
}  // namespace bench
