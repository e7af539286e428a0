// Integrals over a face: what it adds to the areas and, by the divergence theorem, to the volumes of its
// solid.
#pragma once

#include <TopoDS_Face.hxx>

#include "bench/kernel/integration.h"

namespace bench::kernel {

// The places of the integrals. Moments are about the origin of space; the volumes' parts count outwards, so
// that the sum over a closed shell is the solid's.
enum FaceIntegral {
  kArea,
  kAreaX,
  kAreaY,
  kAreaZ,
  kVolume,
  kVolumeX,
  kVolumeY,
  kVolumeZ,
  kVolumeXX,
  kVolumeYY,
  kVolumeZZ,
  kVolumeXY,
  kVolumeYZ,
  kVolumeZX,
  kFaceIntegrals
};

using FaceIntegrals = Values<kFaceIntegrals>;

FaceIntegrals IntegrateFace(const TopoDS_Face& face);

}  // namespace bench::kernel
