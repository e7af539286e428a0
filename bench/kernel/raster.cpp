#include "bench/kernel/raster.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace bench::kernel {

namespace {

constexpr float kNothing = -std::numeric_limits<float>::infinity();

// Rows of pixels that are drawn at a time, so that even the largest picture needs little room.
constexpr int kBandRows = 16;

// A line lies on the very surfaces whose edge it is; it is drawn as if this much nearer, in pixels. What lies
// in a surface leads by its width so often, for that may slant.
constexpr float kLineLead = 1.5f;

// Points a pixel and side that are drawn and averaged: the fewer, the larger the picture is.
int SamplesAcross(int width, int height) {
  const double pixels = static_cast<double>(width) * height;
  return pixels <= 4e6 ? 4 : pixels <= 16e6 ? 3 : 2;
}

// The rows of samples that something covers.
struct Rows {
  int first = 0, last = -1;
};

// Coordinates in samples from here on, whose middles lie at 0, 1, 2, …
class Band {
 public:
  Band(int width, int height, int samples)
      : width_(width), height_(height), samples_(samples), across_(width * samples) {
    const std::size_t size = static_cast<std::size_t>(across_) * kBandRows * samples;
    depth_.resize(size);
    color_.resize(size);
    line_.resize(size);
  }

  void Begin(int number) {
    first_pixel_ = number * kBandRows;
    pixels_ = std::min(kBandRows, height_ - first_pixel_);
    first_ = first_pixel_ * samples_;
    rows_ = pixels_ * samples_;
    std::fill(depth_.begin(), depth_.end(), kNothing);
    std::fill(line_.begin(), line_.end(), std::uint8_t{0});
    for (int row = 0; row < rows_; ++row) {
      const int pixel = first_pixel_ + row / samples_;
      const Rgb behind = BackgroundAt((pixel + 0.5) / height_);
      std::fill_n(color_.begin() + Offset(row), across_, Packed(behind));
    }
  }

  void Draw(const ScreenTriangle& triangle, const ShadeTable& shades);
  void Draw(const ScreenLine& line) {
    Follow(line.from, line.to, line.width, kLineLead,
           [&](std::size_t sample) { line_[sample] = std::max(line_[sample], line.strength); });
  }
  void Draw(const ScreenStroke& stroke) {
    Follow(stroke.from, stroke.to, stroke.width, kLineLead * std::max(stroke.width, 1.0f),
           [&](std::size_t sample) {
             color_[sample] = stroke.color;
             line_[sample] = 0;
           });
  }
  void Resolve(Picture& picture) const;

 private:
  // Paints every sample that lies within the width of the line and isn't hidden.
  template <typename Paint>
  void Follow(const ScreenPoint& start, const ScreenPoint& end, float width, float lead, Paint&& paint);

  float InSamples(float pixels) const { return pixels * static_cast<float>(samples_) - 0.5f; }
  std::ptrdiff_t Offset(int row) const { return static_cast<std::ptrdiff_t>(row) * across_; }

  // Of what reaches from low to high, in samples, those that lie in this band.
  Rows Covered(float low, float high) const {
    const float from = std::max(std::ceil(low), static_cast<float>(first_));
    const float to = std::min(std::floor(high), static_cast<float>(first_ + rows_ - 1));
    if (!(from <= to)) return {};
    return {static_cast<int>(from) - first_, static_cast<int>(to) - first_};
  }
  Rows Columns(float low, float high) const {
    const float from = std::max(std::ceil(low), 0.0f);
    const float to = std::min(std::floor(high), static_cast<float>(across_ - 1));
    if (!(from <= to)) return {};
    return {static_cast<int>(from), static_cast<int>(to)};
  }

  int width_, height_, samples_, across_;
  int first_pixel_ = 0, pixels_ = 0, first_ = 0, rows_ = 0;
  std::vector<float> depth_;
  std::vector<std::uint32_t> color_;
  std::vector<std::uint8_t> line_;
};

// A value that is given at a triangle's corners and changes evenly between them.
struct Ramp {
  double at_start = 0, by_x = 0, by_y = 0;

  double At(double x, double y) const { return at_start + by_x * x + by_y * y; }
};

// Two sides of a triangle as they lead away from its first corner.
class Ramps {
 public:
  Ramps(const std::array<double, 3>& x, const std::array<double, 3>& y)
      : x_(x[0]), y_(y[0]), x1_(x[1] - x[0]), y1_(y[1] - y[0]), x2_(x[2] - x[0]), y2_(y[2] - y[0]) {
    area_ = x1_ * y2_ - x2_ * y1_;
  }

  bool IsFlat() const { return !(std::abs(area_) > 1e-9); }
  Ramp Of(double a, double b, double c) const {
    Ramp ramp;
    ramp.by_x = ((b - a) * y2_ - (c - a) * y1_) / area_;
    ramp.by_y = ((c - a) * x1_ - (b - a) * x2_) / area_;
    ramp.at_start = a - ramp.by_x * x_ - ramp.by_y * y_;
    return ramp;
  }

 private:
  double x_, y_, x1_, y1_, x2_, y2_, area_ = 0;
};

bool HasOneNormal(const std::array<ScreenNode, 3>& nodes) {
  const auto& [a, b, c] = nodes;
  return a.right == b.right && a.right == c.right && a.up == b.up && a.up == c.up;
}

// Where the row of that height crosses the triangle; nothing when low is above high.
struct Span {
  double low = 1, high = -1;
};

Span SpanAt(const std::array<double, 3>& x, const std::array<double, 3>& y, double row) {
  Span span{std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
  for (int i = 0; i < 3; ++i) {
    const int k = (i + 1) % 3;
    const auto [from, to] = std::minmax(y[i], y[k]);
    if (row < from || row > to) continue;
    // The same way round for both triangles of a side, so that no gap opens between them.
    const int start = y[i] < y[k] || (y[i] == y[k] && x[i] < x[k]) ? i : k, end = start == i ? k : i;
    const double share = to > from ? (row - y[start]) / (y[end] - y[start]) : 0;
    const double at = x[start] + (x[end] - x[start]) * share;
    span.low = std::min({span.low, at, to > from ? at : x[end]});
    span.high = std::max({span.high, at, to > from ? at : x[end]});
  }
  return span;
}

void Band::Draw(const ScreenTriangle& triangle, const ShadeTable& shades) {
  std::array<double, 3> x, y;
  for (std::size_t i = 0; i < 3; ++i) {
    x[i] = InSamples(triangle.nodes[i].at.x);
    y[i] = InSamples(triangle.nodes[i].at.y);
  }
  const auto [top, bottom] = std::minmax({y[0], y[1], y[2]});
  const Rows rows = Covered(static_cast<float>(top), static_cast<float>(bottom));
  const Ramps ramps(x, y);
  if (rows.first > rows.last || ramps.IsFlat()) return;
  const auto& [a, b, c] = triangle.nodes;
  const Ramp depth = ramps.Of(a.at.z, b.at.z, c.at.z);
  const Ramp right = ramps.Of(a.right, b.right, c.right), up = ramps.Of(a.up, b.up, c.up);
  const auto [furthest, nearest] = std::minmax({a.at.z, b.at.z, c.at.z});
  const bool is_even = HasOneNormal(triangle.nodes);
  const std::uint32_t even = shades.At(a.right, a.up);
  for (int row = rows.first; row <= rows.last; ++row) {
    const double at = first_ + row;
    const Span span = SpanAt(x, y, at);
    const Rows columns = Columns(static_cast<float>(span.low), static_cast<float>(span.high));
    float z = static_cast<float>(depth.At(columns.first, at));
    float n = static_cast<float>(right.At(columns.first, at)),
          m = static_cast<float>(up.At(columns.first, at));
    const auto dz = static_cast<float>(depth.by_x), dn = static_cast<float>(right.by_x),
               dm = static_cast<float>(up.by_x);
    float* const depths = depth_.data() + Offset(row);
    std::uint32_t* const colors = color_.data() + Offset(row);
    for (int column = columns.first; column <= columns.last; ++column, z += dz, n += dn, m += dm) {
      // On a sliver the ramps are so steep that they shoot beyond the corners.
      const float held = std::clamp(z, furthest, nearest);
      if (held <= depths[column]) continue;
      depths[column] = held;
      colors[column] = is_even ? even : shades.At(n, m);
    }
  }
}

template <typename Paint>
void Band::Follow(const ScreenPoint& from, const ScreenPoint& to, float width, float lead, Paint&& paint) {
  const float x = InSamples(from.x), y = InSamples(from.y);
  const float dx = InSamples(to.x) - x, dy = InSamples(to.y) - y, dz = to.z - from.z;
  const float reach = width * static_cast<float>(samples_) / 2;
  const float length = dx * dx + dy * dy;
  const Rows rows = Covered(std::min(y, y + dy) - reach, std::max(y, y + dy) + reach);
  for (int row = rows.first; row <= rows.last; ++row) {
    const auto at = static_cast<float>(first_ + row);
    // The part of the line that is near enough to the row.
    float begin = 0, end = 1;
    if (std::abs(dy) > 1e-3f) {
      const float one = (at - reach - y) / dy, other = (at + reach - y) / dy;
      begin = std::clamp(std::min(one, other), 0.0f, 1.0f);
      end = std::clamp(std::max(one, other), 0.0f, 1.0f);
    }
    const auto [low, high] = std::minmax({x + dx * begin, x + dx * end});
    const Rows columns = Columns(low - reach, high + reach);
    for (int column = columns.first; column <= columns.last; ++column) {
      const float px = static_cast<float>(column) - x, py = at - y;
      const float t = length > 0 ? std::clamp((px * dx + py * dy) / length, 0.0f, 1.0f) : 0.0f;
      const float away_x = px - dx * t, away_y = py - dy * t;
      if (away_x * away_x + away_y * away_y > reach * reach) continue;
      const auto sample = static_cast<std::size_t>(Offset(row) + column);
      if (from.z + dz * t + lead < depth_[sample]) continue;
      paint(sample);
    }
  }
}

void Band::Resolve(Picture& picture) const {
  const std::uint32_t edge = Packed(EdgeColor());
  const auto parts = static_cast<std::uint32_t>(samples_ * samples_) * 255;
  for (int row = 0; row < pixels_; ++row) {
    std::uint8_t* pixel = picture.rgb.data() +
                          static_cast<std::size_t>(first_pixel_ + row) * static_cast<std::size_t>(width_) * 3;
    for (int column = 0; column < width_; ++column, pixel += 3) {
      std::uint32_t sums[3] = {0, 0, 0};
      for (int i = 0; i < samples_; ++i) {
        const auto start = static_cast<std::size_t>(Offset(row * samples_ + i) + column * samples_);
        for (std::size_t sample = start; sample < start + static_cast<std::size_t>(samples_); ++sample) {
          const std::uint32_t color = color_[sample], dark = line_[sample];
          for (int k = 0; k < 3; ++k) {
            const int shift = 16 - 8 * k;
            sums[k] += (color >> shift & 255) * (255 - dark) + (edge >> shift & 255) * dark;
          }
        }
      }
      for (int k = 0; k < 3; ++k) pixel[k] = static_cast<std::uint8_t>((sums[k] + parts / 2) / parts);
    }
  }
}

// For each band, the things that reach into it: their numbers, in order.
class Bins {
 public:
  explicit Bins(int height) : bins_(static_cast<std::size_t>((height + kBandRows - 1) / kBandRows)) {}

  void Add(std::uint32_t number, float low, float high) {
    const float last = static_cast<float>(bins_.size()) - 1;
    const float from = std::max(std::floor((low - 1) / kBandRows), 0.0f);
    const float to = std::min(std::floor((high + 1) / kBandRows), last);
    for (float bin = from; bin <= to; ++bin) bins_[static_cast<std::size_t>(bin)].push_back(number);
  }
  const std::vector<std::uint32_t>& At(int band) const { return bins_[static_cast<std::size_t>(band)]; }
  int Count() const { return static_cast<int>(bins_.size()); }

 private:
  std::vector<std::vector<std::uint32_t>> bins_;
};

}  // namespace

Picture Rasterized(const ScreenDrawing& drawing, int width, int height) {
  Picture picture{width, height, {}};
  picture.rgb.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
  Bins triangles(height), lines(height), strokes(height);
  for (std::uint32_t i = 0; i < drawing.triangles.size(); ++i) {
    const auto& [a, b, c] = drawing.triangles[i].nodes;
    triangles.Add(i, std::min({a.at.y, b.at.y, c.at.y}), std::max({a.at.y, b.at.y, c.at.y}));
  }
  const auto add_lines = [](const auto& list, Bins& bins) {
    for (std::uint32_t i = 0; i < list.size(); ++i)
      bins.Add(i, std::min(list[i].from.y, list[i].to.y) - list[i].width,
               std::max(list[i].from.y, list[i].to.y) + list[i].width);
  };
  add_lines(drawing.lines, lines);
  add_lines(drawing.strokes, strokes);
  Band band(width, height, SamplesAcross(width, height));
  for (int number = 0; number < triangles.Count(); ++number) {
    band.Begin(number);
    for (const std::uint32_t i : triangles.At(number))
      band.Draw(drawing.triangles[i], drawing.materials[drawing.triangles[i].material]);
    for (const std::uint32_t i : lines.At(number)) band.Draw(drawing.lines[i]);
    for (const std::uint32_t i : strokes.At(number)) band.Draw(drawing.strokes[i]);
    band.Resolve(picture);
  }
  return picture;
}

}  // namespace bench::kernel
