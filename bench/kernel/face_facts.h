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

}  // namespace bench::kernel
