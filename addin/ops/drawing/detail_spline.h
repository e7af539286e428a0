// The border of a detail.
#pragma once

#include <ProCurvedata.h>

#include "addin/host/owned.h"
#include "addin/ops/drawing/view_placement.h"
#include "addin/server/operation_result.h"

namespace vek::drawing {

// A spline, and the arrays that it reads for as long as it is used.
struct DetailSpline {
  ProCurvedata curve{};
  OwnedArray<ProPoint3d> points;
  OwnedArray<double> parameters;
  OwnedArray<ProVector> tangents;

  void FreeArrays();
};

// A circle on the sheet as a spline of 16 points, the last a step short of the first: the host closes it.
// A radius that is too small becomes 20.
CreoMcpOperationResult BuildDetailSpline(const SheetPoint& centre, double radius, DetailSpline& spline);

}  // namespace vek::drawing
