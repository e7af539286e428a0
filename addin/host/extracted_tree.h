// A feature's element tree as the host hands it out, to be read, edited and given to a redefinition.
#pragma once

#include <ProElement.h>
#include <ProFeature.h>
#include <ProSection.h>

#include <span>
#include <vector>

namespace vek {

class ExtractedTree {
 public:
  ExtractedTree() = default;
  ExtractedTree(ExtractedTree&& other) noexcept;
  ExtractedTree& operator=(ExtractedTree&& other) noexcept;
  // Frees the tree with its feature; a caller whose feature is gone calls `FreeAsElement` before.
  ~ExtractedTree() { FreeWithFeature(); }

  // Asks the host for the tree of `feature`. A status of 0 with no tree is possible: look at `tree()`.
  ProError Extract(const ProFeature& feature);

  // Follows a path of element ids from the root.
  ProError Follow(std::span<const int> ids, ProElement& element) const;
  // The ids of the children of the element at the end of `ids`.
  ProError ChildIds(std::span<const int> ids, std::vector<int>& children) const;
  // Gives the integer element at the end of `ids` another value.
  ProError SetInteger(std::span<const int> ids, int value) const;
  // Makes the element at the end of `ids` refer to what `reference` refers to.
  ProError SetReference(std::span<const int> ids, ProReference reference) const;
  // Takes the element at the end of `ids` out and frees it.
  ProError Remove(std::span<const int> ids) const;
  // The section that an element holds. It belongs to the tree.
  static ProError SectionOf(ProElement element, ProSection& section);

  ProElement tree() const { return tree_; }
  void FreeWithFeature();
  void FreeAsElement();

 private:
  ProFeature feature_{};
  ProElement tree_ = nullptr;
};

// The path from a feature's root to the sketcher of its standard section, element 458 under 447.
std::span<const int> SketcherPath();

}  // namespace vek
