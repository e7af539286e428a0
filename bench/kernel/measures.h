// Volumes, areas and moments.
#pragma once

#include <gp_Mat.hxx>
#include <gp_Pnt.hxx>

#include "bench/kernel/face_integrals.h"
#include "bench/kernel/named_shape.h"

namespace bench::kernel {

struct FaceMeasure {
  double area = 0;  // mm²
  gp_Pnt center;
};

struct MassProperties {
  double volume = 0;  // mm³
  double area = 0;    // mm²
  gp_Pnt center;
  gp_Mat inertia;  // the tensor about the centre, for density 1: mm⁵
};

FaceMeasure MeasureOf(const FaceIntegrals& face);

// Of the solids whose faces' integrals are summed up.
MassProperties MassOf(const FaceIntegrals& sum);

// The sum of the solids' volumes: below 0 when they are turned outside in, 0 without any.
double VolumeOf(const NamedShape& shape);

// What a change did to a shape's volume. Faces that were there before and still are cost nothing.
struct VolumeChange {
  double gained = 0;    // mm³
  double at_stake = 0;  // what all other faces stand for, each for itself: no error of integration is more
                        // than a small part of it
};
VolumeChange ChangeOfVolume(const NamedShape& before, const NamedShape& after);

}  // namespace bench::kernel
