#include "addin/ops/drawing/cutting_plane.h"

#include <cmath>
#include <string_view>

namespace vek::drawing {
namespace {

// How many times longer one extent of a line must be for the line to count as lying along it.
constexpr double kAlongRatio = 1.25;
constexpr double kSmallestScale = 1e-9;

}  // namespace

const wchar_t* CuttingPlane(const CuttingLine& line) {
  const double dx = std::fabs(line.x2 - line.x1);
  const double dy = std::fabs(line.y2 - line.y1);
  if (dx >= kAlongRatio * dy) return L"TOP";
  if (dy >= kAlongRatio * dx) return L"RIGHT";
  return L"FRONT";
}

double SheetOffset(const CuttingLine& line, const SheetPoint& centre) {
  const std::wstring_view plane = CuttingPlane(line);
  if (plane == L"RIGHT") return (line.x1 + line.x2) / 2 - centre.x;
  if (plane == L"TOP") return (line.y1 + line.y2) / 2 - centre.y;
  return 0;
}

double DivisibleScale(double scale) {
  return scale > kSmallestScale && std::isfinite(scale) ? scale : 1;
}

}  // namespace vek::drawing
