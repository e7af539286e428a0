// The words for constraints: what a client's word asks of the host, and what a constraint of the host is
// called in a listing. Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vek::assembly {

// The host's numbers of the constraints that are more than an entry of a table.
inline constexpr int kMate = 0;
inline constexpr int kMateOffset = 1;
inline constexpr int kAlign = 2;
inline constexpr int kAlignOffset = 3;

// The host's numbers of surface types.
inline constexpr int kPlaneSurface = 34;
inline constexpr int kCylinderSurface = 36;

// What is asked of the host when a word is used to add a constraint.
struct ConstraintTypeSpec {
  int creo_type = kMate;
  int surface_type = kPlaneSurface;  // of the faces on both sides
  bool takes_offset = false;         // even one of 0
  bool is_angle = false;             // the offset is in degrees
};

// An offset smaller than this, in millimetres, is none.
bool IsSignificantOffset(double offset_mm);

// For a word in any case, with blanks around it; nothing for a word that means no constraint.
std::optional<ConstraintTypeSpec> FindConstraintType(std::wstring_view word);

// The type that keeps a distance where `creo_type` brings faces together; other types stay as they are.
int WithDistance(int creo_type);

// "mate", "distance", …, or "type_%d".
std::wstring ConstraintTypeWord(int creo_type);

}  // namespace vek::assembly
