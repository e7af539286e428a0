// A model's own values under names.
#pragma once

#include <string>
#include <variant>

namespace bench {

struct Parameter {
  std::wstring name;  // as it was given; names are compared without regard to case
  std::variant<double, std::wstring, int, bool> value = 0.0;
  std::wstring unit;  // of a number; empty for none
  bool locked = false;
};

}  // namespace bench
