#include "bench/kernel/surface_frame.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepTools.hxx>
#include <cmath>
#include <gp_Ax3.hxx>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>
#include <gp_Sphere.hxx>
#include <gp_Torus.hxx>
#include <numbers>
#include <utility>

namespace bench::kernel {

namespace {

constexpr double kFullTurn = 2 * std::numbers::pi;

class FrameReader {
 public:
  FrameReader(const TopoDS_Face& face, const InsidePoint& inside) : surface_(face), inside_(inside) {
    BRepTools::UVBounds(face, frame_.u_low, frame_.u_high, frame_.v_low, frame_.v_high);
    frame_.orientation = face.Orientation() == TopAbs_REVERSED ? -1 : 1;
  }

  SurfaceFrame Read() {
    switch (surface_.GetType()) {
      case GeomAbs_Plane:
        ReadPlane(surface_.Plane().Position());
        break;
      case GeomAbs_Cylinder:
        ReadCylinder(surface_.Cylinder());
        break;
      case GeomAbs_Cone:
        ReadCone(surface_.Cone());
        break;
      case GeomAbs_Sphere:
        ReadSphere(surface_.Sphere());
        break;
      case GeomAbs_Torus:
        ReadTorus(surface_.Torus());
        break;
      case GeomAbs_BezierSurface:
      case GeomAbs_BSplineSurface:
        frame_.type = "spline";
        break;
      case GeomAbs_SurfaceOfRevolution:
        frame_.type = "revolved";
        frame_.origin = surface_.AxeOfRevolution().Location();
        frame_.axis = surface_.AxeOfRevolution().Direction();
        break;
      case GeomAbs_SurfaceOfExtrusion:
        frame_.type = "extruded";
        frame_.axis = surface_.Direction();
        break;
      default:
        break;
    }
    return frame_;
  }

 private:
  void ReadPlane(const gp_Ax3& position) {
    frame_.type = "plane";
    frame_.origin = position.Location();
    frame_.x = position.XDirection();
    // In a left-handed frame the axis is turned, and the parameters stay.
    frame_.axis = position.XDirection().Crossed(position.YDirection());
    Face(*frame_.axis);
  }

  void ReadCylinder(const gp_Cylinder& cylinder) {
    frame_.type = "cylinder";
    frame_.radius = cylinder.Radius();
    ReadRound(cylinder.Position());
    Face(FromAxis());
  }

  void ReadCone(const gp_Cone& cone) {
    frame_.type = "cone";
    frame_.radius = cone.RefRadius();
    frame_.half_angle_deg = std::abs(cone.SemiAngle()) * 180 / std::numbers::pi;
    gp_Ax3 position = cone.Position();
    if (cone.SemiAngle() < 0) {
      // Seen from its other end the cone opens along its axis.
      position.ZReverse();
      frame_.v_low = -std::exchange(frame_.v_high, -frame_.v_low);
    }
    ReadRound(position);
    Face(FromAxis());
  }

  void ReadSphere(const gp_Sphere& sphere) {
    frame_.type = "sphere";
    frame_.radius = sphere.Radius();
    ReadRound(sphere.Position());
    Face(gp_Vec(sphere.Location(), inside_.point));
  }

  void ReadTorus(const gp_Torus& torus) {
    frame_.type = "torus";
    frame_.radius = torus.MajorRadius();
    frame_.minor_radius = torus.MinorRadius();
    ReadRound(torus.Position());
    const gp_Vec out = FromAxis();
    const gp_Pnt tube = frame_.origin->Translated(out.Normalized() * torus.MajorRadius());
    Face(gp_Vec(tube, inside_.point));
  }

  // The frame of a surface about an axis. In a left-handed one, u runs the other way.
  void ReadRound(const gp_Ax3& position) {
    frame_.origin = position.Location();
    frame_.axis = position.Direction();
    frame_.x = position.XDirection();
    if (position.Direct()) return;
    frame_.u_low = -std::exchange(frame_.u_high, -frame_.u_low);
    const double turn = kFullTurn * std::ceil(-frame_.u_low / kFullTurn - 1e-9);
    frame_.u_low += turn;
    frame_.u_high += turn;
  }

  // The way from the axis to the point inside the face.
  gp_Vec FromAxis() const {
    const gp_Vec way(*frame_.origin, inside_.point);
    const gp_Vec axis(*frame_.axis);
    return way - axis * way.Dot(axis);
  }

  void Face(const gp_Vec& own_normal) {
    frame_.orientation = own_normal.Dot(gp_Vec(inside_.normal)) > 0 ? 1 : -1;
  }

  BRepAdaptor_Surface surface_;
  InsidePoint inside_;
  SurfaceFrame frame_;
};

}  // namespace

SurfaceFrame FrameOf(const TopoDS_Face& face, const InsidePoint& inside) {
  return FrameReader(face, inside).Read();
}

}  // namespace bench::kernel
