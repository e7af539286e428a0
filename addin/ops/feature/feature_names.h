// Names of features, as they are compared: pure.
#pragma once

#include <string>
#include <string_view>

namespace vek::feature {

// `name` as names are compared: trimmed, in upper case, with underscores for its spaces.
std::wstring NormalizedFeatureName(std::wstring_view name);
bool FeatureNamesEqual(std::wstring_view a, std::wstring_view b);

}  // namespace vek::feature
