// Element trees as values: what a feature keeps of its recipe, and what callers build through the toolkit.
#pragma once

#include <ProObjects.h>

#include <array>
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

// How a collection is put together: each instruction adds what its items name, or takes it away.
struct CollectionInstruction {
  int type = 0;
  bool include = true;
  std::vector<ItemReference> items;
};

struct Collection {
  bool of_surfaces = false;  // else of curves and edges
  std::vector<CollectionInstruction> instructions;
};

using Matrix = std::array<std::array<double, 4>, 4>;

struct ElementNode {
  using Value = std::variant<std::monostate, int, double, std::wstring, std::vector<ItemReference>,
                             std::shared_ptr<SectionData>, Collection, Matrix>;

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
