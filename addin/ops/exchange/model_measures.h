// Areas, volumes and masses of a model in the units in which they are told.
#pragma once

#include <ProMdl.h>

namespace vek::exchange {

double AreaInCm2(ProMdl model, double area);
double VolumeInCm3(ProMdl model, double volume);

// A mass that the host can't convert is told in the model's own unit.
double MassInKg(ProMdl model, double mass);

}  // namespace vek::exchange
