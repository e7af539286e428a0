#include "bench/kernel/screen_fit.h"

#include <algorithm>

namespace bench::kernel {

namespace {

constexpr double kMargin = 0.05;  // of the picture's side, on each side

}  // namespace

void ScreenFit::Settle() {
  const gp_XYZ size = room_.high - room_.low;
  // Less than this is what rounding leaves of something that is seen edge-on.
  const double least = 1e-9 * size.Modulus();
  const double across = size.X() > least ? size.X() / width_ : 0;
  const double up = size.Y() > least ? size.Y() / height_ : 0;
  if (across > 0 || up > 0) scale_ = (1 - 2 * kMargin) / std::max(across, up);
  middle_ = (room_.high + room_.low) / 2;
}

ScreenPoint ScreenFit::Pixel(const gp_XYZ& at) const {
  const gp_XYZ away = (OnScreen(at) - middle_) * scale_;
  return {static_cast<float>(width_ / 2.0 + away.X()), static_cast<float>(height_ / 2.0 - away.Y()),
          static_cast<float>(away.Z())};
}

}  // namespace bench::kernel
