// What callers ask of single edges. Lengths go out in units of the model.
#include <ProGeomitem.h>

#include <algorithm>

#include "bench/host/calls/geometry_handles.h"
#include "bench/host/calls/vector_out.h"
#include "bench/host/features/geometry_questions.h"
#include "bench/host/instruments/call_frame.h"

namespace bench {
namespace {

int EdgeTypeNumber(const std::string& word) {
  constexpr struct {
    const char* word;
    int number;
  } kKinds[] = {{"line", 2}, {"circle", 3}, {"ellipse", 4}, {"spline", 5}};
  constexpr int kBSpline = 12;
  for (const auto& kind : kKinds)
    if (word == kind.word) return kind.number;
  return kBSpline;
}

// The edge that follows along a contour of one of its faces: itself where it closes by itself.
ProEdge NextAlong(Model& model, const FaceInfo* face, const std::string& edge) {
  if (!face) return nullptr;
  for (const auto& contour : face->contours) {
    const auto found = std::ranges::find(contour, edge);
    if (found == contour.end()) continue;
    return HandleOfEdge(model, found + 1 == contour.end() ? contour.front() : found[1]);
  }
  return nullptr;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProEdgeIdGet(ProEdge edge, int* id) {
  HOST_CALL(edge) {
    LiveEdge live;
    if (!id) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(edge, live)) return status;
    *id = live.id;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProEdgeTypeGet(ProEdge edge, ProEnttype* type) {
  HOST_CALL(edge) {
    LiveEdge live;
    if (!type) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(edge, live)) return status;
    *type = static_cast<ProEnttype>(EdgeTypeNumber(live.edge->type));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProEdgeNeighborsGet(ProEdge edge, ProEdge* edge1, ProEdge* edge2, ProSurface* face1,
                             ProSurface* face2) {
  HOST_CALL(edge) {
    LiveEdge live;
    if (!edge1 || !edge2 || !face1 || !face2) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(edge, live)) return status;
    Model& model = *live.model;
    const auto& [first, second] = live.edge->faces;
    *edge1 = NextAlong(model, model.topology.Face(first), live.edge->key);
    *edge2 = NextAlong(model, model.topology.Face(second), live.edge->key);
    *face1 = HandleOfFace(model, first);
    *face2 = HandleOfFace(model, second);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProEdgeXyzdataEval(ProEdge edge, double parameter, ProPoint3d point, ProVector first_derivative,
                            ProVector second_derivative, ProVector direction) {
  HOST_CALL(edge, parameter) {
    LiveEdge live;
    EdgePoint at;
    if (!(parameter >= 0 && parameter <= 1)) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(edge, live)) return status;
    if (const auto told = PointOnEdge(*live.edge, parameter)) {
      at = *told;
    } else if (const ProError status = AskForEdgePoint(*live.model, *live.edge, parameter, at)) {
      return status;
    }
    const double in_model_units = 1 / MillimetresPer(live.model->length_unit);
    const double speed = Length(at.dt);
    WriteOut(at.point, in_model_units, point);
    WriteOut(at.dt, in_model_units, first_derivative);
    WriteOut(at.dtt, in_model_units, second_derivative);
    WriteOut(at.dt, speed > 0 ? 1 / speed : 0, direction);
    return PRO_TK_NO_ERROR;
  };
}
