// What a view shows of its model, as the kernel projects it.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/host/drawing/cross_section.h"
#include "bench/host/model/drawing.h"

namespace bench {

using Polyline = std::vector<Vector2>;

// Cut material, whole within its closed outer line but for the holes.
struct SectionRegion {
  int body = 0;  // which of the model's, so that neighbours can be told apart
  Polyline outer;
  std::vector<Polyline> holes;
};

// Millimetres along the view's axes, unscaled.
struct Projection {
  std::vector<Polyline> visible, hidden;
  std::vector<SectionRegion> section;
  std::optional<Rectangle> bounds;  // nothing where there is no material
};

// The kernel gave no answer, or none that can be read.
struct NoProjection : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Where the view is cut, the normal towards the reader; a detail is cut as its parent is. Nothing for a view
// that isn't, and for one whose cross-section is gone or has no plane any more.
std::optional<CutPlane> CutOf(const Drawing& drawing, const DrawingView& view);

// All that the view's model shows; of a detail, also what lies outside its border. Empty for a view without a
// model. Throws NoProjection.
Projection ProjectionOf(const Drawing& drawing, const DrawingView& view);

// The room of the same lines, as the view is now or without its cut; nothing where nothing is. Throws
// NoProjection.
std::optional<Rectangle> BoundsOf(const Drawing& drawing, const DrawingView& view);
std::optional<Rectangle> UncutBoundsOf(const Drawing& drawing, const DrawingView& view);

// The view's room on the sheet; a detail's is that of its border, a view of nothing has its centre alone.
// Throws NoProjection.
Rectangle OutlineOf(const Drawing& drawing, const DrawingView& view);

}  // namespace bench
