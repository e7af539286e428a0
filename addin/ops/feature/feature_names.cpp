#include "addin/ops/feature/feature_names.h"

#include <algorithm>

#include "addin/text/wide_text.h"

namespace vek::feature {

std::wstring NormalizedFeatureName(std::wstring_view name) {
  std::wstring normalized = ToUpper(Trim(name));
  std::ranges::replace(normalized, L' ', L'_');
  return normalized;
}

bool FeatureNamesEqual(std::wstring_view a, std::wstring_view b) {
  return NormalizedFeatureName(a) == NormalizedFeatureName(b);
}

}  // namespace vek::feature
