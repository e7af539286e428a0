#include "bench/host/calls/component_path.h"

#include <algorithm>

#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/session.h"

namespace bench {
namespace {

bool IsCount(int count) {
  return count >= 0 && count <= PRO_MAX_ASSEM_LEVEL;
}

}  // namespace

std::vector<int> IdsOf(const ProAsmcomppath& path) {
  if (!IsCount(path.table_num)) return {};
  return {path.comp_id_table, path.comp_id_table + path.table_num};
}

ProError EndOf(const ProAsmcomppath& path, PathEnd& end) {
  Model* owner = LiveSolid(path.owner);
  if (!owner || !IsCount(path.table_num)) return PRO_TK_BAD_INPUTS;
  const auto followed = Follow(*owner, IdsOf(path));
  if (!followed) return PRO_TK_E_NOT_FOUND;
  end = *followed;
  return PRO_TK_NO_ERROR;
}

}  // namespace bench

using namespace bench;

ProError ProAsmcomppathInit(ProSolid assembly, ProIdTable ids, int count, ProAsmcomppath* path) {
  HOST_CALL(assembly, ids && count > 0 ? *ids : -1, count) {
    Model* model = LiveSolid(assembly);
    if (!model || model->type != PRO_MDL_ASSEMBLY || !path || !IsCount(count) || (count > 0 && !ids))
      return PRO_TK_BAD_INPUTS;
    ProAsmcomppath made{Handle(*model), {}, count};
    std::copy(ids, ids + count, made.comp_id_table);
    PathEnd end;
    if (const ProError status = EndOf(made, end)) return status;
    *path = made;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProAsmcomppathTrfGet(ProAsmcomppath* path, ProBoolean bottom_up, ProMatrix place) {
  HOST_CALL(path, bottom_up) {
    if (!path || !place) return PRO_TK_BAD_INPUTS;
    PathEnd end;
    if (const ProError status = EndOf(*path, end)) return status;
    // In the owner's units both ways: whoever asks stands there.
    const Matrix up = Scaled(end.place, 1 / MillimetresPer(LiveSolid(path->owner)->length_unit));
    WriteMatrix(bottom_up ? up : Inverse(up), place);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProAsmcomppathMdlGet(ProAsmcomppath* path, ProMdl* model) {
  HOST_CALL(path) {
    if (!path || !model) return PRO_TK_BAD_INPUTS;
    PathEnd end;
    if (const ProError status = EndOf(*path, end)) return status;
    if (!end.model) return PRO_TK_E_NOT_FOUND;
    *model = Handle(*end.model);
    return PRO_TK_NO_ERROR;
  };
}

namespace bench {
namespace {

// Visits what stands below `path`, whose model is `solid`.
ProError VisitBelow(ProAsmcomppath path, Model& solid, ProSolidDispCompVisitAction action,
                    ProSolidDispCompVisitFilter filter, ProAppData data) {
  if (path.table_num == PRO_MAX_ASSEM_LEVEL) return PRO_TK_NO_ERROR;
  std::vector<int> ids;
  for (const Feature* feature : ActiveComponents(solid)) ids.push_back(feature->id);
  ++path.table_num;
  for (const int id : ids) {
    path.comp_id_table[path.table_num - 1] = id;
    // An action before may have taken it away.
    PathEnd end;
    if (EndOf(path, end) != PRO_TK_NO_ERROR || !end.model) continue;
    if (filter && filter(&path, SolidHandle(*end.model), data) == PRO_TK_CONTINUE) continue;
    if (const ProError answer = action(&path, SolidHandle(*end.model), PRO_B_TRUE, data)) return answer;
    if (const ProError answer = VisitBelow(path, *end.model, action, filter, data)) return answer;
    if (const ProError answer = action(&path, SolidHandle(*end.model), PRO_B_FALSE, data)) return answer;
  }
  return PRO_TK_NO_ERROR;
}

}  // namespace
}  // namespace bench

ProError ProSolidDispCompVisit(ProSolid assembly, ProSolidDispCompVisitAction action,
                               ProSolidDispCompVisitFilter filter, ProAppData data) {
  HOST_CALL(assembly) {
    Model* model = LiveSolid(assembly);
    if (!model || !action) return PRO_TK_BAD_INPUTS;
    return VisitBelow({Handle(*model), {}, 0}, *model, action, filter, data);
  };
}
