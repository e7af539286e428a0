#include "bench/kernel/evaluate.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepLProp_SLProps.hxx>
#include <Precision.hxx>

#include "bench/kernel/bounds.h"
#include "bench/kernel/json_vector.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

using nlohmann::json;

json EvaluateFace(const KeyedFace& face, double u, double v) {
  // Turned into one form, a frame need not have the toolkit's own parameters.
  if (face.facts->frame.x) throw Refusal("The surface's frame tells its points.");
  constexpr int kSecondDerivatives = 2;
  const BRepAdaptor_Surface surface(face.face);
  BRepLProp_SLProps local(surface, u, v, kSecondDerivatives, Precision::Confusion());
  if (!local.IsNormalDefined()) throw Refusal("The surface has no normal there.");
  return {{"point", Triple(local.Value())},
          {"du", Triple(local.D1U())},
          {"dv", Triple(local.D1V())},
          {"duu", Triple(local.D2U())},
          {"duv", Triple(local.DUV())},
          {"dvv", Triple(local.D2V())},
          {"normal", Triple(local.Normal().XYZ() * face.facts->frame.orientation)}};
}

json EvaluateEdge(const KeyedEdge& edge, double t) {
  const BRepAdaptor_Curve curve(edge.edge);
  const double first = curve.FirstParameter(), span = curve.LastParameter() - first;
  gp_Pnt point;
  gp_Vec dt, dtt;
  curve.D2(first + span * t, point, dt, dtt);
  return {{"point", Triple(point)}, {"dt", Triple(dt * span)}, {"dtt", Triple(dtt * (span * span))}};
}

json DescribeExtremes(const KeyedFace& face, const gp_XYZ& direction) {
  const Reach reach = ReachOf(face.face, direction);
  return {{"low", Triple(reach.low)}, {"high", Triple(reach.high)}};
}

}  // namespace bench::kernel
