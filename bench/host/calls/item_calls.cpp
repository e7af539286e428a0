// The calls of ProModelitem.h.
#include <ProModelitem.h>

#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/model/item_names.h"
#include "bench/host/text.h"

using namespace bench;

namespace {

ProError ResolveName(const ProModelitem* item, Model*& model, std::wstring*& name) {
  if (!item) return PRO_TK_BAD_INPUTS;
  if (const ProError status = Resolve(item->owner, model)) return status;
  name = NameOf(*model, item->type, item->id);
  return name ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
}

}  // namespace

ProError ProModelitemByNameInit(ProMdl model, ProType type, ProName name, ProModelitem* item) {
  HOST_CALL(model, type, static_cast<const wchar_t*>(name)) {
    Model* found = nullptr;
    if (!name || !item) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    const std::wstring_view wanted = Bounded(name, PRO_NAME_SIZE);
    if (wanted.empty()) return PRO_TK_BAD_INPUTS;
    const auto id = FindByName(*found, type, wanted);
    if (!id) return PRO_TK_E_NOT_FOUND;
    *item = {type, *id, model};
    return PRO_TK_NO_ERROR;
  };
}

ProError ProModelitemNameGet(ProModelitem* item, ProName name) {
  HOST_CALL(item) {
    Model* model = nullptr;
    std::wstring* held = nullptr;
    if (!name) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveName(item, model, held)) return status;
    if (held->empty()) return PRO_TK_E_NOT_FOUND;
    return CopyOut(*held, *reinterpret_cast<ProName*>(name)) ? PRO_TK_NO_ERROR : PRO_TK_LINE_TOO_LONG;
  };
}

ProError ProModelitemNameSet(ProModelitem* item, ProName name) {
  HOST_CALL(item, static_cast<const wchar_t*>(name)) {
    Model* model = nullptr;
    std::wstring* held = nullptr;
    if (!name) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveName(item, model, held)) return status;
    const std::wstring_view wanted = Bounded(name, PRO_NAME_SIZE);
    if (wanted.empty()) return PRO_TK_INVALID_NAME;
    if (wanted.size() == PRO_NAME_SIZE) return PRO_TK_LINE_TOO_LONG;
    if (wanted == *held) return PRO_TK_NO_CHANGE;
    if (IsNameTaken(*model, item->type, item->id, wanted)) return PRO_TK_E_FOUND;
    *held = wanted;
    model->modified = true;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProModelitemMdlGet(ProModelitem* item, ProMdl* model) {
  HOST_CALL(item) {
    if (!item || !model) return PRO_TK_BAD_INPUTS;
    Model* owner = nullptr;
    if (const ProError status = Resolve(item->owner, owner)) return status;
    *model = item->owner;
    return PRO_TK_NO_ERROR;
  };
}
