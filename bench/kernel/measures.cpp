#include "bench/kernel/measures.h"

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
  FaceIntegrals sum{};
  for (const TopoDS_Face& face : shape.Faces()) AddTo(sum, IntegrateFace(face));
  return sum[kVolume];
}

}  // namespace bench::kernel
