// Elements among each other: trees, the ways through them, and element paths.
#include <ProElement.h>

#include <optional>
#include <vector>

#include "bench/host/calls/array.h"
#include "bench/host/calls/element_handles.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"
#include "bench/host/model/element_catalog.h"

namespace bench {
namespace {

using Path = std::vector<int>;

OpaqueHandles<ProElempath, Path>& Paths() {
  static OpaqueHandles<ProElempath, Path> paths;
  return paths;
}

// The path behind a handle; null, and a violation, when it is no live path.
Path* UsePath(ProElempath path) {
  if (!TheHost().ledger.Check(path, HandleKind::kElementPath, CurrentCall())) return nullptr;
  return Paths().Find(path);
}

struct Walk {
  ProError status = PRO_TK_NO_ERROR;
  OpenElement* element = nullptr;
};

// From a live element along a path, which may be null: that ends where it began.
Walk Follow(ProElement tree, ProElempath path) {
  if (!tree) return {PRO_TK_BAD_INPUTS};
  OpenElement* element = UseElement(tree);
  if (!element) return {PRO_TK_INVALID_PTR};
  if (!path) return {PRO_TK_NO_ERROR, element};
  const Path* steps = UsePath(path);
  if (!steps) return {PRO_TK_INVALID_PTR};
  ElementNode* node = element->node;
  for (const int step : *steps)
    if (!(node = node->Child(step))) return {PRO_TK_E_NOT_FOUND};
  return {PRO_TK_NO_ERROR, UseElement(HandleInTree(*node))};
}

// The node above one that stands somewhere in the tree.
ElementNode* ParentIn(ElementNode& tree, const ElementNode* wanted) {
  for (const auto& child : tree.children) {
    if (child.get() == wanted) return &tree;
    if (ElementNode* parent = ParentIn(*child, wanted)) return parent;
  }
  return nullptr;
}

bool Contains(const ElementNode& tree, const ElementNode* wanted) {
  if (&tree == wanted) return true;
  for (const auto& child : tree.children)
    if (Contains(*child, wanted)) return true;
  return false;
}

// Whether the element can have children: it holds no value and is not known to hold one.
bool IsCompound(const ElementNode& node) {
  const auto kind = KindOfElement(node.id);
  return std::holds_alternative<std::monostate>(node.value) && (!kind || *kind == ElementKind::kCompound);
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProElemtreeElementAdd(ProElement tree, ProElempath path, ProElement element) {
  HOST_CALL(tree, path, element) {
    if (!element) return PRO_TK_BAD_INPUTS;
    const Walk parent = Follow(tree, path);
    if (parent.status != PRO_TK_NO_ERROR) return parent.status;
    const OpenElement* child = UseElement(element);
    if (!child) return PRO_TK_INVALID_PTR;
    if (!child->owned) return PRO_TK_E_FOUND;
    if (child->kind != HandleKind::kElement || Contains(*child->node, parent.element->node))
      return PRO_TK_BAD_INPUTS;
    if (!IsCompound(*parent.element->node)) return PRO_TK_INVALID_TYPE;
    HangUnder(*parent.element, element);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElemtreeElementGet(ProElement tree, ProElempath path, ProElement* element) {
  HOST_CALL(tree, path) {
    if (!element) return PRO_TK_BAD_INPUTS;
    const Walk walk = Follow(tree, path);
    if (walk.status == PRO_TK_NO_ERROR) *element = HandleInTree(*walk.element->node);
    return walk.status;
  };
}

ProError ProElemtreeElementRemove(ProElement tree, ProElempath path, ProElement* element) {
  HOST_CALL(tree, path) {
    if (!path || !element) return PRO_TK_BAD_INPUTS;
    const Walk walk = Follow(tree, path);
    if (walk.status != PRO_TK_NO_ERROR) return walk.status;
    ElementNode* parent = ParentIn(*UseElement(tree)->node, walk.element->node);
    if (!parent) return PRO_TK_BAD_INPUTS;
    *element = TakeOut(*parent, *walk.element->node);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElementChildrenGet(ProElement element, ProElempath path, ProElement** children) {
  HOST_CALL(element, path) {
    if (!children) return PRO_TK_BAD_INPUTS;
    const Walk walk = Follow(element, path);
    if (walk.status != PRO_TK_NO_ERROR) return walk.status;
    ElementNode& node = *walk.element->node;
    std::vector<ProElement> handles;
    for (const auto& child : node.children) handles.push_back(HandleInTree(*child));
    *children = NewArray(handles);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElempathAlloc(ProElempath* path) {
  HOST_CALL() {
    if (!path) return PRO_TK_BAD_INPUTS;
    *path = Paths().Enter({});
    TheHost().ledger.Give(*path, HandleKind::kElementPath, CurrentCall());
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElempathDataSet(ProElempath path, ProElempathItem* items, int count) {
  HOST_CALL(path, count) {
    if (!path || !items || count <= 0) return PRO_TK_BAD_INPUTS;
    Path* steps = UsePath(path);
    if (!steps) return PRO_TK_INVALID_PTR;
    Path ids;
    for (int i = 0; i < count; ++i) {
      if (items[i].type != PRO_ELEM_PATH_ITEM_ID) return PRO_TK_BAD_INPUTS;
      ids.push_back(items[i].path_item.elem_id);
    }
    *steps = std::move(ids);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElempathFree(ProElempath* path) {
  HOST_CALL_THAT_NEVER_FAILS(path ? *path : nullptr) {
    if (!path || !*path) return PRO_TK_BAD_INPUTS;
    if (!TheHost().ledger.TakeBack(*path, HandleKind::kElementPath, CurrentCall())) return PRO_TK_INVALID_PTR;
    Paths().Remove(*path);
    *path = nullptr;
    return PRO_TK_NO_ERROR;
  };
}
