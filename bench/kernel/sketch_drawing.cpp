#include "bench/kernel/sketch_drawing.h"

#include <algorithm>
#include <cmath>

#include "bench/kernel/hidden_lines.h"
#include "bench/kernel/shading.h"

namespace bench::kernel {

namespace {

void AddLines(const std::vector<SketchCurve>& curves, const std::vector<SketchPoint>& points,
              double deflection, SketchLines& lines) {
  for (const SketchCurve& curve : curves) lines.curves.push_back(PointsAlong(curve.edge, deflection));
  for (const SketchPoint& point : points) lines.points.push_back(point.at.XYZ());
}

ScreenPoint Between(const ScreenPoint& from, const ScreenPoint& to, double share) {
  const auto part = static_cast<float>(share);
  return {from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part, from.z + (to.z - from.z) * part};
}

class SketchDrawer {
 public:
  SketchDrawer(const gp_Trsf& place, const ScreenFit& fit, const SketchPen& pen, ScreenDrawing& drawing)
      : place_(place), fit_(fit), pen_(pen), drawing_(drawing) {}

  void DrawCurve(const std::vector<gp_XYZ>& points) {
    double travelled = 0;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      const ScreenPoint from = Pixel(points[i]), to = Pixel(points[i + 1]);
      const double length = std::hypot(to.x - from.x, to.y - from.y);
      if (pen_.gap > 0)
        AddDashes(from, to, travelled, length);
      else
        AddStroke(from, to);
      travelled += length;
    }
  }

  // Its arms lie in the screen, so that on a slanted surface some of them would be hidden by it.
  void DrawPoint(const gp_XYZ& point) {
    ScreenPoint at = Pixel(point);
    at.z += pen_.cross;
    const float arm = pen_.cross;
    AddStroke({at.x - arm, at.y - arm, at.z}, {at.x + arm, at.y + arm, at.z});
    AddStroke({at.x - arm, at.y + arm, at.z}, {at.x + arm, at.y - arm, at.z});
  }

 private:
  ScreenPoint Pixel(gp_XYZ at) const {
    place_.Transforms(at);
    return fit_.Pixel(at);
  }

  // Of a piece that begins so far along its curve.
  void AddDashes(const ScreenPoint& from, const ScreenPoint& to, double travelled, double length) {
    const double period = pen_.dash + pen_.gap, end = travelled + length;
    for (double dash = std::floor(travelled / period); dash * period < end; ++dash) {
      const double low = std::max(dash * period, travelled), high = std::min(dash * period + pen_.dash, end);
      if (low < high)
        AddStroke(Between(from, to, (low - travelled) / length),
                  Between(from, to, (high - travelled) / length));
    }
  }

  void AddStroke(const ScreenPoint& from, const ScreenPoint& to) {
    drawing_.strokes.push_back({from, to, pen_.width, pen_.color});
  }

  const gp_Trsf& place_;
  const ScreenFit& fit_;
  const SketchPen& pen_;
  ScreenDrawing& drawing_;
};

}  // namespace

PartLines LinesOf(const std::vector<SketchGeometry>& sketches, double deflection) {
  PartLines lines;
  for (const SketchGeometry& sketch : sketches) {
    AddLines(sketch.curves, sketch.points, deflection, lines.geometry);
    AddLines(sketch.guides, sketch.guide_points, deflection, lines.guides);
  }
  return lines;
}

SketchPen GeometryPen(float scale) {
  return {.color = Packed(SketchColor()), .width = 2 * scale, .cross = 5 * scale};
}

SketchPen GuidePen(float scale) {
  return {.color = Packed(GuideColor()),
          .width = 1.4f * scale,
          .cross = 4 * scale,
          .dash = 9 * scale,
          .gap = 6 * scale};
}

void Draw(const SketchLines& lines, const gp_Trsf& place, const ScreenFit& fit, const SketchPen& pen,
          ScreenDrawing& drawing) {
  SketchDrawer drawer(place, fit, pen, drawing);
  for (const auto& curve : lines.curves) drawer.DrawCurve(curve);
  for (const gp_XYZ& point : lines.points) drawer.DrawPoint(point);
}

}  // namespace bench::kernel
