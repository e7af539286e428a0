// What callers ask of a feature: its kind, its state, the geometry that came of it.
#include <ProFeature.h>

#include <algorithm>

#include "bench/host/calls/visit.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"

using namespace bench;

namespace {

ProError ResolveFeature(const ProFeature* record, Feature*& feature) {
  if (!record || record->type != PRO_FEATURE) return PRO_TK_BAD_INPUTS;
  Model* model = nullptr;
  if (const ProError status = Resolve(record->owner, model)) return status;
  feature = model->FindFeature(record->id);
  return feature ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
}

// Writes what `tell(feature)` says of a live feature.
template <typename Answer, typename Tell>
ProError AskFeature(const ProFeature* record, Answer* answer, Tell&& tell) {
  if (!answer) return PRO_TK_BAD_INPUTS;
  Feature* feature = nullptr;
  if (const ProError status = ResolveFeature(record, feature)) return status;
  *answer = tell(*feature);
  return PRO_TK_NO_ERROR;
}

constexpr int kFailed = 64;
constexpr int kParentFailed = 128;

// 64 for a feature that failed by itself, 128 for one that stands on a feature that failed.
int StatusFlags(Model& model, const Feature& feature) {
  if (feature.status != PRO_FEAT_UNREGENERATED) return 0;
  const bool parent_failed = std::ranges::any_of(feature.parents, [&](int id) {
    const Feature* parent = model.FindFeature(id);
    return parent && parent->status == PRO_FEAT_UNREGENERATED;
  });
  return parent_failed ? kParentFailed : kFailed;
}

}  // namespace

ProError ProFeatureInit(ProSolid solid, int id, ProFeature* feature) {
  HOST_CALL(solid, id) {
    Model* model = LiveSolid(solid);
    if (!model || !feature) return PRO_TK_BAD_INPUTS;
    if (!model->FindFeature(id)) return PRO_TK_E_NOT_FOUND;
    *feature = {PRO_FEATURE, id, Handle(*model)};
    return PRO_TK_NO_ERROR;
  };
}

ProError ProFeatureTypeGet(ProFeature* feature, ProFeattype* type) {
  HOST_CALL(feature) {
    return AskFeature(feature, type, [](const Feature& found) { return found.type; });
  };
}

ProError ProFeatureStatusGet(ProFeature* feature, ProFeatStatus* status) {
  HOST_CALL(feature) {
    return AskFeature(feature, status, [](const Feature& found) { return found.status; });
  };
}

ProError ProFeatureIsIncomplete(ProFeature* feature, ProBoolean* incomplete) {
  HOST_CALL(feature) {
    return AskFeature(feature, incomplete,
                      [](const Feature& found) { return found.incomplete ? PRO_B_TRUE : PRO_B_FALSE; });
  };
}

ProError ProFeatureStatusflagsGet(ProFeature* feature, int* flags) {
  HOST_CALL(feature) {
    return AskFeature(feature, flags,
                      [&](const Feature& found) { return StatusFlags(*LiveSolid(feature->owner), found); });
  };
}

ProError ProFeatureGeomitemVisit(ProFeature* feature, ProType item_type, ProGeomitemAction action,
                                 ProGeomitemFilter filter, ProAppData data) {
  HOST_CALL(feature, item_type) {
    Feature* found = nullptr;
    if (!action) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveFeature(feature, found)) return status;
    std::vector<ProModelitem> items;
    for (const GeometryItem& item : found->items)
      if (item.type == item_type && item.alive) items.push_back({item.type, item.id, feature->owner});
    std::ranges::sort(items, {}, &ProModelitem::id);
    return Visit(std::move(items), action, filter, data);
  };
}
