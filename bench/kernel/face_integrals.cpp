#include "bench/kernel/face_integrals.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <Geom2dAdaptor_Curve.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <algorithm>
#include <cmath>
#include <vector>

namespace bench::kernel {

namespace {

// The toolkit's own integrals stop at 1e-3 on walls that are swept of ellipses and splines, hence these.
// Their error, against the area and the distance from the origin.
constexpr double kPrecision = 1e-12;

// Green's theorem over the face's parameters: the integral of f over the face is that of F dv along its
// boundary, with F the integral of f from a fixed u to the boundary's.
class Integrator {
 public:
  explicit Integrator(const TopoDS_Face& face)
      : face_(TopoDS::Face(face.Oriented(TopAbs_FORWARD))),
        outwards_(face.Orientation() == TopAbs_REVERSED ? -1 : 1),
        surface_(face_) {
    double u_high = 0, v_low = 0, v_high = 0;
    BRepTools::UVBounds(face_, u_low_, u_high, v_low, v_high);
    SetTolerances(u_high, v_low, v_high);
    TColStd_Array1OfReal breaks(1, surface_.NbUIntervals(GeomAbs_CN) + 1);
    surface_.UIntervals(breaks, GeomAbs_CN);
    for (const double u : breaks) {
      if (u > u_low_) breaks_.push_back(u);
    }
  }

  FaceIntegrals Whole() const {
    FaceIntegrals sum{};
    for (TopExp_Explorer edges(face_, TopAbs_EDGE); edges.More(); edges.Next())
      AddTo(sum, AlongEdge(TopoDS::Edge(edges.Current())));
    return sum;
  }

 private:
  // From the face's rough area and its distance from the origin: the values themselves may be nothing but
  // noise.
  void SetTolerances(double u_high, double v_low, double v_high) {
    constexpr int kSteps = 4;
    double density = 0, reach = 0;
    for (int i = 0; i <= kSteps; ++i) {
      for (int k = 0; k <= kSteps; ++k) {
        gp_Pnt point;
        gp_Vec along_u, along_v;
        surface_.D1(u_low_ + (u_high - u_low_) * i / kSteps, v_low + (v_high - v_low) * k / kSteps, point,
                    along_u, along_v);
        density = std::max(density, along_u.Crossed(along_v).Magnitude());
        reach = std::max(reach, point.XYZ().Modulus());
      }
    }
    // The powers of a length, beside the area's, that the integrals have.
    constexpr std::array<int, kFaceIntegrals> kPowers = {0, 1, 1, 1, 1, 2, 2, 2, 3, 3, 3, 3, 3, 3};
    for (std::size_t i = 0; i < kPowers.size(); ++i) {
      line_tolerances_[i] = kPrecision * density * (u_high - u_low_) * std::pow(reach, kPowers[i]);
      tolerances_[i] = line_tolerances_[i] * (v_high - v_low);
    }
  }

  FaceIntegrals AlongEdge(const TopoDS_Edge& edge) const {
    double first = 0, last = 0;
    const auto pcurve = BRep_Tool::CurveOnSurface(edge, face_, first, last);
    FaceIntegrals sum{};
    if (pcurve.IsNull()) return sum;
    const Geom2dAdaptor_Curve curve(pcurve, first, last);
    TColStd_Array1OfReal ends(1, curve.NbIntervals(GeomAbs_CN) + 1);
    curve.Intervals(ends, GeomAbs_CN);
    const auto along = [&](double t) {
      gp_Pnt2d uv;
      gp_Vec2d way;
      curve.D1(t, uv, way);
      FaceIntegrals values{};
      if (way.Y() == 0) return values;
      values = UpTo(uv);
      for (double& value : values) value *= way.Y();
      return values;
    };
    for (int i = ends.Lower(); i < ends.Upper(); ++i)
      AddTo(sum, Integrate<kFaceIntegrals>(along, ends(i), ends(i + 1), tolerances_));
    if (edge.Orientation() == TopAbs_REVERSED) {
      for (double& value : sum) value = -value;
    }
    return sum;
  }

  FaceIntegrals UpTo(const gp_Pnt2d& uv) const {
    const auto at = [&](double u) { return At(u, uv.Y()); };
    if (surface_.GetType() == GeomAbs_Plane) return IntegrateCubic<kFaceIntegrals>(at, u_low_, uv.X());
    FaceIntegrals sum{};
    double from = u_low_;
    for (const double to : breaks_) {
      if (to >= uv.X()) break;
      AddTo(sum, Integrate<kFaceIntegrals>(at, from, to, line_tolerances_));
      from = to;
    }
    if (uv.X() != from) AddTo(sum, Integrate<kFaceIntegrals>(at, from, uv.X(), line_tolerances_));
    return sum;
  }

  FaceIntegrals At(double u, double v) const {
    gp_Pnt point;
    gp_Vec along_u, along_v;
    surface_.D1(u, v, point, along_u, along_v);
    const gp_Vec outward = along_u.Crossed(along_v) * outwards_;
    const double area = outward.Magnitude();
    const double x = point.X(), y = point.Y(), z = point.Z();
    const double nx = outward.X(), ny = outward.Y(), nz = outward.Z();
    return {area,
            area * x,
            area * y,
            area * z,
            (x * nx + y * ny + z * nz) / 3,
            x * x * nx / 2,
            y * y * ny / 2,
            z * z * nz / 2,
            x * x * x * nx / 3,
            y * y * y * ny / 3,
            z * z * z * nz / 3,
            x * x * y * nx / 2,
            y * y * z * ny / 2,
            z * z * x * nz / 2};
  }

  TopoDS_Face face_;
  double outwards_;
  BRepAdaptor_Surface surface_;
  double u_low_ = 0;
  std::vector<double> breaks_;
  FaceIntegrals tolerances_{};       // over the face
  FaceIntegrals line_tolerances_{};  // along a line of constant v
};

}  // namespace

FaceIntegrals IntegrateFace(const TopoDS_Face& face) {
  return Integrator(face).Whole();
}

}  // namespace bench::kernel
