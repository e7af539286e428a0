// How a scene comes onto the screen: in the middle of a picture, as large as it can be there.
#pragma once

#include <gp_XYZ.hxx>

#include "bench/kernel/bounds.h"
#include "bench/kernel/raster.h"
#include "bench/kernel/sight.h"

namespace bench::kernel {

// All points of the scene are added first, then it is settled, and then it tells their pixels.
class ScreenFit {
 public:
  // Both sides above 0.
  ScreenFit(const Sight& sight, int width, int height) : sight_(sight), width_(width), height_(height) {}

  // Right, up and towards the viewer, in the scene's unit.
  gp_XYZ OnScreen(const gp_XYZ& at) const {
    return {at.Dot(sight_.right), at.Dot(sight_.up), at.Dot(sight_.toward)};
  }
  void Add(const gp_XYZ& at) { room_.Add(OnScreen(at)); }

  // There is a margin, the same on both sides of the one way that the scene reaches further. One that is seen
  // as a point is in the middle, whatever its depth.
  void Settle();

  ScreenPoint Pixel(const gp_XYZ& at) const;

 private:
  Sight sight_;
  int width_, height_;
  Bounds room_;
  double scale_ = 1;  // pixels
  gp_XYZ middle_;
};

}  // namespace bench::kernel
