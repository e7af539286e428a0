// Components: assembling them, their models and places.
#include <ProAsmcomp.h>
#include <ProMatrix.h>
#include <ProTreetool.h>

#include "bench/host/calls/component_path.h"
#include "bench/host/calls/component_record.h"
#include "bench/host/features/component.h"
#include "bench/host/features/component_placement.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

// The place in a caller's matrix; nothing for none, or one that is no place.
std::optional<Matrix> ReadPlace(const ProMatrix matrix) {
  return matrix ? PlaceIn(MatrixOf(matrix)) : std::nullopt;
}

}  // namespace

ProError Resolve(const ProAsmcomp* record, FoundComponent& found) {
  if (!record || record->type != PRO_FEATURE) return PRO_TK_BAD_INPUTS;
  if (const ProError status = Resolve(record->owner, found.assembly)) return status;
  found.feature = found.assembly->FindFeature(record->id);
  if (!found.feature) return PRO_TK_E_NOT_FOUND;
  return found.feature->component ? PRO_TK_NO_ERROR : PRO_TK_INVALID_TYPE;
}

ProError CheckPath(const ProAsmcomppath* path, const FoundComponent& found) {
  if (!path) return PRO_TK_NO_ERROR;
  PathEnd end;
  if (const ProError status = EndOf(*path, end)) return status;
  const bool leads_there =
      path->owner == found.assembly && path->table_num == 1 && path->comp_id_table[0] == found.feature->id;
  return leads_there ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
}

}  // namespace bench

using namespace bench;

ProError ProAsmcompAssemble(ProSolid assembly, ProSolid model, ProMatrix place, ProAsmcomp* component) {
  HOST_CALL(assembly, model, place) {
    Model* into = LiveSolid(assembly);
    Model* placed = LiveSolid(model);
    const auto read = ReadPlace(place);
    if (!into || !placed || !read || !component) return PRO_TK_BAD_INPUTS;
    const FeatureOutcome outcome = AssembleComponent(*into, *placed, *read);
    if (outcome.status == PRO_TK_NO_ERROR) *component = {PRO_FEATURE, outcome.feature, Handle(*into)};
    return outcome.status;
  };
}

ProError ProAsmcompMdlGet(ProAsmcomp* component, ProMdl* model) {
  HOST_CALL(component) {
    FoundComponent found;
    if (!model) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(component, found)) return status;
    Model* placed = PlacedModel(*found.feature->component);
    *model = placed;
    return placed ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
  };
}

ProError ProAsmcompPositionGet(ProAsmcomp* component, ProMatrix place) {
  HOST_CALL(component) {
    FoundComponent found;
    if (!place) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(component, found)) return status;
    WriteMatrix(found.feature->component->place, place);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProAsmcompPositionSet(ProAsmcomppath* path, ProAsmcomp* component, ProMatrix place) {
  HOST_CALL(path, component, place) {
    FoundComponent found;
    const auto read = ReadPlace(place);
    if (!read) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(component, found)) return status;
    if (const ProError status = CheckPath(path, found)) return status;
    if (found.feature->status == PRO_FEAT_SUPPRESSED) return PRO_TK_BAD_CONTEXT;
    found.feature->component->place = *read;
    found.assembly->modified = true;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProAsmcompSetPlaced(ProAsmcomp* component, ProBoolean placed) {
  HOST_CALL(component, placed) {
    FoundComponent found;
    if (const ProError status = Resolve(component, found)) return status;
    found.feature->component->placed = placed != PRO_B_FALSE;
    found.assembly->modified = true;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProAsmcompRegenerate(ProAsmcomp* component, ProBoolean update) {
  HOST_CALL(component, update) {
    FoundComponent found;
    if (const ProError status = Resolve(component, found)) return status;
    return PlaceComponent(*found.assembly, *found.feature);
  };
}

ProError ProMatrixInit(ProVector x_axis, ProVector y_axis, ProVector z_axis, ProPoint3d origin,
                       ProMatrix matrix) {
  HOST_CALL() {
    if (!x_axis || !y_axis || !z_axis || !origin || !matrix) return PRO_TK_BAD_INPUTS;
    Matrix made{};
    const double* rows[] = {x_axis, y_axis, z_axis, origin};
    for (std::size_t row = 0; row < made.size(); ++row)
      for (std::size_t column = 0; column < 3; ++column) made[row][column] = rows[row][column];
    made[3][3] = 1;
    if (!PlaceIn(made)) return PRO_TK_BAD_INPUTS;
    WriteMatrix(made, matrix);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProTreetoolRefresh(ProMdl model) {
  HOST_CALL(model) {
    Model* found = nullptr;
    return Resolve(model, found);
  };
}
