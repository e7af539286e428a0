// The texts with which a mechanism's intermediate representation names geometry, and the rotation that it
// writes as three angles. Pure.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vek::assembly {

// One reference: "occurrence", "occurrence@kind" or "occurrence@kind@selector".
struct IrRef {
  std::wstring occurrence;  // never empty
  std::wstring kind;        // lowered only when a selector follows
  std::wstring selector;    // all behind the second "@", as it stands
};

// Nothing for a text without an occurrence.
std::optional<IrRef> ParseIrRef(std::wstring_view text);

// Turns about X, then Y, then Z, each about the fixed axis: Rz × Ry × Rx, for column vectors.
using Rotation = std::array<std::array<double, 3>, 3>;
Rotation EulerRotation(const std::array<double, 3>& angles_deg);

}  // namespace vek::assembly
