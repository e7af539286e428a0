// Element trees as values: what a feature keeps of its recipe, and what callers build through the toolkit.
#pragma once

#include <ProObjects.h>

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "bench/host/model/section_data.h"

namespace bench {

// An item that a tree refers to, within the model that owns the feature.
struct ItemReference {
  ProType type = PRO_TYPE_UNUSED;
  int id = -1;
  ProMdl owner = nullptr;
};

struct ElementNode {
  using Value = std::variant<std::monostate, int, double, std::wstring, std::vector<ItemReference>,
                             std::shared_ptr<SectionData>>;

  int id = 0;
  Value value;
  std::vector<std::unique_ptr<ElementNode>> children;

  // The first child of that id, or null.
  const ElementNode* Child(int child_id) const;
  ElementNode* Child(int child_id);
  // The node at the end of a path of ids, or null.
  const ElementNode* Find(std::initializer_list<int> path) const;
  std::unique_ptr<ElementNode> Clone() const;
};

}  // namespace bench
