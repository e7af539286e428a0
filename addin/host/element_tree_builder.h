// Element trees as data: a recipe is written row by row, in the order and under the parents of its table.
//
// The builder stops at the first row that fails: it frees that row's element and the whole tree, remembers
// the message that was set for the row, and takes no further row. References and selections made on the way
// live beside the tree, which does not own them, and are freed after it.
#pragma once

#include <ProElement.h>
#include <ProReference.h>
#include <ProSelection.h>

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "addin/host/owned.h"

namespace vek {

class ElementTreeBuilder {
 public:
  // A row that can become a parent. Ids repeat within a tree, so a parent is named by its row and not by its
  // id.
  class Row {
   public:
    Row() = default;

   private:
    friend class ElementTreeBuilder;
    explicit Row(ProElement element) : element_(element) {}
    ProElement element_ = nullptr;
  };

  // What a caller wants to hear of while a reference row is built.
  struct ReferenceObserver {
    std::function<void(int id, ProError status, ProReference reference)> converted;
    std::function<void(int id, ProError status)> added;
  };

  // Allocates the root; `failure` is the message when that fails, and of all rows until `OnFailure` sets
  // another.
  ElementTreeBuilder(int root_id, std::wstring_view failure);

  // The message of the rows that follow.
  void OnFailure(std::wstring_view message);
  // The same, with one message for a row's allocation and another for its value and its addition.
  void OnFailure(std::wstring_view allocation_message, std::wstring_view value_message);

  Row Root() const { return Row(root_.get()); }

  Row Compound(Row parent, int id);
  Row Integer(Row parent, int id, int value);
  Row Double(Row parent, int id, double value);
  Row Text(Row parent, int id, std::wstring_view value);
  Row Matrix(Row parent, int id, const ProMatrix& value);
  // From here on the collection belongs to the tree; it stays with the caller when the row fails before that.
  Row Collection(Row parent, int id, OwnedCollection& collection);
  // A text row whose calls may all fail without harm.
  void UncheckedText(Row parent, int id, std::wstring_view value);

  // A reference made by ProReferenceAlloc and ProReferenceSet, before its element.
  Row Reference(Row parent, int id, const ProModelitem& item);
  // A reference made by way of a selection of `item`, before its element.
  Row ReferenceBySelection(Row parent, int id, const ProModelitem& item);
  // A reference that the caller has made, and keeps behind the tree.
  Row HeldReference(Row parent, int id, ProReference reference);
  // A reference taken from the caller's selection, behind the allocation of its element.
  Row ReferenceFromSelection(Row parent, int id, ProSelection selection,
                             const ReferenceObserver& observer = {});
  // One element that holds a reference to each item.
  Row References(Row parent, int id, std::span<const ProModelitem> items);

  bool ok() const { return ok_; }
  const std::wstring& message() const { return message_; }
  ProElement tree() const { return root_.get(); }

  // Frees early, where the order of the frees is told: the tree first, then what it refers to.
  void FreeTree() { root_.reset(); }
  void FreeReferences();

 private:
  Row Add(Row parent, int id, const std::function<ProError(ProElement)>& set_value);
  Row Fail(std::wstring_view message);

  // Destroyed from the last to the first: the tree, then its references, then their selections.
  std::vector<OwnedSelection> selections_;
  std::vector<OwnedReference> references_;
  OwnedElement root_;
  std::wstring allocation_failure_;
  std::wstring value_failure_;
  std::wstring message_;
  bool ok_ = true;
};

}  // namespace vek
