// Draws triangles and lines into pixels, what lies nearer over what lies behind.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "bench/kernel/shading.h"

namespace bench::kernel {

// Rows from the top, three bytes a pixel: red, green, blue.
struct Picture {
  int width = 0, height = 0;
  std::vector<std::uint8_t> rgb;
};

// In pixels: x from the left edge, y from the upper one, z towards the viewer.
struct ScreenPoint {
  float x = 0, y = 0, z = 0;
};

struct ScreenNode {
  ScreenPoint at;
  float right = 0, up = 0;  // of a normal of length 1 towards the viewer
};

struct ScreenTriangle {
  std::array<ScreenNode, 3> nodes;
  std::uint32_t material = 0;  // an index into the drawing's
};

struct ScreenLine {
  ScreenPoint from, to;
  float width = 1;            // pixels
  std::uint8_t strength = 0;  // from 0, not to be seen, to 255, dark
};

// A line that covers what it lies on, lines too, with a colour of its own.
struct ScreenStroke {
  ScreenPoint from, to;
  float width = 1;          // pixels
  std::uint32_t color = 0;  // packed
};

// Of strokes that cross, the later one covers the other.
struct ScreenDrawing {
  std::vector<ShadeTable> materials;
  std::vector<ScreenTriangle> triangles;
  std::vector<ScreenLine> lines;
  std::vector<ScreenStroke> strokes;
};

// Both sides above 0. What lies outside of the picture is left out.
Picture Rasterized(const ScreenDrawing& drawing, int width, int height);

}  // namespace bench::kernel
