#include <ProGeomitem.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr double kPi = std::numbers::pi;

template <typename Handle>
ProError Note(Handle handle, ProError, ProAppData data) {
  static_cast<std::vector<Handle>*>(data)->push_back(handle);
  return PRO_TK_NO_ERROR;
}

// A plate of 40 · 20 · 10 with a hole of radius 5 around (20, 10), in units of the part.
class GeometryTest : public support::FeatureTest {
 protected:
  void Build() {
    ASSERT_EQ(Extrude(*part_, Plate(), {}).status, PRO_TK_NO_ERROR);
    const auto cut = Extrude(*part_, Circle(20, 10, 5), {.second_side = 1048576, .depth = {}, .cut = true});
    ASSERT_EQ(cut.status, PRO_TK_NO_ERROR);
    hole_ = cut.feature;
    wall_ = SurfaceOf(ItemOf(PRO_SURFACE, std::to_string(hole_.id) + ":side:1"));
    top_ = SurfaceOf(ItemOf(PRO_SURFACE, ":end"));
  }
  std::vector<ProContour> Contours(ProSurface surface) {
    std::vector<ProContour> contours;
    EXPECT_EQ(ProSurfaceContourVisit(surface, Note, nullptr, &contours), PRO_TK_NO_ERROR);
    return contours;
  }
  std::vector<ProEdge> Edges(ProSurface surface, ProContour contour) {
    std::vector<ProEdge> edges;
    EXPECT_EQ(ProContourEdgeVisit(surface, contour, Note, nullptr, &edges), PRO_TK_NO_ERROR);
    return edges;
  }
  ProSurface SurfaceOf(const ItemReference& face) {
    ProGeomitem item{face.type, face.id, face.owner};
    ProSurface surface = nullptr;
    EXPECT_EQ(ProGeomitemToSurface(&item, &surface), PRO_TK_NO_ERROR);
    return surface;
  }
  Vector3 PointAt(ProEdge edge, double t) {
    ProPoint3d point{};
    EXPECT_EQ(ProEdgeXyzdataEval(edge, t, point, nullptr, nullptr, nullptr), PRO_TK_NO_ERROR);
    return {point[0], point[1], point[2]};
  }
  ProEdge Rim() { return Edges(top_, Contours(top_).at(1)).at(0); }

  ProFeature hole_{};
  ProSurface wall_ = nullptr;
  ProSurface top_ = nullptr;
};

TEST_F(GeometryTest, ContoursGiveTheOutlineAndThenTheHole) {
  Build();
  const auto contours = Contours(top_);
  ASSERT_THAT(contours, SizeIs(2));
  const auto outline = Edges(top_, contours[0]);
  ASSERT_THAT(outline, SizeIs(4));
  for (std::size_t i = 0; i < 4; ++i) {
    ProEdge next[2]{};
    ProSurface faces[2]{};
    ASSERT_EQ(ProEdgeNeighborsGet(outline[i], &next[0], &next[1], &faces[0], &faces[1]), PRO_TK_NO_ERROR);
    const int side = faces[0] == top_ ? 0 : 1;
    EXPECT_EQ(faces[side], top_);
    EXPECT_EQ(next[side], outline[(i + 1) % 4]);
  }
  EXPECT_THAT(Edges(top_, contours[1]), ElementsAre(Rim()));
  EXPECT_THAT(Contours(wall_), SizeIs(2));
  EXPECT_EQ(ProContourEdgeVisit(wall_, contours[0], Note, nullptr, nullptr), PRO_TK_BAD_INPUTS);
}

TEST_F(GeometryTest, SizesAndPointsAreInUnitsOfTheModel) {
  part_->length_unit = LengthUnit::kInch;
  Build();
  double area = 0, diameter = 0;
  ProUvParam uv{0.5, 4};
  EXPECT_EQ(ProSurfaceAreaEval(wall_, &area), PRO_TK_NO_ERROR);
  EXPECT_NEAR(area, 2 * kPi * 5 * 10, 1e-9);
  EXPECT_EQ(ProSurfaceDiameterEval(wall_, uv, &diameter), PRO_TK_NO_ERROR);
  EXPECT_NEAR(diameter, 10, 1e-9);
  EXPECT_EQ(ProSurfaceDiameterEval(top_, uv, &diameter), PRO_TK_INVALID_TYPE);

  ProPoint3d low{}, high{}, point{};
  ProVector diagonal{1, 1, 0}, normal{}, first[2]{}, second[3]{};
  EXPECT_EQ(ProSurfaceExtremesEval(top_, diagonal, low, high), PRO_TK_NO_ERROR);
  EXPECT_NEAR(high[0] + high[1], 40 + 20, 1e-9);
  // Out of the material is towards the hole's axis, a radius of 5 away; along the second parameter a step is
  // as long, about the wall it is radius · angle.
  EXPECT_EQ(ProSurfaceXyzdataEval(wall_, uv, point, first, second, normal), PRO_TK_NO_ERROR);
  EXPECT_NEAR(point[0] + 5 * normal[0], 20, 1e-9);
  EXPECT_NEAR(point[1] + 5 * normal[1], 10, 1e-9);
  EXPECT_NEAR(std::hypot(first[0][0], first[0][1]), 5, 1e-9);
  EXPECT_NEAR(std::abs(first[1][2]), 1, 1e-9);
  EXPECT_NEAR(std::hypot(second[0][0], second[0][1]), 5, 1e-9);
}

TEST_F(GeometryTest, AnEdgeRunsFromItsOneEndToItsOther) {
  part_->length_unit = LengthUnit::kInch;
  Build();
  ProVector first{};
  const ProEdge side = Edges(top_, Contours(top_)[0])[0], rim = Rim();
  const Vector3 from = PointAt(side, 0), quarter = PointAt(side, 0.25), to = PointAt(side, 1);
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(quarter[i], 0.75 * from[i] + 0.25 * to[i], 1e-9);
  EXPECT_EQ(PointAt(rim, 1), PointAt(rim, 0));
  EXPECT_EQ(ProEdgeXyzdataEval(rim, 0.3, nullptr, first, nullptr, nullptr), PRO_TK_NO_ERROR);
  EXPECT_NEAR(std::hypot(first[0], first[1]), 2 * kPi * 5, 1e-9);
}

TEST_F(GeometryTest, WhatNoFormulaTellsIsAskedOfTheKernel) {
  // A peg of radius 10 about z, and a hole of radius 3 about a line along y at z = 20, from y = 0 on. TOP's
  // section has its +y along -Z.
  ASSERT_EQ(Extrude(*part_, Circle(0, 0, 10), {.depth = 40}).status, PRO_TK_NO_ERROR);
  const auto across =
      Sketch(*part_, L"ACROSS", L"TOP", [](ProSection section) { support::AddCircle(section, 0, -20, 3); });
  ASSERT_EQ(Extrude(*part_, across, {.second_side = 1048576, .depth = {}, .cut = true}).status,
            PRO_TK_NO_ERROR);
  const auto crossing = std::ranges::find_if(part_->topology.edges, [](const EdgeInfo& edge) {
    return edge.type != "line" && edge.type != "circle";
  });
  ASSERT_NE(crossing, part_->topology.edges.end());
  ProGeomitem item{PRO_EDGE, part_->ids_of_keys.at(crossing->key), Handle(*part_)};
  ProEdge edge = nullptr;
  ASSERT_EQ(ProGeomitemToEdge(&item, &edge), PRO_TK_NO_ERROR);
  const Vector3 at = PointAt(edge, 0.4);
  EXPECT_NEAR(std::hypot(at[0], at[1]), 10, 1e-5);
  EXPECT_NEAR(std::hypot(at[0], at[2] - 20), 3, 1e-5);
  ProPoint3d none{};
  for (const double t : {-0.1, 1.1, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(ProEdgeXyzdataEval(edge, t, none, nullptr, nullptr, nullptr), PRO_TK_BAD_INPUTS);
}

TEST_F(GeometryTest, DatumPlanesAreSurfacesWithoutBounds) {
  Build();
  const ProModelitem right = PlaneOf(*part_, L"RIGHT");
  const ProSurface plane = SurfaceOf({right.type, right.id, right.owner});
  ProVector up{0, 0, 1};
  ProPoint3d low{}, high{};
  double area = 0;
  EXPECT_THAT(Contours(plane), SizeIs(0));
  EXPECT_EQ(ProSurfaceAreaEval(plane, &area), PRO_TK_INVALID_TYPE);
  EXPECT_EQ(ProSurfaceExtremesEval(plane, up, low, high), PRO_TK_INVALID_TYPE);
}

TEST_F(GeometryTest, WhatIsGoneIsAStatusAndWhatNeverWasAViolation) {
  Build();
  const ProEdge rim = Rim();
  const ProContour contour = Contours(wall_)[0];
  ProGeomitem item{};
  ProSurface surface = nullptr;
  double area = 0;
  int id = 0;
  ASSERT_EQ(ProSurfaceToGeomitem(Solid(), wall_, &item), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProFeatureDelete(Solid(), &hole_.id, 1, nullptr, 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSurfaceAreaEval(wall_, &area), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProContourEdgeVisit(top_, contour, Note, nullptr, nullptr), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProEdgeIdGet(rim, &id), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProGeomitemToSurface(&item, &surface), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProSurfaceAreaEval(top_, &area), PRO_TK_NO_ERROR);
  EXPECT_NEAR(area, 800, 1e-9);
  EXPECT_EQ(ProSurfaceAreaEval(nullptr, &area), PRO_TK_BAD_INPUTS);

  host().session.Erase(*part_);
  EXPECT_EQ(ProSurfaceAreaEval(top_, &area), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProSurfaceAreaEval(reinterpret_cast<ProSurface>(&area), &area), PRO_TK_INVALID_PTR);
  EXPECT_THAT(TakeViolations(), ElementsAre(HasSubstr("uses a foreign pointer as surface")));
}

}  // namespace
}  // namespace bench
