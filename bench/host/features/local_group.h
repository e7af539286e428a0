// Local groups: features that stand one behind the other and are handled as one.
#pragma once

#include <set>
#include <string_view>
#include <vector>

#include "bench/host/features/features.h"

namespace bench {

// The bench's own number for a group's type.
constexpr ProFeattype kLocalGroup = 2001;

// Makes a group of at least two features, whose ids may come in any order. They must be active, follow each
// other in the model, and be neither groups nor in a group. The group stands behind the last of them. A name
// that is taken is ignored.
FeatureOutcome GroupFeatures(Model& model, const std::vector<int>& ids, std::wstring_view name);

// The ids, and for each group among them those of its members.
std::set<int> WithGrouped(const Model& model, std::set<int> ids);

}  // namespace bench
