// Making views and changing them. A status other than 0 leaves the drawing as it was.
#pragma once

#include <ProObjects.h>

#include <string_view>

#include "bench/host/model/model.h"

namespace bench {

// What a view is to show and where: the middle of its outline comes to lie on `at`.
struct GeneralViewRequest {
  const Model* solid = nullptr;  // one of the drawing's
  int sheet = 1;
  Vector2 at{};
  std::optional<double> scale;  // nothing: the sheet's
  Matrix orientation = kNoMove;
};
ProError AddGeneralView(Model& drawing, const GeneralViewRequest& request, DrawingView*& view);

// Third angle: right of its parent the view from the right, above it that from above, and so on; where it is
// as far to the side as up, to the side. It is aligned with its parent, whatever the other coordinate of
// `at`.
ProError AddProjectedView(Model& drawing, const DrawingView& parent, const Vector2& at, DrawingView*& view);

// What lies within a closed spline on the parent, twice as large. `point` and `spline` are on the sheet; the
// point must lie within the parent's outline and within the spline.
struct DetailRequest {
  Vector2 point{};
  std::vector<Vector2> spline;
  Vector2 at{};
};
ProError AddDetailView(Model& drawing, const DrawingView& parent, const DetailRequest& request,
                       DrawingView*& view);

// Cuts the whole of a view along a cross-section of its solid. The view must look along the section's normal,
// or else one of the six directions of `arrows` (or of the view itself) must, and the view is turned there;
// its centre stays. -4 without such a section, -2 for one that is parallel to none of these.
ProError SetSection(Model& drawing, DrawingView& view, std::wstring_view section, const DrawingView* arrows);

// -8 for a projected view, which has its parent's.
ProError SetScale(Model& drawing, DrawingView& view, double scale);

// Shows all dimensions of the view's model on it.
ProError ShowDimensions(Model& drawing, DrawingView& view);

}  // namespace bench
