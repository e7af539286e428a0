// Datum planes at a distance from another plane: where they lie, how they are found, and what follows them.
#include <ProFeature.h>
#include <ProModelitem.h>
#include <ProSolid.h>

#include <algorithm>

#include "bench/host/features/dimensions.h"
#include "bench/host/session.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Creation;
using support::NameBuffer;

class DatumPlanesTest : public support::FeatureTest {
 protected:
  const PlaneFrame& FrameOf(const Creation& creation) {
    return part_->FindFeature(creation.feature.id)->plane;
  }
  // The first dimension of the feature.
  void SetDistance(const Creation& made, double distance) {
    for (const Dimension& dimension : part_->dimensions)
      if (dimension.feature == made.feature.id) {
        ASSERT_EQ(SetValue(*part_, dimension, distance), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
        return;
      }
    ADD_FAILURE() << "the feature has no dimension";
  }
};

TEST_F(DatumPlanesTest, LieAlongTheNormalOfTheirBaseAndFollowIt) {
  const Creation block = Extrude(*part_, Plate(), {});
  ASSERT_EQ(block.status, PRO_TK_NO_ERROR);
  const auto top_face = std::ranges::find_if(part_->topology.faces, [](const FaceInfo& face) {
    return face.normal == Vector3{0, 0, 1};
  });
  ASSERT_NE(top_face, part_->topology.faces.end());
  const ProModelitem face{PRO_SURFACE, part_->ids_of_keys.at(top_face->key), part_};

  const Creation above = OffsetPlane(*part_, PlaneOf(*part_, L"TOP"), 15, L"ABOVE");
  const Creation below = OffsetPlane(*part_, PlaneOf(*part_, L"ABOVE"), -5, L"BELOW");
  const Creation outside = OffsetPlane(*part_, face, 2, L"OUTSIDE");
  ASSERT_EQ(above.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(below.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(outside.status, PRO_TK_NO_ERROR);
  // Turned as TOP is: z to its right, x up.
  EXPECT_EQ(FrameOf(above), (PlaneFrame{{0, 15, 0}, {0, 0, 1}, {1, 0, 0}}));
  EXPECT_EQ(FrameOf(below).origin, (Vector3{0, 10, 0}));
  EXPECT_NEAR(FrameOf(outside).origin[2], 12, 1e-9);
  EXPECT_EQ(FrameOf(outside).Normal(), (Vector3{0, 0, 1}));
  SetDistance(block, 20);
  EXPECT_NEAR(FrameOf(outside).origin[2], 22, 1e-9);
}

TEST_F(DatumPlanesTest, AreFoundByNameAsSurfaceAndAsPlane) {
  Creation plane = OffsetPlane(*part_, PlaneOf(*part_, L"TOP"), 15, L"VEK_SEC_PLN_1");
  ASSERT_EQ(plane.status, PRO_TK_NO_ERROR);
  ProModelitem as_surface{}, as_plane{};
  EXPECT_EQ(ProModelitemByNameInit(part_, PRO_SURFACE, NameBuffer(L"vek_sec_pln_1"), &as_surface),
            PRO_TK_NO_ERROR);
  EXPECT_EQ(ProModelitemByNameInit(part_, PRO_DATUM_PLANE, NameBuffer(L"VEK_SEC_PLN_1"), &as_plane),
            PRO_TK_NO_ERROR);
  EXPECT_EQ(as_surface.id, as_plane.id);
  int visited = -1;
  const auto note = [](ProGeomitem* item, ProError, ProAppData data) {
    *static_cast<int*>(data) = item->id;
    return PRO_TK_NO_ERROR;
  };
  EXPECT_EQ(ProFeatureGeomitemVisit(&plane.feature, PRO_SURFACE, note, nullptr, &visited), PRO_TK_NO_ERROR);
  EXPECT_EQ(visited, as_surface.id);
}

TEST_F(DatumPlanesTest, TakeAlongWhatLiesOnThem) {
  const Creation base = OffsetPlane(*part_, PlaneOf(*part_, L"FRONT"), 5, L"BASE");
  const Creation next = OffsetPlane(*part_, PlaneOf(*part_, L"BASE"), 5, L"NEXT");
  ASSERT_EQ(next.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(Extrude(*part_, Plate(L"NEXT"), {}).status, PRO_TK_NO_ERROR);
  ExpectOutline({0, 0, 10}, {40, 20, 20});
  SetDistance(base, 25);  // 25 + 5
  EXPECT_EQ(FrameOf(next).origin, (Vector3{0, 0, 30}));
  ExpectOutline({0, 0, 30}, {40, 20, 40});
}

TEST_F(DatumPlanesTest, RefuseWhatIsNoPlane) {
  const ProModelitem top = PlaneOf(*part_, L"TOP");
  for (const int left_out : {410, 411, 412, 413, 414})
    EXPECT_EQ(OffsetPlane(*part_, top, 15, L"P", left_out).status, PRO_TK_GENERAL_ERROR) << left_out;
  ASSERT_EQ(Extrude(*part_, Circle(0, 0, 5), {}).status, PRO_TK_NO_ERROR);
  for (const FaceInfo& face : part_->topology.faces)
    if (face.type == "cylinder") {
      const ProModelitem wall{PRO_SURFACE, part_->ids_of_keys.at(face.key), part_};
      EXPECT_EQ(OffsetPlane(*part_, wall, 15, L"P").status, PRO_TK_GENERAL_ERROR);
    }
}

TEST_F(DatumPlanesTest, StandInAssembliesToo) {
  Model& assembly = NewAssembly(L"ASM");
  const Creation plane = OffsetPlane(assembly, PlaneOf(assembly, L"RIGHT"), 7, L"CUT");
  ASSERT_EQ(plane.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(ProSolidRegenerate(SolidHandle(assembly), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(assembly.FindFeature(plane.feature.id)->plane.origin, (Vector3{7, 0, 0}));
}

}  // namespace
}  // namespace bench
