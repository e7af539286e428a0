#include "bench/host/calls/surface_parameters.h"

namespace bench {
namespace {

// A datum plane as a face: a plane without bounds.
FaceInfo FaceOfDatum(const Model& model, const Feature& datum) {
  FaceInfo face;
  face.type = "plane";
  for (int i = 0; i < 3; ++i) face.origin[i] = datum.plane.origin[i] * MillimetresPer(model.length_unit);
  face.axis = datum.plane.Normal();
  face.x = datum.plane.x;
  return face;
}

}  // namespace

FaceInfo FaceOf(const LiveSurface& surface) {
  return surface.face ? *surface.face : FaceOfDatum(*surface.model, *surface.datum);
}

ParameterSteps StepsOf(const FaceInfo& face, double unit) {
  const bool is_plane = face.type == "plane";
  const bool has_height =
      is_plane || face.type == "cylinder" || face.type == "cone" || face.type == "extruded";
  return {is_plane ? unit : 1, has_height ? unit : 1};
}

}  // namespace bench
