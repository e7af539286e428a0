// Millimetres and model units. The host is asked for the factor on each call; nothing caches it.
#pragma once

#include <ProMdl.h>

namespace vek {

// Model units per millimetre; 1 when the host doesn't tell.
double MmToModelScale(ProMdl model);

// `value` millimetres in model units; `value` itself when the factor can't be had.
double MmToModel(ProMdl model, double value);

// The same, and a factor that is not finite, or smaller in size than 1e-18, leaves `value` as it was.
double MmToModelGuarded(ProMdl model, double value);

// `value` model units in millimetres, with the same guard.
double ModelToMm(ProMdl model, double value);

}  // namespace vek
