// Points, directions and derivatives on their way to callers, who may want none of them.
#pragma once

#include "bench/host/model/vector3.h"

namespace bench {

inline void WriteOut(const Vector3& value, double factor, double* out) {
  if (!out) return;
  for (int i = 0; i < 3; ++i) out[i] = value[i] * factor;
}

}  // namespace bench
