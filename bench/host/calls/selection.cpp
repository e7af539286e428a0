#include "bench/host/calls/selection.h"

#include "bench/host/calls/array.h"
#include "bench/host/calls/reference.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

OpaqueHandles<ProSelection, ProModelitem>& Selections() {
  static OpaqueHandles<ProSelection, ProModelitem> selections;
  return selections;
}

bool Free(ProSelection selection) {
  if (!TheHost().ledger.TakeBack(selection, HandleKind::kSelection, CurrentCall())) return false;
  Selections().Remove(selection);
  return true;
}

}  // namespace

ProSelection NewSelection(const ProModelitem& item) {
  const ProSelection selection = Selections().Enter(item);
  TheHost().ledger.Give(selection, HandleKind::kSelection, CurrentCall());
  return selection;
}

const ProModelitem* SelectedItem(ProSelection selection) {
  if (!selection || !TheHost().ledger.Check(selection, HandleKind::kSelection, CurrentCall())) return nullptr;
  return Selections().Find(selection);
}

}  // namespace bench

using namespace bench;

ProError ProSelectionAlloc(ProAsmcomppath* path, ProModelitem* item, ProSelection* selection) {
  HOST_CALL(path, item) {
    if (!item || !selection) return PRO_TK_BAD_INPUTS;
    if (!ItemExists(*item)) return PRO_TK_E_NOT_FOUND;
    *selection = NewSelection(*item);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionFree(ProSelection* selection) {
  HOST_CALL_THAT_NEVER_FAILS(selection ? *selection : nullptr) {
    if (!selection || !*selection) return PRO_TK_BAD_INPUTS;
    if (!Free(*selection)) return PRO_TK_INVALID_PTR;
    *selection = nullptr;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionarrayFree(ProSelection* selections) {
  HOST_CALL_THAT_NEVER_FAILS(selections) {
    if (!selections) return PRO_TK_BAD_INPUTS;
    const auto all = ArrayObjects(selections);
    if (!all) return PRO_TK_INVALID_PTR;
    // A selection in it that was freed before is a mistake, but no reason to keep the others.
    bool right = true;
    for (const ProSelection selection : *all) right &= Free(selection);
    FreeArray(selections);
    return right ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
  };
}

ProError ProSelectionModelitemGet(ProSelection selection, ProModelitem* item) {
  HOST_CALL(selection) {
    if (!selection || !item) return PRO_TK_BAD_INPUTS;
    const ProModelitem* selected = SelectedItem(selection);
    if (!selected) return PRO_TK_INVALID_PTR;
    *item = *selected;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionCopy(ProSelection from, ProSelection* to) {
  HOST_CALL(from) {
    if (!from || !to) return PRO_TK_BAD_INPUTS;
    const ProModelitem* item = SelectedItem(from);
    if (!item) return PRO_TK_INVALID_PTR;
    *to = NewSelection(ProModelitem(*item));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionToReference(ProSelection selection, ProReference* reference) {
  HOST_CALL(selection) {
    if (!selection || !reference) return PRO_TK_BAD_INPUTS;
    const ProModelitem* item = SelectedItem(selection);
    if (!item) return PRO_TK_INVALID_PTR;
    if (!ItemExists(*item)) return PRO_TK_E_NOT_FOUND;
    *reference = NewReference(*item);
    return PRO_TK_NO_ERROR;
  };
}
