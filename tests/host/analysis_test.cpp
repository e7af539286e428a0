// What solids weigh, how much room they take, and where they clash. Blocks of 40 × 20 × 10 with a corner in
// their origin.
#include <ProAsmcomp.h>
#include <ProFit.h>
#include <ProSurfacedata.h>
#include <gmock/gmock.h>

#include "bench/host/features/component.h"
#include "bench/host/storage/model_json.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::NameBuffer;
using testing::DoubleNear;
using testing::ElementsAre;

constexpr double kInch = 25.4;  // mm

class AnalysisTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    if (!HasFatalFailure()) Extrude(*part_, Plate(), {});
  }

  ProMassProperty Mass(Model& model) {
    ProMassProperty mass{};
    EXPECT_EQ(ProSolidMassPropertyGet(SolidHandle(model), nullptr, &mass), PRO_TK_NO_ERROR);
    return mass;
  }
  void ExpectRoom(Model& model, const Vector3& low, const Vector3& high) {
    Pro3dPnt corners[2] = {};
    EXPECT_EQ(ProSolidOutlineGet(SolidHandle(model), corners), PRO_TK_NO_ERROR);
    EXPECT_LT(Length(Vector3{corners[0][0], corners[0][1], corners[0][2]} - low), 1e-6);
    EXPECT_LT(Length(Vector3{corners[1][0], corners[1][1], corners[1][2]} - high), 1e-6);
  }
  Feature& Place(Model& into, Model& model, const Vector3& at, double turn = 0) {
    const Matrix turned = Turned(kNoMove, {0, 0, 1}, turn);
    return *into.FindFeature(AssembleComponent(into, model, Shifted(turned, at)).feature);
  }

  struct Clash {
    std::vector<int> first, second;
    double volume;
  };
  ProError Interfere(Model& assembly, std::vector<Clash>& clashes) {
    ProInterferenceInfo* infos = nullptr;
    const ProError status = ProFitGlobalinterferenceCompute(SolidHandle(assembly), PRO_FIT_PARTS, PRO_B_FALSE,
                                                            PRO_B_FALSE, PRO_B_FALSE, &infos);
    clashes.clear();
    if (!infos) return status;
    int count = 0;
    EXPECT_EQ(ProArraySizeGet(infos, &count), PRO_TK_NO_ERROR);
    for (int i = 0; i < count; ++i) {
      double volume = 0;
      EXPECT_EQ(ProFitInterferencevolumeCompute(infos[i].interf_data, &volume), PRO_TK_NO_ERROR);
      clashes.push_back({WayTo(infos[i].selection_1), WayTo(infos[i].selection_2), volume});
    }
    EXPECT_EQ(ProInterferenceInfoProarrayFree(infos), PRO_TK_NO_ERROR);
    return status;
  }
  std::vector<int> WayTo(ProSelection selection) {
    ProAsmcomppath path{};
    ProModelitem item{};
    EXPECT_EQ(ProSelectionAsmcomppathGet(selection, &path), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionModelitemGet(selection, &item), PRO_TK_NO_ERROR);
    EXPECT_EQ(item.type, PRO_PART);
    EXPECT_EQ(item.owner, part_);
    return {path.comp_id_table, path.comp_id_table + path.table_num};
  }
};

TEST_F(AnalysisTest, APartIsMeasuredInItsOwnUnitsAtItsDensity) {
  // In millimetres and kilograms, 1 g/cm³ is 1e-6; in inches and pounds, 25.4³ mm³ × 1e-6 kg / 0.45359237 kg.
  const double per_cubic_inch = kInch * kInch * kInch * 1e-6 / 0.45359237;
  for (const auto& [unit, density] :
       {std::pair{LengthUnit::kMillimetre, 1e-6}, {LengthUnit::kInch, per_cubic_inch}}) {
    part_->length_unit = unit;
    ASSERT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
    const ProMassProperty mass = Mass(*part_);
    EXPECT_NEAR(mass.volume, 40 * 20 * 10, 1e-6);
    EXPECT_NEAR(mass.surface_area, 2 * (40 * 20 + 40 * 10 + 20 * 10), 1e-6);
    EXPECT_NEAR(mass.density / density, 1, 1e-9);
    EXPECT_NEAR(mass.mass / (8000 * density), 1, 1e-9);
    EXPECT_NEAR(mass.center_of_gravity[0], 20, 1e-9);
    EXPECT_NEAR(mass.center_of_gravity[2], 5, 1e-9);
    ExpectRoom(*part_, {0, 0, 0}, {40, 20, 10});
  }
  part_->density = 7.85;
  EXPECT_EQ(ModelFromText(ModelToText(*part_))->density, 7.85);
}

TEST_F(AnalysisTest, ASolidWithoutABodyAndAnUnknownCoordinateSystemHaveNoMass) {
  ProMassProperty mass{};
  Pro3dPnt corners[2];
  for (Model* empty : {&NewPart(L"EMPTY"), &NewAssembly(L"FRAME")}) {
    EXPECT_EQ(ProSolidMassPropertyGet(SolidHandle(*empty), nullptr, &mass), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(ProSolidOutlineGet(SolidHandle(*empty), corners), PRO_TK_GENERAL_ERROR);
  }
  NameBuffer own(L"prt_csys_def"), other(L"CS0");
  EXPECT_EQ(ProSolidMassPropertyGet(Solid(), own, &mass), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSolidMassPropertyGet(Solid(), other, &mass), PRO_TK_E_NOT_FOUND);
}

TEST_F(AnalysisTest, AnAssemblyWeighsWhatLiesInItAtEveryDepth) {
  // In an assembly of inches, one block as it is and one, two levels down, turned a quarter about z and put
  // at (2 in, 3 in, 0) + (1 in, 0, 0): it takes x from 3 in - 20 mm to 3 in, y from 3 in to 3 in + 40 mm.
  Model& top = NewAssembly(L"TOP");
  Model& inner = NewAssembly(L"INNER");
  top.length_unit = LengthUnit::kInch;
  Place(top, *part_, {0, 0, 0});
  Place(inner, *part_, {kInch, 0, 0}, std::acos(0));
  Feature& suppressed = Place(top, *part_, {50, 0, 0});
  suppressed.status = PRO_FEAT_SUPPRESSED;
  Place(top, inner, {2, 3, 0});
  part_->density = 2;
  const ProMassProperty mass = Mass(top);
  EXPECT_NEAR(mass.volume, 2 * 8000 / (kInch * kInch * kInch), 1e-9);
  EXPECT_NEAR(mass.mass, 2 * 0.016 / 0.45359237, 1e-9);
  // Centres (20, 10, 5) mm and (3 in - 10 mm, 3 in + 20 mm, 5 mm).
  EXPECT_NEAR(mass.center_of_gravity[0], (20 + 3 * kInch - 10) / 2 / kInch, 1e-9);
  EXPECT_NEAR(mass.center_of_gravity[1], (10 + 3 * kInch + 20) / 2 / kInch, 1e-9);
  ExpectRoom(top, {0, 0, 0}, {3, 3 + 40 / kInch, 10 / kInch});
}

TEST_F(AnalysisTest, ClashesAreToldWithTheirWaysAndVolumesAtEveryDepth) {
  Model& top = NewAssembly(L"TOP");
  Model& inner = NewAssembly(L"INNER");
  top.length_unit = LengthUnit::kInch;
  Feature& base = Place(top, *part_, {0, 0, 0});
  Feature& deep = Place(inner, *part_, {20, 0, 0});
  std::vector<Clash> clashes;
  EXPECT_EQ(Interfere(top, clashes), PRO_TK_E_NOT_FOUND);
  // Of the deep one, which begins 20 + 10 mm along x, 10 × 20 × 10 lie in the base. The third touches the
  // base.
  Feature& sub = Place(top, inner, {10 / kInch, 0, 0});
  Place(top, *part_, {-40 / kInch, 0, 0});
  ASSERT_EQ(Interfere(top, clashes), PRO_TK_NO_ERROR);
  ASSERT_EQ(clashes.size(), 1u);
  EXPECT_THAT(clashes[0].first, ElementsAre(base.id));
  EXPECT_THAT(clashes[0].second, ElementsAre(sub.id, deep.id));
  EXPECT_NEAR(clashes[0].volume, 10 * 20 * 10 / (kInch * kInch * kInch), 1e-9);
  deep.status = PRO_FEAT_SUPPRESSED;
  EXPECT_EQ(Interfere(top, clashes), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(Interfere(*part_, clashes), PRO_TK_INVALID_TYPE);
}

TEST_F(AnalysisTest, SurfaceDataTellTheParametersThatTheSurfaceTakesAndItsShape) {
  Extrude(*part_, Circle(30, 10, 4), {.cut = true});
  part_->length_unit = LengthUnit::kInch;
  ASSERT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  const FaceInfo* wall = nullptr;
  for (const FaceInfo& face : part_->topology.faces)
    if (face.type == "cylinder") wall = &face;
  ASSERT_NE(wall, nullptr);
  ProModelitem item{PRO_SURFACE, part_->ids_of_keys.at(wall->key), part_};
  ProSurface surface = nullptr;
  ProGeomitemdata* record = nullptr;
  ASSERT_EQ(ProGeomitemToSurface(&item, &surface), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProSurfaceDataGet(surface, &record), PRO_TK_NO_ERROR);
  ProSurfacedata* const data = record->data.p_surf_data;
  EXPECT_EQ(data->id, item.id);
  EXPECT_EQ(data->orient, PRO_SURF_ORIENT_IN) << "a hole";
  const ProCylinderdata& cylinder = data->srf_shape.cylinder;
  EXPECT_NEAR(cylinder.radius, 4, 1e-9);
  EXPECT_THAT(cylinder.origin, ElementsAre(DoubleNear(30, 1e-9), DoubleNear(10, 1e-9), testing::_));
  // All of it: a whole turn, and 10 inches along the axis.
  EXPECT_NEAR(data->uv_max[0] - data->uv_min[0], 4 * std::acos(0), 1e-9);
  EXPECT_NEAR(data->uv_max[1] - data->uv_min[1], 10, 1e-9);
  ProPoint3d low{}, high{};
  EXPECT_EQ(ProSurfaceXyzdataEval(surface, data->uv_min, low, nullptr, nullptr, nullptr), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSurfaceXyzdataEval(surface, data->uv_max, high, nullptr, nullptr, nullptr), PRO_TK_NO_ERROR);
  EXPECT_NEAR(std::abs(high[2] - low[2]), 10, 1e-9);
  ProSurfaceshapedata shape{};
  EXPECT_EQ(ProSurfacedataGet(data, nullptr, nullptr, nullptr, nullptr, &shape, nullptr), PRO_TK_NO_ERROR);
  EXPECT_EQ(shape.cylinder.radius, cylinder.radius);

  ProGeomitemdata* again = record;
  EXPECT_EQ(ProGeomitemdataFree(&record), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProGeomitemdataFree(&again), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProSurfacedataGet(data, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
            PRO_TK_INVALID_PTR);
  EXPECT_EQ(TakeViolations().size(), 2u);
}

}  // namespace
}  // namespace bench
