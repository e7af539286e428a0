// Elements one by one: their life and their values.
#include <ProElement.h>

#include <cmath>
#include <vector>

#include "bench/host/calls/array.h"
#include "bench/host/calls/element_handles.h"
#include "bench/host/calls/reference.h"
#include "bench/host/calls/section.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/element_catalog.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

// Sets a value of that kind, where the element can hold one.
ProError SetValue(ProElement element, ElementKind kind, ElementNode::Value value) {
  if (!element) return PRO_TK_BAD_INPUTS;
  OpenElement* open = UseElement(element);
  if (!open) return PRO_TK_INVALID_PTR;
  if (!open->node->children.empty()) return PRO_TK_INVALID_TYPE;
  if (const auto known = KindOfElement(open->node->id); known && *known != kind) return PRO_TK_INVALID_TYPE;
  open->node->value = std::move(value);
  return PRO_TK_NO_ERROR;
}

// Reads references; the first that can't be taken gives its status.
ProError ReadReferences(const std::vector<ProReference>& references, std::vector<ItemReference>& items) {
  for (const ProReference reference : references) {
    const ReferredItem referred = ItemOf(reference);
    if (referred.status != PRO_TK_NO_ERROR) return referred.status;
    if (!referred.item) return PRO_TK_BAD_INPUTS;
    if (!ItemExists(*referred.item)) return PRO_TK_E_NOT_FOUND;
    items.push_back({referred.item->type, referred.item->id, referred.item->owner});
  }
  return PRO_TK_NO_ERROR;
}

// Checks how a root is being freed, and frees it even if that is wrong: one mistake is one violation.
ProError FreeRoot(ProElement element, const OpenElement& open) {
  Host& host = TheHost();
  const bool wrong = open.kind == HandleKind::kExtractedTree && FindFeature(&open.feature);
  if (wrong) host.ledger.Violation(CurrentCall(), "frees the extracted tree of a feature that exists");
  host.ledger.TakeBack(element, open.kind, CurrentCall());
  EndTree(element);
  return wrong ? PRO_TK_BAD_CONTEXT : PRO_TK_NO_ERROR;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProElementAlloc(ProElemId id, ProElement* element) {
  HOST_CALL(id) {
    if (!element || id <= 0) return PRO_TK_BAD_INPUTS;
    auto node = std::make_unique<ElementNode>();
    node->id = id;
    *element = EnterElement(std::move(node));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElementFree(ProElement* element) {
  HOST_CALL_THAT_NEVER_FAILS(element ? *element : nullptr) {
    if (!element || !*element) return PRO_TK_BAD_INPUTS;
    const OpenElement* open = UseElement(*element);
    if (!open) return PRO_TK_INVALID_PTR;
    if (!open->owned) {
      TheHost().ledger.Violation(CurrentCall(), "frees an element that belongs to a tree");
      return PRO_TK_BAD_CONTEXT;
    }
    const ProError status = FreeRoot(*element, *open);
    *element = nullptr;
    return status;
  };
}

ProError ProElementIdGet(ProElement element, ProElemId* id) {
  HOST_CALL(element) {
    if (!element || !id) return PRO_TK_BAD_INPUTS;
    const OpenElement* open = UseElement(element);
    if (!open) return PRO_TK_INVALID_PTR;
    *id = open->node->id;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElementIntegerSet(ProElement element, int value) {
  HOST_CALL(element, value) {
    return SetValue(element, ElementKind::kInteger, value);
  };
}

ProError ProElementDoubleSet(ProElement element, double value) {
  HOST_CALL(element, value) {
    if (!std::isfinite(value)) return PRO_TK_BAD_INPUTS;
    return SetValue(element, ElementKind::kDouble, value);
  };
}

ProError ProElementWstringSet(ProElement element, wchar_t* value) {
  HOST_CALL(element, value) {
    if (!value) return PRO_TK_BAD_INPUTS;
    return SetValue(element, ElementKind::kText, std::wstring(value));
  };
}

ProError ProElementReferenceSet(ProElement element, ProReference reference) {
  HOST_CALL(element, reference) {
    std::vector<ItemReference> items;
    if (const ProError status = ReadReferences({reference}, items); status != PRO_TK_NO_ERROR) return status;
    return SetValue(element, ElementKind::kReference, std::move(items));
  };
}

ProError ProElementReferencesSet(ProElement element, ProReference* references) {
  HOST_CALL(element, references) {
    const auto all = ArrayObjects(references);
    if (!all || all->empty()) return PRO_TK_BAD_INPUTS;
    std::vector<ItemReference> items;
    if (const ProError status = ReadReferences(*all, items); status != PRO_TK_NO_ERROR) return status;
    return SetValue(element, ElementKind::kReference, std::move(items));
  };
}

ProError ProElementSpecialvalueGet(ProElement element, void* options, ProAppData* value) {
  HOST_CALL(element, options) {
    if (!element || !value) return PRO_TK_BAD_INPUTS;
    OpenElement* open = UseElement(element);
    if (!open) return PRO_TK_INVALID_PTR;
    const auto* section = std::get_if<std::shared_ptr<SectionData>>(&open->node->value);
    if (!section || !*section) return PRO_TK_E_NOT_FOUND;
    if (!open->section) open->section = EnterSectionOfTree(*section);
    *value = open->section;
    return PRO_TK_NO_ERROR;
  };
}
