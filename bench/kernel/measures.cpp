#include "bench/kernel/measures.h"

#include <TopTools_MapOfOrientedShape.hxx>
#include <TopoDS.hxx>
#include <cmath>

namespace bench::kernel {

FaceMeasure MeasureOf(const FaceIntegrals& face) {
  const double area = face[kArea];
  return {area, gp_Pnt(face[kAreaX] / area, face[kAreaY] / area, face[kAreaZ] / area)};
}

MassProperties MassOf(const FaceIntegrals& sum) {
  const double volume = sum[kVolume];
  const double x = sum[kVolumeX] / volume, y = sum[kVolumeY] / volume, z = sum[kVolumeZ] / volume;
  const double xx = sum[kVolumeXX] - volume * x * x;
  const double yy = sum[kVolumeYY] - volume * y * y;
  const double zz = sum[kVolumeZZ] - volume * z * z;
  const double xy = sum[kVolumeXY] - volume * x * y;
  const double yz = sum[kVolumeYZ] - volume * y * z;
  const double zx = sum[kVolumeZX] - volume * z * x;
  return {volume, sum[kArea], gp_Pnt(x, y, z),
          gp_Mat(yy + zz, -xy, -zx, -xy, zz + xx, -yz, -zx, -yz, xx + yy)};
}

double VolumeOf(const NamedShape& shape) {
  double volume = 0;
  for (const TopoDS_Face& face : shape.Faces()) volume += IntegrateFace(face)[kVolume];
  return volume;
}

VolumeChange ChangeOfVolume(const NamedShape& before, const NamedShape& after) {
  TopTools_MapOfOrientedShape gone;
  for (const TopoDS_Face& face : before.Faces()) gone.Add(face);
  VolumeChange change;
  const auto count = [&change](const TopoDS_Face& face, int sign) {
    const double volume = IntegrateFace(face)[kVolume];
    change.gained += sign * volume;
    change.at_stake += std::abs(volume);
  };
  for (const TopoDS_Face& face : after.Faces())
    if (!gone.Remove(face)) count(face, 1);
  for (TopTools_MapOfOrientedShape::Iterator face(gone); face.More(); face.Next())
    count(TopoDS::Face(face.Key()), -1);
  return change;
}

}  // namespace bench::kernel
