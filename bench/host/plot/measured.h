// What the dimensions of a view measure, as far as it can be shown on its geometry.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "bench/host/drawing/projection.h"

namespace bench {

// Between two levels across or up the view; millimetres along its axes, unscaled.
struct LinearMeasure {
  int axis = 0;     // 0 across, 1 upwards
  double from = 0;  // the lesser level
  double to = 0;
  // Between which places along the other axis lies what is measured, at either level.
  Vector2 reach_at_from{}, reach_at_to{};
};

// Of a circle or an arc that is seen as such.
struct RoundMeasure {
  Vector2 center{};
  double radius = 0;
  double angle = 0;  // where on it, in radians, the arrow should point
};

struct ViewDimension {
  std::wstring symbol;
  std::wstring text;  // the value as it is written on a drawing
  // Nothing known: the value can be told but not shown.
  std::variant<std::monostate, LinearMeasure, RoundMeasure> measure;
};

// The view's shown dimensions that have a value, each number once: of a sketch and what was made of it, what
// was made of it.
std::vector<ViewDimension> DimensionsOf(const Drawing& drawing, const DrawingView& view);

}  // namespace bench
