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
