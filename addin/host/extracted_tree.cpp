#include "addin/host/extracted_tree.h"

#include <utility>

#include "addin/host/element_path.h"
#include "addin/host/owned.h"

namespace vek {

ExtractedTree::ExtractedTree(ExtractedTree&& other) noexcept
    : feature_(other.feature_), tree_(std::exchange(other.tree_, nullptr)) {}

ExtractedTree& ExtractedTree::operator=(ExtractedTree&& other) noexcept {
  if (this == &other) return *this;
  FreeWithFeature();
  feature_ = other.feature_;
  tree_ = std::exchange(other.tree_, nullptr);
  return *this;
}

ProError ExtractedTree::Extract(const ProFeature& feature) {
  FreeWithFeature();
  feature_ = feature;
  return ProFeatureElemtreeExtract(&feature_, nullptr, PRO_FEAT_EXTRACT_NO_OPTS, &tree_);
}

ProError ExtractedTree::Follow(std::span<const int> ids, ProElement& element) const {
  return FollowElementPath(tree_, ids, element);
}

ProError ExtractedTree::ChildIds(std::span<const int> ids, std::vector<int>& children) const {
  children.clear();
  ProElement element = nullptr;
  ProError status = Follow(ids, element);
  if (status != PRO_TK_NO_ERROR) return status;
  OwnedArray<ProElement> elements;
  status = ProElementChildrenGet(element, nullptr, elements.out());
  if (status != PRO_TK_NO_ERROR) return status;
  for (int i = 0; i < elements.size(); ++i) {
    ProElemId id{};
    if (ProElementIdGet(elements[i], &id) == PRO_TK_NO_ERROR) children.push_back(static_cast<int>(id));
  }
  return PRO_TK_NO_ERROR;
}

ProError ExtractedTree::SetInteger(std::span<const int> ids, int value) const {
  ProElement element = nullptr;
  const ProError status = Follow(ids, element);
  return status == PRO_TK_NO_ERROR ? ProElementIntegerSet(element, value) : status;
}

ProError ExtractedTree::SetReference(std::span<const int> ids, ProReference reference) const {
  ProElement element = nullptr;
  const ProError status = Follow(ids, element);
  return status == PRO_TK_NO_ERROR ? ProElementReferenceSet(element, reference) : status;
}

ProError ExtractedTree::Remove(std::span<const int> ids) const {
  OwnedElement removed;
  const ProError status = RemoveElement(tree_, ids, removed);
  if (status == PRO_TK_NO_ERROR && !removed) return PRO_TK_E_NOT_FOUND;
  return status;
}

ProError ExtractedTree::SectionOf(ProElement element, ProSection& section) {
  ProAppData value = nullptr;
  const ProError status = ProElementSpecialvalueGet(element, nullptr, &value);
  section = status == PRO_TK_NO_ERROR ? static_cast<ProSection>(value) : nullptr;
  return status;
}

void ExtractedTree::FreeWithFeature() {
  if (tree_ != nullptr) ProFeatureElemtreeFree(&feature_, std::exchange(tree_, nullptr));
}

void ExtractedTree::FreeAsElement() {
  if (tree_ == nullptr) return;
  ProElement tree = std::exchange(tree_, nullptr);
  ProElementFree(&tree);
}

std::span<const int> SketcherPath() {
  static constexpr int kPath[] = {447, 458};
  return kPath;
}

}  // namespace vek
