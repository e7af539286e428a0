#include "bench/kernel/face_facts.h"

namespace bench::kernel {

std::shared_ptr<const FaceFacts> FaceFactsCache::Of(const TopoDS_Face& face) {
  if (const auto* known = facts_.Seek(face)) return *known;
  auto facts = std::make_shared<FaceFacts>();
  facts->integrals = IntegrateFace(face);
  facts->measure = MeasureOf(facts->integrals);
  facts->bounds = BoundsOf(face);
  facts->inside = FindInsidePoint(face);
  facts->frame = FrameOf(face, facts->inside);
  constexpr int kFacesKept = 20000;
  if (facts_.Extent() >= kFacesKept) facts_.Clear();
  facts_.Bind(face, facts);
  return facts;
}

}  // namespace bench::kernel
