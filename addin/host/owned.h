// Move-only owners for what the toolkit hands out. Each frees what it holds on every path; `reset()` frees it
// early, where the order of the frees matters, and `release()` gives it away, where the host or a tree takes
// it over. docs/ownership.md tells who owns which kind of handle after which call.
#pragma once

#include <ProArray.h>
#include <ProAsmcomp.h>
#include <ProCollect.h>
#include <ProDrawing.h>
#include <ProElement.h>
#include <ProFit.h>
#include <ProReference.h>
#include <ProSection.h>
#include <ProSelection.h>
#include <ProSurfacedata.h>

#include <utility>

namespace vek {

// `Free` takes a reference to the handle and gives it back to the toolkit.
template <typename Handle, auto Free>
class Owned {
 public:
  Owned() = default;
  explicit Owned(Handle handle) : handle_(handle) {}
  Owned(Owned&& other) noexcept : handle_(other.release()) {}
  Owned& operator=(Owned&& other) noexcept {
    if (this != &other) {
      reset();
      handle_ = other.release();
    }
    return *this;
  }
  ~Owned() { reset(); }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }

  // Where a call writes a new handle; what was held before is freed.
  Handle* out() {
    reset();
    return &handle_;
  }
  // Where a call works on the handle that is held, and may write another in its place.
  Handle* inout() { return &handle_; }

  Handle release() { return std::exchange(handle_, nullptr); }
  void reset() {
    if (handle_ != nullptr) Free(handle_);
    handle_ = nullptr;
  }

 private:
  Handle handle_ = nullptr;
};

namespace owned_detail {
inline void FreeElement(ProElement& element) {
  ProElementFree(&element);
}
inline void FreeElementPath(ProElempath& path) {
  ProElempathFree(&path);
}
inline void FreeSelection(ProSelection& selection) {
  ProSelectionFree(&selection);
}
inline void FreeSelections(ProSelection*& selections) {
  ProSelectionarrayFree(selections);
}
inline void FreeReference(ProReference& reference) {
  ProReferenceFree(reference);
}
inline void FreeConstraint(ProAsmcompconstraint& constraint) {
  ProAsmcompconstraintFree(constraint);
}
inline void FreeConstraints(ProAsmcompconstraint*& constraints) {
  ProAsmcompconstraintArrayFree(constraints);
}
inline void FreeGeometryData(ProGeomitemdata*& data) {
  ProGeomitemdataFree(&data);
}
inline void FreeInterferences(ProInterferenceInfo*& interferences) {
  ProInterferenceInfoProarrayFree(interferences);
}
inline void FreeSectionErrors(ProWSecerror& errors) {
  ProSecerrorFree(&errors);
}
inline void FreeCollection(ProCollection& collection) {
  ProCollectionFree(&collection);
}
inline void FreeCurveInstruction(ProCrvcollinstr& instruction) {
  ProCrvcollinstrFree(instruction);
}
inline void FreeSurfaceInstruction(ProSrfcollinstr& instruction) {
  ProSrfcollinstrFree(instruction);
}
inline void FreeSurfaceReference(ProSrfcollref& reference) {
  ProSrfcollrefFree(reference);
}
inline void FreeDrawingErrors(ProDwgcreateErrs& errors) {
  ProDwgcreateErrsFree(&errors);
}
}  // namespace owned_detail

using OwnedElement = Owned<ProElement, owned_detail::FreeElement>;
using OwnedElementPath = Owned<ProElempath, owned_detail::FreeElementPath>;
using OwnedSelection = Owned<ProSelection, owned_detail::FreeSelection>;
// An array that owns the selections in it.
using OwnedSelections = Owned<ProSelection*, owned_detail::FreeSelections>;
using OwnedReference = Owned<ProReference, owned_detail::FreeReference>;
using OwnedCollection = Owned<ProCollection, owned_detail::FreeCollection>;
using OwnedCurveInstruction = Owned<ProCrvcollinstr, owned_detail::FreeCurveInstruction>;
using OwnedSurfaceInstruction = Owned<ProSrfcollinstr, owned_detail::FreeSurfaceInstruction>;
using OwnedSurfaceReference = Owned<ProSrfcollref, owned_detail::FreeSurfaceReference>;
using OwnedConstraint = Owned<ProAsmcompconstraint, owned_detail::FreeConstraint>;
// An array that owns the constraints in it.
using OwnedConstraints = Owned<ProAsmcompconstraint*, owned_detail::FreeConstraints>;
using OwnedDrawingErrors = Owned<ProDwgcreateErrs, owned_detail::FreeDrawingErrors>;
using OwnedGeometryData = Owned<ProGeomitemdata*, owned_detail::FreeGeometryData>;
// An array that owns the selections and the data in it.
using OwnedInterferences = Owned<ProInterferenceInfo*, owned_detail::FreeInterferences>;
using OwnedSectionErrors = Owned<ProWSecerror, owned_detail::FreeSectionErrors>;

// An expandable array of `T`.
template <typename T>
class OwnedArray {
 public:
  OwnedArray() = default;
  OwnedArray(OwnedArray&& other) noexcept : array_(other.release()) {}
  OwnedArray& operator=(OwnedArray&& other) noexcept {
    if (this != &other) {
      reset();
      array_ = other.release();
    }
    return *this;
  }
  ~OwnedArray() { reset(); }

  // A new array of `count` objects, which grows one by one. What was held before is freed.
  ProError Allocate(int count) {
    reset();
    ProArray array = nullptr;
    const ProError status = ProArrayAlloc(count, static_cast<int>(sizeof(T)), 1, &array);
    if (status == PRO_TK_NO_ERROR) array_ = static_cast<T*>(array);
    return status;
  }

  // Adds a copy of `object` at the end.
  ProError Append(T object) {
    ProArray array = array_;
    const ProError status = ProArrayObjectAdd(&array, -1, 1, &object);
    array_ = static_cast<T*>(array);
    return status;
  }

  // A new array of just `object`.
  bool HoldOne(T object) {
    return Allocate(0) == PRO_TK_NO_ERROR && array_ != nullptr && Append(object) == PRO_TK_NO_ERROR;
  }

  // The number of objects; 0 for no array and for one that can't be asked.
  int size() const {
    int count = 0;
    if (array_ == nullptr || ProArraySizeGet(array_, &count) != PRO_TK_NO_ERROR) return 0;
    return count;
  }

  T* get() const { return array_; }
  T& operator[](int index) const { return array_[index]; }
  explicit operator bool() const { return array_ != nullptr; }

  // The array as one of the toolkit's enumerations of the same size: option lists are arrays of plain
  // integers.
  template <typename Option>
  Option* As() const {
    static_assert(sizeof(Option) == sizeof(T));
    return reinterpret_cast<Option*>(array_);
  }

  // Where a call writes a new array; what was held before is freed.
  T** out() {
    reset();
    return &array_;
  }
  T* release() { return std::exchange(array_, nullptr); }
  void reset() {
    if (array_ == nullptr) return;
    ProArray array = std::exchange(array_, nullptr);
    ProArrayFree(&array);
  }

 private:
  T* array_ = nullptr;
};

}  // namespace vek
