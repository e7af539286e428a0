// How features leave a model, for good or until they are resumed. A status other than 0 leaves everything as
// it was. A local group stands for its members too.
#pragma once

#include <ProFeature.h>

#include <set>

#include "bench/host/model/model.h"

namespace bench {

// Deletes the features. Where others depend on them, or can't be made without them, those go along if
// `with_dependants` says so; otherwise the deletion is refused. -4 for an unknown id.
ProError DeleteFeatures(Model& model, const std::set<int>& named, bool with_dependants);

// Suppresses the features. Refused when active ones depend on them. -4 for an unknown id, -12 when all are
// suppressed already.
ProError SuppressFeatures(Model& model, const std::set<int>& named);

// Resumes the features, and the suppressed ones that they depend on if `with_parents` says so; otherwise
// those make it -13. -4 for an unknown id, -12 when all are active already.
ProError ResumeFeatures(Model& model, const std::set<int>& named, bool with_parents);

}  // namespace bench
