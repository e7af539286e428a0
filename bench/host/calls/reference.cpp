#include "bench/host/calls/reference.h"

#include "bench/host/calls/selection.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

OpaqueHandles<ProReference, std::optional<ProModelitem>>& References() {
  static OpaqueHandles<ProReference, std::optional<ProModelitem>> references;
  return references;
}

ProReference Enter(std::optional<ProModelitem> item) {
  const ProReference reference = References().Enter(item);
  TheHost().ledger.Give(reference, HandleKind::kReference, CurrentCall());
  return reference;
}

}  // namespace

ProReference NewReference(const ProModelitem& item) {
  return Enter(item);
}

ReferredItem ItemOf(ProReference reference) {
  if (!reference) return {PRO_TK_BAD_INPUTS, std::nullopt};
  if (!TheHost().ledger.Check(reference, HandleKind::kReference, CurrentCall()))
    return {PRO_TK_INVALID_PTR, std::nullopt};
  return {PRO_TK_NO_ERROR, *References().Find(reference)};
}

}  // namespace bench

using namespace bench;

ProError ProReferenceAlloc(ProReference* reference) {
  HOST_CALL() {
    if (!reference) return PRO_TK_BAD_INPUTS;
    *reference = Enter(std::nullopt);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProReferenceSet(ProReference reference, ProAsmcomppath* path, ProModelitem* item) {
  HOST_CALL(reference, path, item) {
    if (!item) return PRO_TK_BAD_INPUTS;
    if (const ReferredItem before = ItemOf(reference); before.status != PRO_TK_NO_ERROR) return before.status;
    if (!ItemExists(*item)) return PRO_TK_E_NOT_FOUND;
    *References().Find(reference) = *item;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProReferenceToSelection(ProReference reference, ProSelection* selection) {
  HOST_CALL(reference) {
    if (!selection) return PRO_TK_BAD_INPUTS;
    const ReferredItem referred = ItemOf(reference);
    if (referred.status != PRO_TK_NO_ERROR) return referred.status;
    if (!referred.item) return PRO_TK_BAD_INPUTS;
    if (!ItemExists(*referred.item)) return PRO_TK_E_NOT_FOUND;
    *selection = NewSelection(*referred.item);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProReferenceFree(ProReference reference) {
  HOST_CALL_THAT_NEVER_FAILS(reference) {
    if (!reference) return PRO_TK_BAD_INPUTS;
    if (!TheHost().ledger.TakeBack(reference, HandleKind::kReference, CurrentCall()))
      return PRO_TK_INVALID_PTR;
    References().Remove(reference);
    return PRO_TK_NO_ERROR;
  };
}
