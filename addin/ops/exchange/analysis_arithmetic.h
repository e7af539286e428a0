// The arithmetic behind the analyses: pure.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vek::exchange {

using Direction = std::array<double, 3>;

// "X", "Y" or "Z" for an axis or a plane's name, which stands for its normal; "Z" for any other text.
std::wstring PullAxis(std::wstring_view text);

// The unit vector along "X" or "Y", along Z for any other text.
Direction AxisDirection(std::wstring_view axis);

// Degrees between a face and the pull, never below 0: 0 for a wall along the pull, 90 for a face square to
// it. `pull` has the length 1, the normal any; one shorter than 1e-12 gives 0.
double FaceDraftAngle(const Direction& normal, const Direction& pull);

// The state of the walk over a part's planar faces. Angles are in degrees.
struct DraftScan {
  Direction pull{};
  double min_angle = 0;
  double max_angle = 0;
  int undrafted = 0;  // faces with less than 0.1
  int total = 0;
  bool has_value = false;
};

// Takes a planar face with this normal into account.
void AddFace(DraftScan& scan, const Direction& normal);

// Whether the arithmetic gives what it must on cases with known answers.
bool AnalysisSelfCheck();

}  // namespace vek::exchange
