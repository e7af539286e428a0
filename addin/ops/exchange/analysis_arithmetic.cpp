#include "addin/ops/exchange/analysis_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "addin/text/wide_text.h"

namespace vek::exchange {
namespace {

constexpr double kShortestNormal = 1e-12;
constexpr double kUndraftedBelow = 0.1;  // degrees
constexpr double kSelfCheckTolerance = 1e-9;

constexpr struct {
  std::wstring_view word;
  const wchar_t* axis;
} kPullWords[] = {{L"X", L"X"}, {L"YZ", L"X"}, {L"RIGHT", L"X"},
                  {L"Y", L"Y"}, {L"XZ", L"Y"}, {L"FRONT", L"Y"}};

double Dot(const Direction& a, const Direction& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

bool IsNearly(double value, double expected) {
  return std::abs(value - expected) <= kSelfCheckTolerance;
}

}  // namespace

std::wstring PullAxis(std::wstring_view text) {
  const std::wstring wanted = ToUpper(Trim(text));
  for (const auto& [word, axis] : kPullWords)
    if (word == wanted) return axis;
  return L"Z";
}

Direction AxisDirection(std::wstring_view axis) {
  if (axis == L"X") return {1, 0, 0};
  if (axis == L"Y") return {0, 1, 0};
  return {0, 0, 1};
}

double FaceDraftAngle(const Direction& normal, const Direction& pull) {
  const double length = std::sqrt(Dot(normal, normal));
  if (!(length >= kShortestNormal)) return 0;
  const double cosine = std::min(std::abs(Dot(normal, pull) / length), 1.0);
  return 90 - std::acos(cosine) * 180 / std::numbers::pi;
}

void AddFace(DraftScan& scan, const Direction& normal) {
  const double angle = FaceDraftAngle(normal, scan.pull);
  scan.min_angle = scan.has_value ? std::min(scan.min_angle, angle) : angle;
  scan.max_angle = scan.has_value ? std::max(scan.max_angle, angle) : angle;
  scan.has_value = true;
  ++scan.total;
  if (std::abs(angle) < kUndraftedBelow) ++scan.undrafted;
}

bool AnalysisSelfCheck() {
  return IsNearly(std::sqrt(25.0), 5) && IsNearly(FaceDraftAngle({0, 0, 1}, {0, 0, 1}), 90) &&
         IsNearly(FaceDraftAngle({1, 0, 0}, {0, 0, 1}), 0) && PullAxis(L"front") == L"Y" &&
         PullAxis(L"YZ") == L"X" && PullAxis(L"") == L"Z";
}

}  // namespace vek::exchange
