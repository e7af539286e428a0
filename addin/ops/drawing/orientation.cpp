#include "addin/ops/drawing/orientation.h"

#include <cmath>

#include "addin/text/wide_text.h"

namespace vek::drawing {
namespace {

constexpr struct {
  std::wstring_view word;
  const wchar_t* canonical;
} kWords[] = {{L"", L"front"},  {L"front", L"front"},   {L"top", L"top"}, {L"right", L"right"},
              {L"iso", L"iso"}, {L"isometric", L"iso"}, {L"home", L"iso"}};

struct Rotation {
  double rows[3][3];
};

Rotation RotationOf(std::wstring_view canonical) {
  if (canonical == L"top") return {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}};
  if (canonical == L"right") return {{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}};
  if (canonical == L"iso") {
    const double half = std::sqrt(0.5), third = 1 / std::sqrt(3.0), sixth = 1 / std::sqrt(6.0);
    return {{{half, -half, 0}, {sixth, sixth, std::sqrt(2.0 / 3.0)}, {-third, -third, third}}};
  }
  return {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
}

}  // namespace

bool OrientationMatrix(std::wstring_view word, double (&matrix)[4][4], std::wstring& canonical) {
  const std::wstring wanted = ToLower(Trim(word));
  for (const auto& known : kWords) {
    if (known.word != wanted) continue;
    canonical = known.canonical;
    const Rotation rotation = RotationOf(canonical);
    for (int row = 0; row < 4; ++row)
      for (int column = 0; column < 4; ++column)
        matrix[row][column] = row < 3 && column < 3 ? rotation.rows[row][column] : row == column;
    return true;
  }
  return false;
}

}  // namespace vek::drawing
