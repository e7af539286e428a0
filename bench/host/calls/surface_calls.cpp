// What callers ask of single surfaces. Lengths go out in units of the model.
#include <ProGeomitem.h>

#include <cmath>

#include "bench/host/calls/geometry_handles.h"
#include "bench/host/calls/surface_parameters.h"
#include "bench/host/calls/vector_out.h"
#include "bench/host/features/geometry_questions.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/surface_types.h"

namespace bench {
namespace {

ProError Evaluate(const Model& model, const FaceInfo& face, const ProUvParam uv, SurfacePoint& at) {
  if (!std::isfinite(uv[0]) || !std::isfinite(uv[1])) return PRO_TK_BAD_INPUTS;
  const ParameterSteps step = StepsOf(face, MillimetresPer(model.length_unit));
  const double u = uv[0] * step.u, v = uv[1] * step.v;
  if (const auto told = PointOnSurface(face, u, v)) {
    at = *told;
    return PRO_TK_NO_ERROR;
  }
  return AskForSurfacePoint(model, face, u, v, at);
}

bool TurnsAboutAnAxis(const FaceInfo& face) {
  for (const char* type : {"cylinder", "cone", "sphere", "torus", "revolved"})
    if (face.type == type) return true;
  return false;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProSurfaceTypeGet(ProSurface surface, ProSrftype* type) {
  HOST_CALL(surface) {
    LiveSurface live;
    if (!type) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(surface, live)) return status;
    *type = static_cast<ProSrftype>(SurfaceTypeNumber(FaceOf(live).type));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSurfaceAreaEval(ProSurface surface, double* area) {
  HOST_CALL(surface) {
    LiveSurface live;
    if (!area) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(surface, live)) return status;
    if (!live.face) return PRO_TK_INVALID_TYPE;
    const double unit = MillimetresPer(live.model->length_unit);
    *area = live.face->area / (unit * unit);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSurfaceDiameterEval(ProSurface surface, ProUvParam uv, double* diameter) {
  HOST_CALL(surface, uv ? uv[0] : 0.0, uv ? uv[1] : 0.0) {
    LiveSurface live;
    SurfacePoint at;
    if (!uv || !diameter) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(surface, live)) return status;
    const FaceInfo face = FaceOf(live);
    if (!TurnsAboutAnAxis(face)) return PRO_TK_INVALID_TYPE;
    if (const ProError status = Evaluate(*live.model, face, uv, at)) return status;
    *diameter =
        2 * DistanceFromAxis(at.point, face.origin, face.axis) / MillimetresPer(live.model->length_unit);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSurfaceExtremesEval(ProSurface surface, ProVector direction, ProPoint3d low, ProPoint3d high) {
  HOST_CALL(surface, direction ? direction[0] : 0.0, direction ? direction[1] : 0.0,
            direction ? direction[2] : 0.0) {
    LiveSurface live;
    if (!direction || !low || !high) return PRO_TK_BAD_INPUTS;
    const Vector3 along{direction[0], direction[1], direction[2]};
    const double size = Length(along);
    if (!std::isfinite(size) || !(size > 0)) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(surface, live)) return status;
    if (!live.face) return PRO_TK_INVALID_TYPE;
    Vector3 lowest{}, highest{};
    if (const ProError status = AskForExtremes(*live.model, *live.face, along, lowest, highest))
      return status;
    const double in_model_units = 1 / MillimetresPer(live.model->length_unit);
    WriteOut(lowest, in_model_units, low);
    WriteOut(highest, in_model_units, high);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSurfaceXyzdataEval(ProSurface surface, ProUvParam uv, ProPoint3d point,
                               ProVector first_derivatives[2], ProVector second_derivatives[3],
                               ProVector normal) {
  HOST_CALL(surface, uv ? uv[0] : 0.0, uv ? uv[1] : 0.0) {
    LiveSurface live;
    SurfacePoint at;
    if (!uv) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(surface, live)) return status;
    const FaceInfo face = FaceOf(live);
    if (const ProError status = Evaluate(*live.model, face, uv, at)) return status;
    const double unit = MillimetresPer(live.model->length_unit);
    const ParameterSteps step = StepsOf(face, unit);
    WriteOut(at.point, 1 / unit, point);
    WriteOut(at.normal, 1, normal);
    if (first_derivatives) {
      WriteOut(at.du, step.u / unit, first_derivatives[0]);
      WriteOut(at.dv, step.v / unit, first_derivatives[1]);
    }
    if (second_derivatives) {
      WriteOut(at.duu, step.u * step.u / unit, second_derivatives[0]);
      WriteOut(at.duv, step.u * step.v / unit, second_derivatives[1]);
      WriteOut(at.dvv, step.v * step.v / unit, second_derivatives[2]);
    }
    return PRO_TK_NO_ERROR;
  };
}
