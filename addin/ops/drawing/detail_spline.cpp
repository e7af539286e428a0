#include "addin/ops/drawing/detail_spline.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include "addin/text/format.h"

namespace vek::drawing {
namespace {

constexpr int kPoints = 16;
constexpr double kStep = 0.0625;
constexpr double kSmallestRadius = 1e-6;
constexpr double kDefaultRadius = 20;

bool Allocate(DetailSpline& spline) {
  return spline.points.Allocate(kPoints) == PRO_TK_NO_ERROR && spline.points &&
         spline.parameters.Allocate(kPoints) == PRO_TK_NO_ERROR && spline.parameters &&
         spline.tangents.Allocate(kPoints) == PRO_TK_NO_ERROR && spline.tangents;
}

}  // namespace

void DetailSpline::FreeArrays() {
  points.reset();
  parameters.reset();
  tangents.reset();
}

CreoMcpOperationResult BuildDetailSpline(const SheetPoint& centre, double radius, DetailSpline& spline) {
  const double r = radius > kSmallestRadius ? radius : kDefaultRadius;
  if (!Allocate(spline)) return MakeFailureResult(L"Failed to allocate detail-view spline arrays.");
  for (int i = 0; i < kPoints; ++i) {
    const double t = i * kStep;
    const double angle = t * 2 * std::numbers::pi;
    const ProPoint3d point = {centre.x + r * std::cos(angle), centre.y + r * std::sin(angle), 0};
    const ProVector tangent = {-r * std::sin(angle), r * std::cos(angle), 0};
    std::ranges::copy(point, spline.points[i]);
    spline.parameters[i] = t;
    std::ranges::copy(tangent, spline.tangents[i]);
  }
  const ProError status = ProSplinedataInit(spline.parameters.get(), spline.points.get(),
                                            spline.tangents.get(), kPoints, &spline.curve.spline);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to initialize detail spline (status=%d).", status));
  return MakeSuccessResult();
}

}  // namespace vek::drawing
