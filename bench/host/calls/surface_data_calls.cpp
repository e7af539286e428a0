// Surfaces as records that callers read themselves. Lengths go out in units of the model.
#include <ProSurfacedata.h>

#include <algorithm>
#include <memory>
#include <unordered_map>

#include "bench/host/calls/surface_parameters.h"
#include "bench/host/calls/vector_out.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/surface_types.h"

namespace bench {
namespace {

// What a caller's pointer leads to.
struct Record {
  ProGeomitemdata head{};
  ProSurfacedata surface{};
};

std::unordered_map<const ProGeomitemdata*, std::unique_ptr<Record>>& Records() {
  static std::unordered_map<const ProGeomitemdata*, std::unique_ptr<Record>> records;
  return records;
}

// Planes and cylinders have the same axes and origin in their records.
template <typename Shape>
void FillFrame(const FaceInfo& face, double unit, Shape& shape) {
  WriteOut(face.x, 1, shape.e1);
  WriteOut(Cross(face.axis, face.x), 1, shape.e2);
  WriteOut(face.axis, 1, shape.e3);
  WriteOut(face.origin, 1 / unit, shape.origin);
}

ProSurfacedata DataOf(const LiveSurface& surface) {
  const FaceInfo face = FaceOf(surface);
  const double unit = MillimetresPer(surface.model->length_unit);
  const ParameterSteps step = StepsOf(face, unit);
  ProSurfacedata data{};
  data.type = static_cast<ProSrftype>(SurfaceTypeNumber(face.type));
  data.id = surface.id;
  data.orient = face.orientation < 0 ? PRO_SURF_ORIENT_IN : PRO_SURF_ORIENT_OUT;
  data.uv_min[0] = face.u[0] / step.u;
  data.uv_min[1] = face.v[0] / step.v;
  data.uv_max[0] = face.u[1] / step.u;
  data.uv_max[1] = face.v[1] / step.v;
  if (face.type == "plane") FillFrame(face, unit, data.srf_shape.plane);
  if (face.type == "cylinder") {
    FillFrame(face, unit, data.srf_shape.cylinder);
    data.srf_shape.cylinder.radius = face.radius / unit;
  }
  return data;
}

ProGeomitemdata* NewRecord(const ProSurfacedata& surface) {
  auto record = std::make_unique<Record>();
  record->surface = surface;
  record->head.obj_type = PRO_SURFACE;
  record->head.data.p_surf_data = &record->surface;
  ProGeomitemdata* const head = &record->head;
  Records()[head] = std::move(record);
  TheHost().ledger.Give(head, HandleKind::kGeometryData, CurrentCall());
  return head;
}

// Whether the data belong to a record that its caller has not freed yet.
bool IsOfLiveRecord(const ProSurfacedata* data) {
  return std::ranges::any_of(Records(), [data](const auto& entry) { return &entry.second->surface == data; });
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProSurfaceDataGet(ProSurface surface, ProGeomitemdata** data) {
  HOST_CALL(surface) {
    LiveSurface live;
    if (!data) return PRO_TK_BAD_INPUTS;
    *data = nullptr;
    if (const ProError status = Resolve(surface, live)) return status;
    *data = NewRecord(DataOf(live));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProGeomitemdataFree(ProGeomitemdata** data) {
  HOST_CALL_THAT_NEVER_FAILS(data ? *data : nullptr) {
    if (!data || !*data) return PRO_TK_BAD_INPUTS;
    if (!TheHost().ledger.TakeBack(*data, HandleKind::kGeometryData, CurrentCall()))
      return PRO_TK_INVALID_PTR;
    Records().erase(*data);
    *data = nullptr;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSurfacedataGet(ProSurfacedata* data, ProSrftype* type, ProUvParam uv_min, ProUvParam uv_max,
                           ProSurfaceOrient* orientation, ProSurfaceshapedata* shape, int* surface_id) {
  HOST_CALL(data) {
    if (!data) return PRO_TK_BAD_INPUTS;
    if (!IsOfLiveRecord(data)) {
      TheHost().ledger.Violation(CurrentCall(), "reads surface data of no live record");
      return PRO_TK_INVALID_PTR;
    }
    if (type) *type = data->type;
    if (uv_min) std::copy_n(data->uv_min, 2, uv_min);
    if (uv_max) std::copy_n(data->uv_max, 2, uv_max);
    if (orientation) *orientation = data->orient;
    if (shape) *shape = data->srf_shape;
    if (surface_id) *surface_id = data->id;
    return PRO_TK_NO_ERROR;
  };
}
