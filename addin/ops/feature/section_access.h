// The section of a feature that stands in the model.
#pragma once

#include <ProFeature.h>
#include <ProSection.h>

#include "addin/host/extracted_tree.h"

namespace vek::feature {

// The section under the feature's standard section element. It belongs to `tree`, which the caller keeps for
// as long as it needs the section. -4 when the element is missing, -1 when it holds no section or the host
// gave no tree.
ProError ExtractFeatureSection(const ProFeature& feature, ExtractedTree& tree, ProSection& section);

// False, too, for an entity that the host doesn't know.
bool IsConstruction(ProSection section, int id);

}  // namespace vek::feature
