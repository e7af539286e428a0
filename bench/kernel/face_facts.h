// All that is told of a face, worked out once for as long as the face lives on unchanged.
#pragma once

#include <NCollection_DataMap.hxx>
#include <TopTools_OrientedShapeMapHasher.hxx>
#include <TopoDS_Face.hxx>
#include <memory>

#include "bench/kernel/bounds.h"
#include "bench/kernel/face_integrals.h"
#include "bench/kernel/inside_point.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/surface_frame.h"

namespace bench::kernel {

struct FaceFacts {
  FaceIntegrals integrals{};
  FaceMeasure measure;
  Bounds bounds;
  InsidePoint inside;
  SurfaceFrame frame;
};

// Keeps the facts of some ten thousand faces and starts anew beyond.
class FaceFactsCache {
 public:
  std::shared_ptr<const FaceFacts> Of(const TopoDS_Face& face);
  void Clear() { facts_.Clear(); }

 private:
  NCollection_DataMap<TopoDS_Shape, std::shared_ptr<const FaceFacts>, TopTools_OrientedShapeMapHasher> facts_;
};

// A face's facts, taken from the cache when they are first looked at: most features need none of a body's
// faces. The cache must live as long.
class FactsOnDemand {
 public:
  FactsOnDemand(const TopoDS_Face& face, FaceFactsCache& cache) : face_(face), cache_(&cache) {}

  const FaceFacts& operator*() const {
    if (!facts_) facts_ = cache_->Of(face_);
    return *facts_;
  }
  const FaceFacts* operator->() const { return &**this; }

 private:
  TopoDS_Face face_;
  FaceFactsCache* cache_;
  mutable std::shared_ptr<const FaceFacts> facts_;
};

}  // namespace bench::kernel
