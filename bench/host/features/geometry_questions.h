// What only the kernel can tell of a model's geometry. Lengths in millimetres.
//
// The kernel is asked about the geometry as it is, not about what the features would give now. A status other
// than 0 means that it gave no answer, or that there is none to the question.
#pragma once

#include <ProObjects.h>

#include "bench/host/model/evaluation.h"
#include "bench/host/model/model.h"

namespace bench {

ProError AskForSurfacePoint(const Model& model, const FaceInfo& face, double u, double v, SurfacePoint& at);
ProError AskForEdgePoint(const Model& model, const EdgeInfo& edge, double t, EdgePoint& at);

// The points of the face that lie furthest against and along a direction of some length.
ProError AskForExtremes(const Model& model, const FaceInfo& face, const Vector3& direction, Vector3& low,
                        Vector3& high);

}  // namespace bench
