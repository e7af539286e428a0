// What solids weigh, how much room they take, and what their surfaces are. Blocks of 40 × 20 × 10 with a
// corner in their origin.
#include <ProSurfacedata.h>
#include <gmock/gmock.h>

#include "bench/host/features/component.h"
#include "bench/host/storage/model_json.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::DoubleNear;
using testing::Each;
using testing::ElementsAre;
using testing::Pointwise;

constexpr double kInch = 25.4;  // mm

class AnalysisTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    if (!HasFatalFailure()) Extrude(*part_, Plate(), {});
  }

  Feature& Place(Model& into, Model& model, const Vector3& at, double turn = 0) {
    const Matrix turned = Turned(kNoMove, {0, 0, 1}, turn);
    return *into.FindFeature(AssembleComponent(into, model, Shifted(turned, at)).feature);
  }
};

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
  ProMassProperty mass{};
  Pro3dPnt corners[2] = {};
  EXPECT_EQ(ProSolidMassPropertyGet(SolidHandle(top), nullptr, &mass), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSolidOutlineGet(SolidHandle(top), corners), PRO_TK_NO_ERROR);
  EXPECT_NEAR(mass.volume, 2 * 8000 / (kInch * kInch * kInch), 1e-9);
  EXPECT_NEAR(mass.mass, 2 * 0.016 / 0.45359237, 1e-9);
  // Centres (20, 10, 5) mm and (3 in - 10 mm, 3 in + 20 mm, 5 mm).
  EXPECT_NEAR(mass.center_of_gravity[0], (20 + 3 * kInch - 10) / 2 / kInch, 1e-9);
  EXPECT_NEAR(mass.center_of_gravity[1], (10 + 3 * kInch + 20) / 2 / kInch, 1e-9);
  EXPECT_THAT(corners[0], Each(DoubleNear(0, 1e-6)));
  EXPECT_THAT(corners[1], Pointwise(DoubleNear(1e-6), {3.0, 3 + 40 / kInch, 10 / kInch}));
  EXPECT_EQ(ModelFromText(ModelToText(*part_))->density, 2);
}

TEST_F(AnalysisTest, SurfaceDataTellTheParametersThatTheSurfaceTakesAndItsShape) {
  Extrude(*part_, Circle(30, 10, 4), {.cut = true});
  part_->length_unit = LengthUnit::kInch;
  ASSERT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  ProModelitem item = Cylinder(*part_);
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
