#include "bench/host/model/surface_types.h"

namespace bench {

int SurfaceTypeNumber(std::string_view word) {
  constexpr struct {
    std::string_view word;
    int number;
  } kKinds[] = {{"plane", 34},    {"cylinder", 36}, {"cone", 37},     {"torus", 38},
                {"revolved", 43}, {"sphere", 43},   {"extruded", 44}, {"spline", 45}};
  constexpr int kForeign = 46;
  for (const auto& kind : kKinds)
    if (kind.word == word) return kind.number;
  return kForeign;
}

}  // namespace bench
