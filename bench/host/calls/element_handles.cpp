#include "bench/host/calls/element_handles.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "bench/host/calls/section.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"

namespace bench {
namespace {

OpaqueHandles<ProElement, OpenElement>& Elements() {
  static OpaqueHandles<ProElement, OpenElement> elements;
  return elements;
}

std::unordered_map<const ElementNode*, ProElement>& HandlesOfNodes() {
  static std::unordered_map<const ElementNode*, ProElement> handles;
  return handles;
}

ProElement Enter(OpenElement element) {
  const ElementNode* node = element.node;
  const ProElement handle = Elements().Enter(std::move(element));
  HandlesOfNodes()[node] = handle;
  return handle;
}

ProElement EnterRoot(std::unique_ptr<ElementNode> tree, HandleKind kind, const ProFeature& feature) {
  OpenElement root;
  root.node = tree.get();
  root.owned = std::move(tree);
  root.kind = kind;
  root.feature = feature;
  const ProElement handle = Enter(std::move(root));
  TheHost().ledger.Give(handle, kind, CurrentCall());
  return handle;
}

void EndHandles(const ElementNode& node) {
  for (const auto& child : node.children) EndHandles(*child);
  const auto found = HandlesOfNodes().find(&node);
  if (found == HandlesOfNodes().end()) return;
  if (const ProSection section = Elements().Find(found->second)->section) ForgetSectionOfTree(section);
  // The root's record owns the nodes and goes last.
  if (!Elements().Find(found->second)->owned) Elements().Remove(found->second);
  HandlesOfNodes().erase(found);
}

}  // namespace

ProElement EnterElement(std::unique_ptr<ElementNode> tree) {
  return EnterRoot(std::move(tree), HandleKind::kElement, {});
}

ProElement EnterExtractedTree(std::unique_ptr<ElementNode> tree, const ProFeature& feature) {
  return EnterRoot(std::move(tree), HandleKind::kExtractedTree, feature);
}

OpenElement* UseElement(ProElement element) {
  if (OpenElement* open = Elements().Find(element)) return open;
  TheHost().ledger.Check(element, HandleKind::kElement, CurrentCall());
  return nullptr;
}

ProElement HandleInTree(ElementNode& node) {
  const auto found = HandlesOfNodes().find(&node);
  if (found != HandlesOfNodes().end()) return found->second;
  OpenElement inside;
  inside.node = &node;
  return Enter(std::move(inside));
}

void HangUnder(OpenElement& parent, ProElement child) {
  parent.node->children.push_back(std::move(Elements().Find(child)->owned));
  TheHost().ledger.PassOn(child, HandleKind::kElement, CurrentCall());
}

ProElement TakeOut(ElementNode& parent, const ElementNode& child) {
  const auto place = std::ranges::find(parent.children, &child, [](const auto& each) { return each.get(); });
  const ProElement handle = HandleInTree(**place);
  Elements().Find(handle)->owned = std::move(*place);
  parent.children.erase(place);
  TheHost().ledger.Give(handle, HandleKind::kElement, CurrentCall());
  return handle;
}

void EndTree(ProElement root) {
  EndHandles(*Elements().Find(root)->node);
  Elements().Remove(root);
}

}  // namespace bench
