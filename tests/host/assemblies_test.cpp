// Components in assemblies: blocks of 40 × 20 × 10 that lie on FRONT, with a corner in their origin.
#include <ProAsmcomp.h>
#include <ProSelection.h>
#include <ProUtil.h>
#include <ProWindows.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <numbers>

#include "bench/host/console/console.h"
#include "bench/host/features/component.h"
#include "bench/host/features/component_placement.h"
#include "bench/host/features/feature_removal.h"
#include "bench/host/features/scene.h"
#include "bench/host/model/component.h"
#include "bench/host/storage/model_store.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::MdlNameBuffer;
using support::PathBuffer;

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

struct Side {
  Vector3 normal;
  double distance;
};
constexpr Side kTop{{0, 0, 1}, 10}, kBottom{{0, 0, -1}, 0};

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
  Component& At(const ProAsmcomp& component) {
    return *host().session.Find(component.owner)->FindFeature(component.id)->component;
  }
  void ExpectAt(const ProAsmcomp& component, const Vector3& origin) {
    EXPECT_LT(Length(TranslationOf(At(component).place) - origin), 1e-6)
        << testing::PrintToString(TranslationOf(At(component).place));
  }

  ProError Put(ProAsmcomp& component, const Vector3& at) {
    ProMatrix place;
    WriteMatrix(Shifted(kNoMove, at), place);
    return ProAsmcompPositionSet(nullptr, &component, place);
  }
  // What the console answers while the assembly is current.
  std::vector<std::string> Answer(const std::string& command) {
    MdlNameBuffer name(assembly_->name);
    int window = -1;
    if (host().windows.CurrentModel() != assembly_) {
      EXPECT_EQ(ProObjectwindowMdlnameCreate(name, PRO_ASSEMBLY, &window), PRO_TK_NO_ERROR);
      EXPECT_EQ(ProWindowActivate(window), PRO_TK_NO_ERROR);
    }
    std::vector<std::string> said;
    Console([&said](const std::string& text) { said.push_back(text); }).Run(command);
    return said;
  }

  int Face(const Side& side) { return FeatureTest::Face(side.normal, side.distance).id; }

  static ComponentConstraint Between(int type, const std::vector<int>& path, int holds, int held,
                                     std::optional<double> offset = {}) {
    return {type, PlacedItem{path, PRO_SURFACE, holds}, PlacedItem{{}, PRO_SURFACE, held}, offset};
  }
  ProError Hold(const ProAsmcomp& component, const std::vector<ComponentConstraint>& set) {
    return SetConstraints(*assembly_, *assembly_->FindFeature(component.id), set);
  }
  // Held to a face of the base.
  ProError HoldToBase(int type, const Side& on_base, const Side& on_mover,
                      std::optional<double> offset = {}) {
    return Hold(mover_, {Between(type, {base_.id}, Face(on_base), Face(on_mover), offset)});
  }

  Model* assembly_ = nullptr;
  ProAsmcomp base_{}, mover_{};
};

TEST_F(AssembliesTest, WhatMakesNoSenseOrContradictsItselfIsRefusedAndNothingMoves) {
  const std::vector<int> to_base = {base_.id}, to_mover = {mover_.id};
  const int top = Face(kTop), bottom = Face(kBottom);
  ASSERT_EQ(HoldToBase(0, kTop, kBottom), PRO_TK_NO_ERROR);
  const std::vector<ComponentConstraint> cases[] = {
      {Between(4, to_base, top, bottom)},
      {Between(7, to_base, top, bottom)},
      {Between(99, to_base, top, bottom)},
      {Between(0, to_mover, top, bottom)},
      {Between(1, to_base, top, bottom, 5), Between(1, to_base, top, bottom, 6)},
      {{13, {}, {}, {}}, Between(1, to_base, top, bottom, 5)},
  };
  for (const auto& set : cases) {
    SCOPED_TRACE(set.front().type);
    EXPECT_NE(Hold(mover_, set), PRO_TK_NO_ERROR);
    ExpectAt(mover_, {100, 50, 10});
    EXPECT_EQ(At(mover_).constraints.size(), 1u);
  }
  EXPECT_NE(Hold(base_, {Between(0, to_mover, top, bottom)}), PRO_TK_NO_ERROR) << "in a circle";
}

TEST_F(AssembliesTest, WhatIsHeldFollowsAndTakesItsHoldersFateIntoAccount) {
  ASSERT_EQ(HoldToBase(0, kTop, kBottom), PRO_TK_NO_ERROR);
  ASSERT_EQ(Put(base_, {0, 0, 25}), PRO_TK_NO_ERROR);
  ExpectAt(mover_, {100, 50, 10});
  EXPECT_EQ(ProSolidRegenerate(Assembly(), 16), PRO_TK_NO_ERROR);
  ExpectAt(mover_, {100, 50, 25 + 10});

  EXPECT_EQ(DeleteFeatures(*assembly_, {base_.id}, false), PRO_TK_BAD_CONTEXT);
  EXPECT_EQ(ProAsmcompAllConstrRemove(&mover_), PRO_TK_NO_ERROR);
  EXPECT_EQ(DeleteFeatures(*assembly_, {base_.id}, false), PRO_TK_NO_ERROR);
  ExpectAt(mover_, {100, 50, 35});
}

// Each block has a top of 40 × 20 and 8000 mm³. The mover stands on the base's top: its far corner is at
// (140, 70, 20).
TEST_F(AssembliesTest, WhatIsSuppressedIsOutAndComesBackOntoWhatHoldsIt) {
  ASSERT_EQ(HoldToBase(0, kTop, kBottom), PRO_TK_NO_ERROR);
  const std::string top = "/" + std::to_string(Face(kTop)) + ", type 34, area 800 mm², at 20 10 10 mm";
  EXPECT_THAT(Answer("faces"), AllOf(SizeIs(6 + 6 + 1), Contains(StartsWith(std::to_string(base_.id) + top)),
                                     Contains(StartsWith(std::to_string(mover_.id) + top))));
  EXPECT_THAT(Answer("models"), Contains(AllOf(StartsWith("assembly FRAME"), HasSubstr("volume 16000 mm³"),
                                               HasSubstr("size 140 x 70 x 20 mm"))));

  EXPECT_NE(SuppressFeatures(*assembly_, {base_.id}), PRO_TK_NO_ERROR) << "it holds the mover";
  ASSERT_EQ(SuppressFeatures(*assembly_, {mover_.id}), PRO_TK_NO_ERROR);
  EXPECT_THAT(Answer("models"), Contains(AllOf(StartsWith("assembly FRAME"), HasSubstr("volume 8000 mm³"),
                                               HasSubstr("size 40 x 20 x 10 mm"))));
  EXPECT_EQ(Put(mover_, {1, 2, 3}), PRO_TK_BAD_CONTEXT);
  EXPECT_EQ(HoldToBase(2, kTop, kTop), PRO_TK_BAD_CONTEXT);
  ASSERT_EQ(Put(base_, {0, 0, 25}), PRO_TK_NO_ERROR);
  ASSERT_EQ(SuppressFeatures(*assembly_, {base_.id}), PRO_TK_NO_ERROR);

  // What holds it comes along.
  ASSERT_EQ(ResumeFeatures(*assembly_, {mover_.id}, true), PRO_TK_NO_ERROR);
  ExpectAt(mover_, {100, 50, 25 + 10});
}

TEST_F(AssembliesTest, PathsLeadThroughSubassembliesAndUnits) {
  Model& outer = NewAssembly(L"OUTER");
  outer.length_unit = LengthUnit::kInch;
  Model& pin = NewPart(L"PIN");
  const ProFeature circle =
      Sketch(pin, L"ROUND", L"FRONT", [](ProSection section) { support::AddCircle(section, 0, 0, 5); });
  ASSERT_EQ(Extrude(pin, circle, {.depth = 30}).status, PRO_TK_NO_ERROR);
  const ProAsmcomp inner_pin = Place(pin, {50.8, 25.4, 0});
  // The frame a quarter turn about z at (1, 0, 2) inches: x runs along y.
  const ProAsmcomp frame =
      Place(*assembly_, {1, 0, 2}, Turned(kNoMove, {0, 0, 1}, std::numbers::pi / 2), &outer);
  const ProAsmcomp free = Place(*part_, {0, 0, 9}, kNoMove, &outer);
  int ids[PRO_MAX_ASSEM_LEVEL] = {frame.id, mover_.id};
  ProMatrix place;
  ASSERT_EQ(Put(mover_, {25.4, 0, 0}), PRO_TK_NO_ERROR);
  ProAsmcomppath path;
  ASSERT_EQ(ProAsmcomppathInit(SolidHandle(outer), ids, 2, &path), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProAsmcomppathTrfGet(&path, PRO_B_TRUE, place), PRO_TK_NO_ERROR);
  EXPECT_LT(Length(TranslationOf(MatrixOf(place)) - Vector3{1, 1, 2}), 1e-9);
  assembly_ = &outer;
  EXPECT_EQ(Hold(free, {Between(0, {frame.id, mover_.id}, Face(kTop), Face(kBottom))}), PRO_TK_NO_ERROR);
  ExpectAt(free, {0, 0, 2 + 10 / 25.4});
  // The inner pin is 2 along x and 1 along y in the frame: 1 to the left and 2 up, from (1, 0).
  const ProAsmcomp free_pin = Place(pin, {5, 5, 9});
  EXPECT_EQ(Hold(free_pin, {Between(4, {frame.id, inner_pin.id}, Cylinder(pin).id, Cylinder(pin).id)}),
            PRO_TK_NO_ERROR);
  ExpectAt(free_pin, {1 - 1, 2, 9});

  ProModelitem of_no_part{PRO_FEATURE, frame.id, &outer};
  ProSelection selection = nullptr;
  EXPECT_EQ(ProSelectionAlloc(&path, &of_no_part, &selection), PRO_TK_BAD_INPUTS);
  ids[1] = 4711;
  EXPECT_EQ(ProAsmcomppathInit(SolidHandle(outer), ids, 2, &path), PRO_TK_E_NOT_FOUND);
  Model& inner = *host().session.FindByName(L"FRAME", PRO_MDL_ASSEMBLY);
  EXPECT_NE(AssembleComponent(inner, outer, kNoMove).status, PRO_TK_NO_ERROR) << "into itself";
}

TEST_F(AssembliesTest, ABackupTakesAllOfItElsewhereAndItComesBackFromThere) {
  ASSERT_EQ(HoldToBase(1, kTop, kBottom, 5), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProAsmcompSetPlaced(&mover_, PRO_B_FALSE), PRO_TK_NO_ERROR);
  const std::wstring part = part_->name, elsewhere = PathOf(L"elsewhere");
  PathBuffer there(elsewhere);
  EXPECT_EQ(ProMdlnameBackup(Assembly(), there), PRO_TK_INVALID_DIR);
  std::filesystem::create_directory(elsewhere);
  ASSERT_EQ(ProMdlnameBackup(Assembly(), there), PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->directory, elsewhere);
  EXPECT_EQ(assembly_->directory, elsewhere);
  EXPECT_EQ(FilesHere(), std::vector<std::wstring>{L"elsewhere"});
  EXPECT_EQ(ProMdlErase(part_), PRO_TK_BAD_CONTEXT) << "the assembly places it";
  ASSERT_EQ(ProMdlErase(assembly_), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(part_), PRO_TK_NO_ERROR);

  ASSERT_EQ(ProDirectoryChange(there), PRO_TK_NO_ERROR);
  ASSERT_EQ(RetrieveModel(L"FRAME", PRO_MDL_ASSEMBLY, assembly_), PRO_TK_NO_ERROR);
  part_ = host().session.FindByName(part, PRO_MDL_PART);
  ASSERT_NE(part_, nullptr);
  mover_.owner = base_.owner = assembly_;
  ExpectAt(mover_, {100, 50, 15});
  EXPECT_FALSE(At(mover_).placed) << "as was said of it, whatever its constraints";
  ASSERT_EQ(At(mover_).constraints.size(), 1u);
  EXPECT_EQ(At(mover_).constraints[0].on_assembly->path, std::vector{base_.id});
}

TEST_F(AssembliesTest, ABackupThatFailsHalfwayMovesNothing) {
  const std::wstring elsewhere = PathOf(L"elsewhere"), part_before = part_->directory;
  PathBuffer there(elsewhere);
  // What is placed comes first; where the assembly's unfinished file would go is a folder.
  std::filesystem::create_directories(elsewhere + L"\\frame.asm.1.unfinished");
  EXPECT_EQ(ProMdlnameBackup(Assembly(), there), PRO_TK_CANT_WRITE);
  EXPECT_EQ(part_->directory, part_before);
  EXPECT_EQ(assembly_->directory, L"");
  EXPECT_TRUE(part_->modified);
  EXPECT_TRUE(assembly_->modified);
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
  EXPECT_THAT(Answer("models"), Contains(AllOf(StartsWith("assembly FRAME"), Not(HasSubstr("volume")))));
  ExpectAt(mover_, {100, 50, 70});
}

TEST_F(AssembliesTest, AnExportHoldsEveryComponentInPlaceButThoseThatAreOut) {
  // An inch assembly, twice in a metre one: 10 in = 254 mm, 5 in = 127 mm, 7 in = 177.8 mm, 2 m = 2000 mm.
  assembly_->length_unit = LengthUnit::kInch;
  At(mover_).place = Shifted(kNoMove, {10, 5, 7});
  Model& whole = NewAssembly(L"WHOLE");
  whole.length_unit = LengthUnit::kMetre;
  const ProAsmcomp sub = Place(*assembly_, {0, 2, 0}, Turned(kNoMove, {0, 0, 1}, std::numbers::pi), &whole);
  const ProAsmcomp out = Place(*part_, {1, 2, 3}, kNoMove, &whole);
  const ProAsmcomp second = Place(*assembly_, {0, 0, 0}, kNoMove, &whole);
  whole.FindFeature(out.id)->status = PRO_FEAT_SUPPRESSED;

  const auto scene = nlohmann::json::parse('{' + SceneFields(whole) + '}');
  ASSERT_EQ(scene["models"].size(), 3u);
  EXPECT_EQ(scene["root"], 2);
  EXPECT_EQ(scene["models"][0]["name"], "PART");
  const auto expect_component = [&](int model, int index, int id, int places,
                                    const std::vector<double>& place) {
    const nlohmann::json& component = scene["models"][model]["components"][index];
    EXPECT_EQ(component["id"], id);
    EXPECT_EQ(component["model"], places);
    EXPECT_THAT(component["place"].get<std::vector<double>>(),
                testing::Pointwise(testing::DoubleNear(1e-9), place));
  };
  expect_component(1, 0, base_.id, 0, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0});
  expect_component(1, 1, mover_.id, 0, {1, 0, 0, 254, 0, 1, 0, 127, 0, 0, 1, 177.8});
  expect_component(2, 0, sub.id, 1, {-1, 0, 0, 0, 0, -1, 0, 2000, 0, 0, 1, 0});
  expect_component(2, 1, second.id, 1, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0});
}

}  // namespace
}  // namespace bench
