#include "addin/ops/feature/pattern_words.h"

#include <algorithm>
#include <span>

#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

// Up to four words of one meaning; the last may be the empty word.
struct PlaneWords {
  const wchar_t* plane;
  std::wstring_view words[4];
  int count;
};

constexpr PlaneWords kDirectionPlanes[] = {
    {L"RIGHT", {L"X", L"YZ", L"RIGHT"}, 3},
    {L"FRONT", {L"Y", L"XZ", L"FRONT"}, 3},
    {L"TOP", {L"Z", L"XY", L"TOP", L""}, 4},
};

constexpr PlaneWords kMirrorPlanes[] = {
    {L"TOP", {L"XY", L"Z", L"TOP", L""}, 4},
    {L"FRONT", {L"XZ", L"Y", L"FRONT"}, 3},
    {L"RIGHT", {L"YZ", L"X", L"RIGHT"}, 3},
};

struct AxisWords {
  const wchar_t* planes[2];
  std::wstring_view words[3];
};

constexpr AxisWords kAxes[] = {
    {{L"TOP", L"FRONT"}, {L"X", L"YZ", L"RIGHT"}},
    {{L"RIGHT", L"TOP"}, {L"Y", L"XZ", L"FRONT"}},
    {{L"RIGHT", L"FRONT"}, {L"Z", L"XY", L"TOP"}},
};

std::wstring PlaneNameIn(std::span<const PlaneWords> table, std::wstring_view word) {
  std::wstring normalized = NormalizeWord(word);
  for (const PlaneWords& row : table)
    if (std::find(row.words, row.words + row.count, normalized) != row.words + row.count) return row.plane;
  return normalized;
}

}  // namespace

std::wstring NormalizeWord(std::wstring_view word) {
  return ToUpper(Trim(word));
}

std::wstring DirectionPlaneName(std::wstring_view word) {
  return PlaneNameIn(kDirectionPlanes, word);
}

std::wstring MirrorPlaneName(std::wstring_view word) {
  return PlaneNameIn(kMirrorPlanes, word);
}

std::optional<PlanePair> AxisPlanePair(std::wstring_view word) {
  const std::wstring normalized = NormalizeWord(word);
  for (const AxisWords& row : kAxes)
    if (std::ranges::find(row.words, normalized) != std::end(row.words))
      return PlanePair{row.planes[0], row.planes[1]};
  return std::nullopt;
}

}  // namespace vek::feature
