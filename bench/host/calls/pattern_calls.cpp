// The calls of ProPattern.h.
#include <ProPattern.h>

#include "bench/host/calls/element_handles.h"
#include "bench/host/features/local_group.h"
#include "bench/host/features/pattern.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/text.h"

using namespace bench;

namespace {

bool IsClass(ProPatternClass pattern_class) {
  return pattern_class == PRO_FEAT_PATTERN || pattern_class == PRO_GROUP_PATTERN;
}

}  // namespace

ProError ProPatternCreate(ProFeature* leader, ProPatternClass pattern_class, ProElement tree) {
  HOST_CALL(leader, static_cast<int>(pattern_class), tree) {
    if (!leader || !tree || !IsClass(pattern_class)) return PRO_TK_BAD_INPUTS;
    const OpenElement* root = UseElement(tree);
    if (!root) return PRO_TK_INVALID_PTR;
    const Feature* found = FindFeature(leader);
    if (!found) return PRO_TK_E_NOT_FOUND;
    return PatternFeature(*LiveSolid(leader->owner), *found, pattern_class, *root->node).status;
  };
}

ProError ProFeaturePatternGet(ProFeature* leader, ProPatternClass pattern_class, ProPattern* pattern) {
  HOST_CALL(leader, static_cast<int>(pattern_class)) {
    if (!leader || !pattern || !IsClass(pattern_class)) return PRO_TK_BAD_INPUTS;
    const Feature* found = FindFeature(leader);
    if (!found) return PRO_TK_E_NOT_FOUND;
    if ((pattern_class == PRO_GROUP_PATTERN) != (found->type == kLocalGroup)) return PRO_TK_BAD_INPUTS;
    const Feature* led = PatternLedBy(*LiveSolid(leader->owner), leader->id);
    if (!led) return PRO_TK_E_NOT_FOUND;
    *pattern = {PRO_FEATURE, led->id, leader->owner};
    return PRO_TK_NO_ERROR;
  };
}

ProError ProLocalGroupCreate(ProSolid solid, int* ids, int count, ProName name, ProGroup* group) {
  HOST_CALL(solid, count > 0 && ids ? *ids : -1, count, static_cast<const wchar_t*>(name)) {
    Model* model = LiveSolid(solid);
    if (!model || !ids || count <= 0 || !name || !group) return PRO_TK_BAD_INPUTS;
    const FeatureOutcome outcome = GroupFeatures(*model, {ids, ids + count}, Bounded(name, PRO_NAME_SIZE));
    if (outcome.status == PRO_TK_NO_ERROR) *group = {PRO_FEATURE, outcome.feature, solid};
    return outcome.status;
  };
}
