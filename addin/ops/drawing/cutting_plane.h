// Which datum plane a line across a view cuts along, and how far from it. Pure.
#pragma once

#include "addin/ops/drawing/view_placement.h"

namespace vek::drawing {

// A cutting line as the client draws it on the sheet.
struct CuttingLine {
  double x1 = 0;
  double y1 = 0;
  double x2 = 10;
  double y2 = 0;
};

// "TOP" for a line that is rather horizontal, "RIGHT" for one that is rather vertical, "FRONT" for one near
// the diagonal.
const wchar_t* CuttingPlane(const CuttingLine& line);

// How far the line's middle lies from the centre of the view, across that plane, on the sheet; 0 along
// "FRONT".
double SheetOffset(const CuttingLine& line, const SheetPoint& centre);

// A view's scale as a divisor: 1 for one that is too small or not finite.
double DivisibleScale(double scale);

}  // namespace vek::drawing
