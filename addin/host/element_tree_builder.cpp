#include "addin/host/element_tree_builder.h"

#include <ProFeature.h>

#include <algorithm>

#include "addin/host/references.h"

namespace vek {

ElementTreeBuilder::ElementTreeBuilder(int root_id, std::wstring_view failure)
    : allocation_failure_(failure), value_failure_(failure) {
  const ProError status = ProElementAlloc(static_cast<ProElemId>(root_id), root_.out());
  if (status != PRO_TK_NO_ERROR || !root_) Fail(failure);
}

void ElementTreeBuilder::OnFailure(std::wstring_view message) {
  OnFailure(message, message);
}

void ElementTreeBuilder::OnFailure(std::wstring_view allocation_message, std::wstring_view value_message) {
  allocation_failure_ = allocation_message;
  value_failure_ = value_message;
}

ElementTreeBuilder::Row ElementTreeBuilder::Fail(std::wstring_view message) {
  ok_ = false;
  message_ = message;
  root_.reset();
  return Row();
}

ElementTreeBuilder::Row ElementTreeBuilder::Add(Row parent, int id,
                                                const std::function<ProError(ProElement)>& set_value) {
  if (!ok_) return Row();
  OwnedElement element;
  ProError status = ProElementAlloc(static_cast<ProElemId>(id), element.out());
  if (status == PRO_TK_NO_ERROR && !element) status = PRO_TK_GENERAL_ERROR;
  if (status != PRO_TK_NO_ERROR) return Fail(allocation_failure_);
  if (set_value) status = set_value(element.get());
  if (status == PRO_TK_NO_ERROR) status = ProElemtreeElementAdd(parent.element_, nullptr, element.get());
  if (status != PRO_TK_NO_ERROR) {
    element.reset();
    return Fail(value_failure_);
  }
  return Row(element.release());
}

ElementTreeBuilder::Row ElementTreeBuilder::Compound(Row parent, int id) {
  return Add(parent, id, nullptr);
}

ElementTreeBuilder::Row ElementTreeBuilder::Integer(Row parent, int id, int value) {
  return Add(parent, id, [value](ProElement element) { return ProElementIntegerSet(element, value); });
}

ElementTreeBuilder::Row ElementTreeBuilder::Double(Row parent, int id, double value) {
  return Add(parent, id, [value](ProElement element) { return ProElementDoubleSet(element, value); });
}

ElementTreeBuilder::Row ElementTreeBuilder::Text(Row parent, int id, std::wstring_view value) {
  std::wstring text(value);
  return Add(parent, id, [&text](ProElement element) { return ProElementWstringSet(element, text.data()); });
}

ElementTreeBuilder::Row ElementTreeBuilder::Matrix(Row parent, int id, const ProMatrix& value) {
  ProMatrix matrix;
  std::copy(&value[0][0], &value[0][0] + 16, &matrix[0][0]);
  return Add(parent, id,
             [&matrix](ProElement element) { return ProFeatureD3elemMatrixSet(element, matrix); });
}

ElementTreeBuilder::Row ElementTreeBuilder::Collection(Row parent, int id, OwnedCollection& collection) {
  return Add(parent, id, [&collection](ProElement element) {
    const ProError status = ProElementCollectionSet(element, collection.get());
    if (status == PRO_TK_NO_ERROR) collection.release();
    return status;
  });
}

void ElementTreeBuilder::UncheckedText(Row parent, int id, std::wstring_view value) {
  if (!ok_) return;
  OwnedElement element;
  if (ProElementAlloc(static_cast<ProElemId>(id), element.out()) != PRO_TK_NO_ERROR) return;
  std::wstring text(value);
  ProElementWstringSet(element.get(), text.data());
  if (ProElemtreeElementAdd(parent.element_, nullptr, element.get()) == PRO_TK_NO_ERROR) element.release();
}

ElementTreeBuilder::Row ElementTreeBuilder::Reference(Row parent, int id, const ProModelitem& item) {
  if (!ok_) return Row();
  OwnedReference reference;
  if (MakeReference(item, reference) != PRO_TK_NO_ERROR) return Fail(value_failure_);
  const ProReference handle = reference.get();
  references_.push_back(std::move(reference));
  return Add(parent, id, [handle](ProElement element) { return ProElementReferenceSet(element, handle); });
}

ElementTreeBuilder::Row ElementTreeBuilder::ReferenceBySelection(Row parent, int id,
                                                                 const ProModelitem& item) {
  if (!ok_) return Row();
  ProModelitem target = item;
  OwnedSelection selection;
  if (ProSelectionAlloc(nullptr, &target, selection.out()) != PRO_TK_NO_ERROR) return Fail(value_failure_);
  const ProSelection selected = selection.get();
  selections_.push_back(std::move(selection));
  OwnedReference reference;
  if (ProSelectionToReference(selected, reference.out()) != PRO_TK_NO_ERROR) return Fail(value_failure_);
  const ProReference handle = reference.get();
  references_.push_back(std::move(reference));
  return Add(parent, id, [handle](ProElement element) { return ProElementReferenceSet(element, handle); });
}

ElementTreeBuilder::Row ElementTreeBuilder::HeldReference(Row parent, int id, ProReference reference) {
  return Add(parent, id,
             [reference](ProElement element) { return ProElementReferenceSet(element, reference); });
}

ElementTreeBuilder::Row ElementTreeBuilder::ReferenceFromSelection(Row parent, int id, ProSelection selection,
                                                                   const ReferenceObserver& observer) {
  if (!ok_) return Row();
  if (parent.element_ == nullptr || selection == nullptr) return Fail(value_failure_);
  OwnedElement element;
  if (ProElementAlloc(static_cast<ProElemId>(id), element.out()) != PRO_TK_NO_ERROR)
    return Fail(allocation_failure_);
  OwnedReference reference;
  ProError status = ProSelectionToReference(selection, reference.out());
  if (observer.converted) observer.converted(id, status, reference.get());
  if (status == PRO_TK_NO_ERROR && !reference) status = PRO_TK_GENERAL_ERROR;
  if (status == PRO_TK_NO_ERROR) status = ProElementReferenceSet(element.get(), reference.get());
  if (status != PRO_TK_NO_ERROR) {
    reference.reset();
    element.reset();
    return Fail(value_failure_);
  }
  references_.push_back(std::move(reference));
  status = ProElemtreeElementAdd(parent.element_, nullptr, element.get());
  if (observer.added) observer.added(id, status);
  if (status != PRO_TK_NO_ERROR) {
    element.reset();
    return Fail(value_failure_);
  }
  return Row(element.release());
}

ElementTreeBuilder::Row ElementTreeBuilder::References(Row parent, int id,
                                                       std::span<const ProModelitem> items) {
  if (!ok_) return Row();
  OwnedArray<ProReference> handles;
  if (handles.Allocate(0) != PRO_TK_NO_ERROR) return Fail(value_failure_);
  for (const ProModelitem& item : items) {
    OwnedReference reference;
    ProError status = MakeReference(item, reference);
    if (status == PRO_TK_NO_ERROR) status = handles.Append(reference.get());
    if (status != PRO_TK_NO_ERROR) return Fail(value_failure_);
    references_.push_back(std::move(reference));
  }
  return Add(parent, id,
             [&handles](ProElement element) { return ProElementReferencesSet(element, handles.get()); });
}

void ElementTreeBuilder::FreeReferences() {
  references_.clear();
  selections_.clear();
}

}  // namespace vek
