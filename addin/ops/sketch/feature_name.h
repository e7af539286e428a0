// Giving a sketch's feature the sketch's name.
#pragma once

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// The id of the feature of that name in the model, or -1. The host looks it up without regard to case, by
// what of the name fits its buffer.
int FeatureIdOfName(ProMdl model, std::wstring_view name);

// The name of a feature without blanks at its ends; empty when the host tells none.
std::wstring TrimmedFeatureName(const ProFeature& feature);

// Names the session's feature after the session. Fails when another feature has the name, with a text that
// tells whether it is a sketch of this table, and when the host refuses it; the feature itself is left as it
// is.
CreoMcpOperationResult NameSketchFeature(const SketchSession& session);

}  // namespace vek::sketch
