// What a part is after one of its features.
#pragma once

#include <string>
#include <vector>

#include "bench/kernel/features/sketch.h"
#include "bench/kernel/named_shape.h"

namespace bench::kernel {

struct Stage {
  bool refused = false;
  std::string reason;
  NamedShape body;
  std::vector<Quilt> quilts;  // of all features so far
  SketchGeometry drawn;       // by this feature alone
};

}  // namespace bench::kernel
