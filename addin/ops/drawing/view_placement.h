// Where views go on a sheet: the directions of projected views, and the search for a place that is free. Pure
// arithmetic in the coordinates of the sheet.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace vek::drawing {

struct SheetPoint {
  double x = 0;
  double y = 0;
};

// The outline of a view.
struct ViewRect {
  double min_x = 0;
  double max_x = 0;
  double min_y = 0;
  double max_y = 0;

  SheetPoint Centre() const { return {(min_x + max_x) / 2, (min_y + max_y) / 2}; }
  // False for a point with a coordinate that is no number.
  bool Holds(const SheetPoint& point) const;
};

// What stands for the outline of a view that doesn't tell its own, and the middle of it.
inline constexpr ViewRect kFallbackRect{50, 150, 100, 200};
inline constexpr SheetPoint kFallbackCentre{100, 150};

// The point that lies `gap` from `centre` in that direction: top, bottom, left, iso or isometric, in any case
// and between blanks. Every other word means to the right.
SheetPoint Toward(std::wstring_view direction, const SheetPoint& centre, double gap);

// The places that are tried around a view, in their order, for the centre of a new one with these half sizes.
std::vector<SheetPoint> PlacementCandidates(const ViewRect& parent, double half_w, double half_h);

// A place that was chosen, and whether nothing stands there.
struct Placement {
  SheetPoint point;
  bool clear = false;
};

// The first candidate that keeps its distance from every obstacle, or else a place right of the parent. The
// sheet's own size is not looked at. A half size that is not above 1 becomes 60.
Placement PlaceAround(const ViewRect& parent, double half_w, double half_h,
                      std::span<const ViewRect> obstacles);

}  // namespace vek::drawing
