#include "bench/kernel/shading.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace bench::kernel {

namespace {

struct Direction {
  double x, y, z;  // right, up, towards the viewer

  double Dot(const Direction& other) const { return x * other.x + y * other.y + z * other.z; }
  Direction Unit() const {
    const double length = std::sqrt(Dot(*this));
    return {x / length, y / length, z / length};
  }
};

struct Light {
  double plain = 0, gloss = 0;
};

// A large light, which reaches around a little: its share for the cosine of the angle to its middle.
double Reaching(double cosine) {
  constexpr double kAround = 0.35;
  const double share = std::max(0.0, (cosine + kAround) / (1 + kAround));
  return share * share;
}

// A strong light from the upper left, a weak one from the right, the sky above and the floor below.
Light LightOn(const Direction& normal) {
  static const Direction key = Direction{-0.60, 0.50, 0.62}.Unit();
  static const Direction fill = Direction{0.75, -0.05, 0.50}.Unit();
  static const Direction half = Direction{key.x, key.y, key.z + 1}.Unit();
  constexpr double kFloor = 0.38, kSky = 0.16, kKey = 0.56, kFill = 0.24, kGloss = 0.14, kSharpness = 36;
  Light light;
  light.plain = kFloor + kSky * (1 + normal.y) / 2 + kKey * Reaching(normal.Dot(key)) +
                kFill * Reaching(normal.Dot(fill));
  light.gloss = kGloss * std::pow(std::max(0.0, normal.Dot(half)), kSharpness);
  return light;
}

std::uint8_t Lit(std::uint8_t material, const Light& light) {
  return static_cast<std::uint8_t>(std::clamp(material * light.plain + 255 * light.gloss, 0.0, 255.0) + 0.5);
}

std::uint8_t Between(std::uint8_t from, std::uint8_t to, double share) {
  return static_cast<std::uint8_t>(from + (to - from) * share + 0.5);
}

}  // namespace

std::uint32_t Packed(const Rgb& color) {
  return std::uint32_t{color.red} << 16 | std::uint32_t{color.green} << 8 | color.blue;
}

ShadeTable::ShadeTable(const Rgb& material) {
  colors_.reserve(kSteps * kSteps);
  for (int row = 0; row < kSteps; ++row) {
    for (int column = 0; column < kSteps; ++column) {
      const double x = (column + 0.5) * 2 / kSteps - 1, y = (row + 0.5) * 2 / kSteps - 1;
      const double z = std::sqrt(std::max(0.0, 1 - x * x - y * y));
      const Light light = LightOn(Direction{x, y, z}.Unit());
      colors_.push_back(
          Packed({Lit(material.red, light), Lit(material.green, light), Lit(material.blue, light)}));
    }
  }
}

Rgb PartColor(std::size_t number) {
  static constexpr std::array<Rgb, 8> kColors{{{182, 196, 212},
                                               {222, 190, 138},
                                               {158, 190, 152},
                                               {128, 166, 208},
                                               {212, 150, 124},
                                               {176, 164, 206},
                                               {126, 184, 182},
                                               {196, 196, 190}}};
  return kColors[number % kColors.size()];
}

Rgb EdgeColor() {
  return {38, 46, 58};
}

Rgb SketchColor() {
  return {22, 60, 190};
}

Rgb GuideColor() {
  return {112, 138, 206};
}

Rgb BackgroundAt(double share) {
  constexpr Rgb kUpper{190, 203, 219}, kLower{243, 246, 249};
  return {Between(kUpper.red, kLower.red, share), Between(kUpper.green, kLower.green, share),
          Between(kUpper.blue, kLower.blue, share)};
}

}  // namespace bench::kernel
