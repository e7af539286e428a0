#include "addin/ops/assembly/ir_references.h"

#include <cmath>
#include <numbers>

#include "addin/text/wide_text.h"

namespace vek::assembly {

std::optional<IrRef> ParseIrRef(std::wstring_view text) {
  const std::wstring_view trimmed = Trim(text);
  const std::size_t first = trimmed.find(L'@');
  IrRef reference;
  reference.occurrence = trimmed.substr(0, first);
  if (reference.occurrence.empty()) return std::nullopt;
  if (first == std::wstring_view::npos) return reference;

  const std::wstring_view rest = trimmed.substr(first + 1);
  const std::size_t second = rest.find(L'@');
  reference.kind = rest.substr(0, second);
  if (second == std::wstring_view::npos) return reference;
  reference.kind = ToLower(reference.kind);
  reference.selector = rest.substr(second + 1);
  return reference;
}

Rotation EulerRotation(const std::array<double, 3>& angles_deg) {
  std::array<double, 3> c{}, s{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double angle = angles_deg[axis] * std::numbers::pi / 180;
    c[axis] = std::cos(angle);
    s[axis] = std::sin(angle);
  }
  const auto [cx, cy, cz] = c;
  const auto [sx, sy, sz] = s;
  return {{
      {cz * cy, cz * sy * sx - sz * cx, cz * sy * cx + sz * sx},
      {sz * cy, sz * sy * sx + cz * cx, sz * sy * cx - cz * sx},
      {-sy, cy * sx, cy * cx},
  }};
}

}  // namespace vek::assembly
