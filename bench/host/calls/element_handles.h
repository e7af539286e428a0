// Handles on elements: the roots that callers own, and what they reach inside a tree.
#pragma once

#include <ProElement.h>
#include <ProSection.h>

#include <memory>

#include "bench/host/instruments/ledger.h"
#include "bench/host/model/element_tree.h"

namespace bench {

struct OpenElement {
  ElementNode* node = nullptr;
  std::unique_ptr<ElementNode> owned;      // of a root: the tree; an element inside a tree owns nothing
  HandleKind kind = HandleKind::kElement;  // of a root: how its caller may free it
  ProFeature feature{};                    // of an extracted tree: where it came from
  ProSection section = nullptr;            // of a sketcher element whose section was asked for
};

// A new root in the ledger, in the name of the call that is being made.
ProElement EnterElement(std::unique_ptr<ElementNode> tree);
ProElement EnterExtractedTree(std::unique_ptr<ElementNode> tree, const ProFeature& feature);

// What stands behind a handle; null, and a violation, when it is no live element.
OpenElement* UseElement(ProElement element);

// The handle of an element inside a tree, always the same one. It dies with the tree.
ProElement HandleInTree(ElementNode& node);

// Hangs a root under another element; it belongs to that tree from now on. Both are live, `child` is a root.
void HangUnder(OpenElement& parent, ProElement child);

// Takes a child out from under its parent. It becomes a root of the caller's, in the ledger in the name of
// the call that is being made; handles into it stay good.
ProElement TakeOut(ElementNode& parent, const ElementNode& child);

// Ends a root and every handle into its tree, the handles on its sections too. The ledger is the caller's
// matter.
void EndTree(ProElement root);

}  // namespace bench
