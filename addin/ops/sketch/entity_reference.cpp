#include "addin/ops/sketch/entity_reference.h"

#include <vector>

#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

std::vector<std::wstring_view> SplitAtColons(std::wstring_view text) {
  std::vector<std::wstring_view> parts;
  for (;;) {
    const std::size_t colon = text.find(L':');
    parts.push_back(text.substr(0, colon));
    if (colon == std::wstring_view::npos) return parts;
    text.remove_prefix(colon + 1);
  }
}

// 0 for a word that names no point.
int PointOfWord(std::wstring_view word) {
  const std::wstring lower = ToLower(word);
  if (lower == L"start") return kStartPoint;
  if (lower == L"end") return kEndPoint;
  if (lower == L"center" || lower == L"midpoint" || lower == L"middle") return kCenterPoint;
  return 0;
}

}  // namespace

bool IsPointReference(const EntityReference& reference) {
  return reference.point != kWholeEntity || reference.letter == L'P';
}

bool ParseEntityReference(std::wstring_view text, EntityReference& reference, std::wstring& error) {
  const std::wstring_view trimmed = Trim(text);
  if (trimmed.empty()) {
    error = L"Entity reference must not be empty.";
    return false;
  }
  const auto parts = SplitAtColons(trimmed);
  if (parts.size() < 2 || parts.size() > 3) {
    error = L"Invalid entity reference. Use 'L:n', 'C:n', 'A:n', or 'L:n:start'.";
    return false;
  }
  if (parts[0].size() != 1) {
    error = Format(L"Unknown entity type '%s'.", parts[0]);
    return false;
  }
  reference = {ToUpper(parts[0]).front(), ReadLeadingInteger(parts[1]), kWholeEntity};
  if (reference.index < 1) {
    error = Format(L"Invalid entity index in '%s'.", text);
    return false;
  }
  if (parts.size() == 2) return true;
  reference.point = PointOfWord(parts[2]);
  if (reference.point != 0) return true;
  error = Format(L"Unknown point specifier '%s' in '%s'.", parts[2], text);
  return false;
}

}  // namespace vek::sketch
