#include "addin/ops/assembly/constraint_words.h"

#include <cmath>

#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::assembly {
namespace {

constexpr double kSmallestOffset = 1e-12;

struct WordMeaning {
  std::wstring_view word;
  ConstraintTypeSpec meaning;
};

constexpr WordMeaning kMeanings[] = {
    {L"mate", {kMate, kPlaneSurface, false, false}},
    {L"coincident", {kMate, kPlaneSurface, false, false}},
    {L"flush", {kAlign, kPlaneSurface, false, false}},
    {L"distance", {kMateOffset, kPlaneSurface, true, false}},
    {L"parallel", {5, kPlaneSurface, false, false}},
    {L"perpendicular", {34, kPlaneSurface, false, false}},
    {L"angle", {31, kPlaneSurface, true, true}},
    {L"tangent", {7, kCylinderSurface, false, false}},
    {L"insert", {4, kCylinderSurface, false, false}},
    {L"concentric", {4, kCylinderSurface, false, false}},
    {L"fixed", {13, kPlaneSurface, false, false}},
    {L"ground", {13, kPlaneSurface, false, false}},
};

struct TypeWord {
  int creo_type;
  const wchar_t* word;
};

constexpr TypeWord kTypeWords[] = {
    {kMate, L"mate"},
    {kMateOffset, L"distance"},
    {kAlign, L"flush"},
    {kAlignOffset, L"align_offset"},
    {4, L"insert"},
    {5, L"parallel"},
    {6, L"csys"},
    {7, L"tangent"},
    {8, L"point_on_surface"},
    {10, L"default"},
    {12, L"point_on_line"},
    {13, L"ground"},
    {15, L"angle"},
    {16, L"angle"},
    {30, L"angle"},
    {31, L"angle"},
    {34, L"perpendicular"},
};

}  // namespace

bool IsSignificantOffset(double offset_mm) {
  return std::fabs(offset_mm) > kSmallestOffset;
}

std::optional<ConstraintTypeSpec> FindConstraintType(std::wstring_view word) {
  const std::wstring lowered = ToLower(Trim(word));
  for (const WordMeaning& row : kMeanings)
    if (row.word == lowered) return row.meaning;
  return std::nullopt;
}

int WithDistance(int creo_type) {
  if (creo_type == kMate) return kMateOffset;
  if (creo_type == kAlign) return kAlignOffset;
  return creo_type;
}

std::wstring ConstraintTypeWord(int creo_type) {
  for (const TypeWord& row : kTypeWords)
    if (row.creo_type == creo_type) return row.word;
  return Format(L"type_%d", creo_type);
}

}  // namespace vek::assembly
