#include "bench/kernel/inside_point.h"

#include <BOPTools_AlgoTools3D.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepLProp_SLProps.hxx>
#include <BRepTools.hxx>
#include <BRepTopAdaptor_FClass2d.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Curve.hxx>
#include <IntTools_Context.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <vector>

namespace bench::kernel {

namespace {

// The fractions of the parameter box on which points are tried, its middle first.
constexpr std::array<double, 7> kFractions = {0.5, 0.375, 0.625, 0.25, 0.75, 0.125, 0.875};
constexpr int kEdgeSamples = 12;

// A face's boundary as polygons over its parameters, these stretched so that lengths are about those in
// space.
class Boundary {
 public:
  Boundary(const TopoDS_Face& face, const BRepAdaptor_Surface& surface, const gp_Pnt2d& middle) {
    gp_Pnt point;
    gp_Vec along_u, along_v;
    surface.D1(middle.X(), middle.Y(), point, along_u, along_v);
    u_scale_ = std::max(along_u.Magnitude(), Precision::Confusion());
    v_scale_ = std::max(along_v.Magnitude(), Precision::Confusion());
    for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
      double first = 0, last = 0;
      const auto curve = BRep_Tool::CurveOnSurface(TopoDS::Edge(edges.Current()), face, first, last);
      if (!curve.IsNull()) AddCurve(curve, first, last);
    }
  }

  double Clearance(const gp_Pnt2d& uv) const {
    double nearest = std::numeric_limits<double>::max();
    const gp_XY point = Stretched(uv);
    for (const auto& [from, to] : segments_) {
      const gp_XY way = to - from;
      const double square = way.SquareModulus();
      const double share = square > 0 ? std::clamp((point - from).Dot(way) / square, 0.0, 1.0) : 0;
      nearest = std::min(nearest, (point - from - way * share).Modulus());
    }
    return nearest;
  }

 private:
  gp_XY Stretched(const gp_Pnt2d& uv) const { return {uv.X() * u_scale_, uv.Y() * v_scale_}; }

  void AddCurve(const Handle(Geom2d_Curve) & curve, double first, double last) {
    gp_XY before = Stretched(curve->Value(first));
    for (int i = 1; i <= kEdgeSamples; ++i) {
      const gp_XY here = Stretched(curve->Value(first + (last - first) * i / kEdgeSamples));
      segments_.emplace_back(before, here);
      before = here;
    }
  }

  double u_scale_ = 1, v_scale_ = 1;
  std::vector<std::pair<gp_XY, gp_XY>> segments_;
};

// A surface has none where it comes to a point.
bool HasNormal(const BRepAdaptor_Surface& surface, const gp_Pnt2d& uv) {
  return BRepLProp_SLProps(surface, uv.X(), uv.Y(), 1, Precision::Confusion()).IsNormalDefined();
}

std::optional<gp_Pnt2d> BestOfGrid(const TopoDS_Face& face, const BRepAdaptor_Surface& surface) {
  double u_low = 0, u_high = 0, v_low = 0, v_high = 0;
  BRepTools::UVBounds(face, u_low, u_high, v_low, v_high);
  const Boundary boundary(face, surface, {(u_low + u_high) / 2, (v_low + v_high) / 2});
  const BRepTopAdaptor_FClass2d classifier(face, Precision::PConfusion());
  std::optional<gp_Pnt2d> best;
  double clearance = 0;
  for (const double u : kFractions) {
    for (const double v : kFractions) {
      const gp_Pnt2d uv(u_low + (u_high - u_low) * u, v_low + (v_high - v_low) * v);
      const double here = boundary.Clearance(uv);
      // A clearly better point is asked for, so that noise does not make the choice.
      if (here < 1.001 * clearance || classifier.Perform(uv) != TopAbs_IN || !HasNormal(surface, uv))
        continue;
      best = uv;
      clearance = here;
    }
  }
  return best;
}

gp_Pnt2d AnyInside(const TopoDS_Face& face) {
  gp_Pnt point;
  gp_Pnt2d uv;
  const Handle(IntTools_Context) context = new IntTools_Context;
  if (BOPTools_AlgoTools3D::PointInFace(face, point, uv, context) != 0)
    throw Standard_Failure("no point was found inside a face");
  return uv;
}

}  // namespace

InsidePoint FindInsidePoint(const TopoDS_Face& face) {
  const BRepAdaptor_Surface surface(face);
  const auto grid = BestOfGrid(face, surface);
  InsidePoint inside;
  inside.uv = grid ? *grid : AnyInside(face);
  BRepLProp_SLProps properties(surface, inside.uv.X(), inside.uv.Y(), 1, Precision::Confusion());
  inside.point = properties.Value();
  inside.normal = properties.Normal();
  if (face.Orientation() == TopAbs_REVERSED) inside.normal.Reverse();
  return inside;
}

}  // namespace bench::kernel
