// Points and directions as the wire has them.
#pragma once

#include <nlohmann/json.hpp>

namespace bench::kernel {

template <typename T>
nlohmann::json Triple(const T& value) {
  // Adding zero takes the sign off a negative one.
  return {value.X() + 0.0, value.Y() + 0.0, value.Z() + 0.0};
}

}  // namespace bench::kernel
