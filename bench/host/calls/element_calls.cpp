// Elements one by one: their life and their values.
#include <ProElement.h>
#include <ProFeature.h>

#include <cmath>
#include <utility>
#include <vector>

#include "bench/host/calls/array.h"
#include "bench/host/calls/collection_handles.h"
#include "bench/host/calls/element_handles.h"
#include "bench/host/calls/reference.h"
#include "bench/host/calls/section.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/element_catalog.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/model/rigid_place.h"

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

ProError SetMatrix(ProElement element, const ProMatrix matrix) {
  if (!matrix) return PRO_TK_BAD_INPUTS;
  const Matrix value = MatrixOf(matrix);
  for (const auto& row : value)
    for (const double number : row)
      if (!std::isfinite(number)) return PRO_TK_BAD_INPUTS;
  return SetValue(element, ElementKind::kMatrix, value);
}

// What an element holds of that type: -4 when it holds nothing, -18 when it holds something else.
template <typename Value>
ProError GetValue(ProElement element, const Value*& value) {
  if (!element) return PRO_TK_BAD_INPUTS;
  const OpenElement* open = UseElement(element);
  if (!open) return PRO_TK_INVALID_PTR;
  if (std::holds_alternative<std::monostate>(open->node->value)) return PRO_TK_E_NOT_FOUND;
  value = std::get_if<Value>(&open->node->value);
  return value ? PRO_TK_NO_ERROR : PRO_TK_INVALID_TYPE;
}

template <typename Value>
ProError CopyValue(ProElement element, Value* out) {
  const Value* value = nullptr;
  if (!out) return PRO_TK_BAD_INPUTS;
  if (const ProError status = GetValue(element, value)) return status;
  *out = *value;
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
    // An element that takes a single one is filled this way too; how many there are is for its tree's check.
    const ProError status = SetValue(element, ElementKind::kReferences, items);
    return status == PRO_TK_INVALID_TYPE ? SetValue(element, ElementKind::kReference, std::move(items))
                                         : status;
  };
}

ProError ProElementCollectionSet(ProElement element, ProCollection collection) {
  HOST_CALL(element, collection) {
    if (!collection) return PRO_TK_BAD_INPUTS;
    const OpenCollection* open = UseCollection(collection);
    if (!open) return PRO_TK_INVALID_PTR;
    if (open->of_tree) return PRO_TK_E_FOUND;
    const ProError status = SetValue(element, ElementKind::kCollection, ContentOf(*open));
    if (status == PRO_TK_NO_ERROR) GiveToTree(collection);
    return status;
  };
}

ProError ProFeatureD3elemMatrixSet(ProElement element, ProMatrix matrix) {
  HOST_CALL(element, matrix) {
    return SetMatrix(element, matrix);
  };
}

ProError ProElementTransformSet(ProElement element, ProMatrix transform) {
  HOST_CALL(element, transform) {
    return SetMatrix(element, transform);
  };
}

ProError ProElementIntegerGet(ProElement element, int* value) {
  HOST_CALL(element) {
    return CopyValue(element, value);
  };
}

ProError ProElementDoubleGet(ProElement element, double* value) {
  HOST_CALL(element) {
    return CopyValue(element, value);
  };
}

ProError ProElementReferenceGet(ProElement element, void* options, ProReference* reference) {
  HOST_CALL(element, options) {
    const std::vector<ItemReference>* items = nullptr;
    if (!reference) return PRO_TK_BAD_INPUTS;
    if (const ProError status = GetValue(element, items)) return status;
    if (items->size() != 1) return PRO_TK_INVALID_TYPE;
    const ProModelitem item{items->front().type, items->front().id, items->front().owner};
    if (!ItemExists(item)) return PRO_TK_E_NOT_FOUND;
    *reference = NewReference(item);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElementSpecialvalueSet(ProElement element, ProAppData value) {
  HOST_CALL(element, value) {
    if (!value) return PRO_TK_BAD_INPUTS;
    const auto section = SectionOfTree(static_cast<ProSection>(value));
    if (!section) return PRO_TK_INVALID_PTR;
    const ProError status = SetValue(element, ElementKind::kSection, section);
    if (status != PRO_TK_NO_ERROR) return status;
    // A handle on the section that was there before ends with it.
    OpenElement* open = UseElement(element);
    if (open->section && SectionOfTree(open->section) != section)
      ForgetSectionOfTree(std::exchange(open->section, nullptr));
    return PRO_TK_NO_ERROR;
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
