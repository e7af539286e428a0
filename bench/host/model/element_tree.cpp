#include "bench/host/model/element_tree.h"

namespace bench {

const ElementNode* ElementNode::Child(int child_id) const {
  for (const auto& child : children)
    if (child->id == child_id) return child.get();
  return nullptr;
}

ElementNode* ElementNode::Child(int child_id) {
  return const_cast<ElementNode*>(static_cast<const ElementNode*>(this)->Child(child_id));
}

const ElementNode* ElementNode::Find(std::initializer_list<int> path) const {
  const ElementNode* node = this;
  for (const int step : path)
    if (!node || !(node = node->Child(step))) return nullptr;
  return node;
}

std::unique_ptr<ElementNode> ElementNode::Clone() const {
  auto copy = std::make_unique<ElementNode>();
  copy->id = id;
  copy->value = value;
  // A section is edited through its element: a copy of the tree must not share it.
  if (auto* section = std::get_if<std::shared_ptr<SectionData>>(&copy->value); section && *section)
    *section = std::make_shared<SectionData>(**section);
  copy->children.reserve(children.size());
  for (const auto& child : children) copy->children.push_back(child->Clone());
  return copy;
}

}  // namespace bench
