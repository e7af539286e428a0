#include "bench/host/plot/view_plot.h"

#include <algorithm>
#include <cmath>

#include "bench/host/plot/centre_lines.h"
#include "bench/host/plot/hatching.h"

namespace bench {
namespace {

std::vector<Polyline> OnSheet(const Drawing& drawing, const DrawingView& view, std::vector<Polyline> lines) {
  for (Polyline& line : lines)
    for (Vector2& point : line) point = drawing.OnSheet(view, point);
  return lines;
}

bool LooksAlongAnAxis(const DrawingView& view) {
  constexpr double kStraight = 1e-6;
  return std::ranges::any_of(view.Axis(2), [](double part) { return std::abs(part) > 1 - kStraight; });
}

void DrawLines(const Drawing& drawing, const DrawingView& view, const Projection& projection,
               SvgWriter& svg) {
  const auto cut = CutOf(drawing, view);
  for (const SectionRegion& region : projection.section) {
    std::vector<Polyline> loops = region.holes;
    loops.push_back(region.outer);
    svg.Lines(Hatched(OnSheet(drawing, view, loops), region.body), Pen::kNarrow);
  }
  if (!cut && LooksAlongAnAxis(view)) svg.Lines(OnSheet(drawing, view, projection.hidden), Pen::kHidden);
  svg.Lines(OnSheet(drawing, view, projection.visible), Pen::kVisible);
  if (LooksAlongAnAxis(view)) DrawCentreLines(drawing, view, cut, svg);
}

}  // namespace

std::vector<Polyline> DrawView(const Drawing& drawing, const DrawingView& view, SvgWriter& svg) {
  const Projection projection = ProjectionOf(drawing, view);
  svg.BeginGroup("view", view.name);
  if (view.detail) {
    std::vector<Vector2> border;
    for (const Vector2& point : view.detail->spline) border.push_back(drawing.OnSheet(view, point));
    svg.BeginWithin(border);
    DrawLines(drawing, view, projection, svg);
    svg.EndGroup();
    svg.ClosedCurve(border, Pen::kNarrow);
  } else {
    DrawLines(drawing, view, projection, svg);
  }
  svg.EndGroup();
  return OnSheet(drawing, view, projection.visible);
}

}  // namespace bench
