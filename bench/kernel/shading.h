// How the surfaces of a picture look in the light, and what stands behind them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench::kernel {

struct Rgb {
  std::uint8_t red = 0, green = 0, blue = 0;
};

// 0x00rrggbb
std::uint32_t Packed(const Rgb& color);

// The colours of a surface of one material for every direction that it can face. The lights stand beside the
// viewer and light all parts alike, so that a direction is all that a colour depends on.
class ShadeTable {
 public:
  explicit ShadeTable(const Rgb& material);

  // For a normal towards the viewer, by what it has to the right and upwards; packed.
  std::uint32_t At(float right, float up) const { return colors_[Index(up) * kSteps + Index(right)]; }

 private:
  static constexpr int kSteps = 512;
  static std::size_t Index(float part) {
    constexpr float kLast = kSteps - 1;
    return static_cast<std::size_t>(std::clamp((part + 1) * (kSteps / 2), 0.0f, kLast));
  }

  std::vector<std::uint32_t> colors_;
};

// The colour that the parts of an assembly have one after the other.
Rgb PartColor(std::size_t number);

Rgb EdgeColor();

// Of a sketch's curves and points; of its construction and centerlines.
Rgb SketchColor();
Rgb GuideColor();

// From 0, the upper edge of the picture, to 1.
Rgb BackgroundAt(double share);

}  // namespace bench::kernel
