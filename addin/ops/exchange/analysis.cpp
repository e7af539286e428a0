#include "addin/ops/exchange/analysis.h"

#include <ProSurfacedata.h>

#include <cmath>

#include "addin/host/owned.h"
#include "addin/host/visits.h"
#include "addin/ops/assembly/occurrences.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/common/units.h"
#include "addin/ops/exchange/active_solid.h"
#include "addin/ops/exchange/analysis_arithmetic.h"
#include "addin/ops/exchange/interference.h"
#include "addin/ops/exchange/model_measures.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::exchange {
namespace {

constexpr const wchar_t* kSolidWanted = L"Active document must be a part or assembly.";
constexpr int kPlane = 34;

struct Point {
  double x = 0, y = 0, z = 0;
};

std::wstring PointText(const Point& point) {
  return Format(LR"({"x_mm":%g,"y_mm":%g,"z_mm":%g})", point.x, point.y, point.z);
}

Point PointInMm(ProMdl model, const double (&point)[3]) {
  return {ModelToMm(model, point[0]), ModelToMm(model, point[1]), ModelToMm(model, point[2])};
}

Point Difference(const Point& to, const Point& from) {
  return {to.x - from.x, to.y - from.y, to.z - from.z};
}

// The normal in the middle of the surface's parameters; false for one that the host can't tell.
bool MiddleNormal(ProSurface surface, Direction& normal) {
  OwnedGeometryData data;
  if (ProSurfaceDataGet(surface, data.out()) != PRO_TK_NO_ERROR || !data) return false;
  const ProSurfacedata* const record = data.get()->data.p_surf_data;
  if (record == nullptr) return false;
  ProUvParam middle = {(record->uv_min[0] + record->uv_max[0]) / 2,
                       (record->uv_min[1] + record->uv_max[1]) / 2};
  ProPoint3d point;
  ProVector first[2], second[3], direction;
  if (ProSurfaceXyzdataEval(surface, middle, point, first, second, direction) != PRO_TK_NO_ERROR)
    return false;
  normal = {direction[0], direction[1], direction[2]};
  return true;
}

void ScanSurface(DraftScan& scan, ProSurface surface) {
  ProSrftype type = PRO_SRF_NONE;
  if (ProSurfaceTypeGet(surface, &type) != PRO_TK_NO_ERROR || static_cast<int>(type) != kPlane) return;
  Direction normal{};
  if (MiddleNormal(surface, normal)) AddFace(scan, normal);
}

std::wstring PairsText(const std::vector<InterferenceRecord>& list) {
  std::wstring pairs;
  for (const InterferenceRecord& record : list) {
    if (!pairs.empty()) pairs += L',';
    pairs += Format(LR"({"occ1":"%s","occ2":"%s","volume_cm3":%g})", JsonEscape(record.occ1),
                    JsonEscape(record.occ2), record.volume_cm3);
  }
  return L"[" + pairs + L"]";
}

// ---- operations
// ----------------------------------------------------------------------------------------------

CreoMcpOperationResult MassProperties(const std::wstring&) {
  if (!AnalysisSelfCheck()) LogOperation(L"CreoMcpAnalysis: SelfCheck FAILED");
  ProMdl model = nullptr;
  int type = -1;
  if (auto active = RequireActiveSolid(kSolidWanted, model, type); !active.success) return active;
  ProMassProperty properties{};
  if (const ProError status = ProSolidMassPropertyGet(static_cast<ProSolid>(model), nullptr, &properties);
      status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to compute mass properties (status=%d).", status));

  const double mass_kg = MassInKg(model, properties.mass);
  return MakeSuccessResult(
      L"Mass properties retrieved.",
      Format(LR"({"mass_kg":%g,"volume_cm3":%g,"surface_area_cm2":%g,"center_of_mass":%s})", mass_kg,
             VolumeInCm3(model, properties.volume), AreaInCm2(model, properties.surface_area),
             PointText(PointInMm(model, properties.center_of_gravity))));
}

CreoMcpOperationResult BoundingBox(const std::wstring&) {
  ProMdl model = nullptr;
  int type = -1;
  if (auto active = RequireActiveSolid(kSolidWanted, model, type); !active.success) return active;
  Pro3dPnt corners[2] = {};
  if (const ProError status = ProSolidOutlineGet(static_cast<ProSolid>(model), corners);
      status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Unable to compute document bounding box (status=%d).", status));

  const Point low = PointInMm(model, corners[0]), high = PointInMm(model, corners[1]);
  return MakeSuccessResult(L"Bounding box retrieved.",
                           Format(LR"({"min":%s,"max":%s,"size":%s})", PointText(low), PointText(high),
                                  PointText(Difference(high, low))));
}

CreoMcpOperationResult MeasureDistance(const std::wstring& arguments) {
  Point first, second;
  JsonReadNumber(arguments, L"x1", first.x);
  JsonReadNumber(arguments, L"y1", first.y);
  JsonReadNumber(arguments, L"z1", first.z);
  JsonReadNumber(arguments, L"x2", second.x);
  JsonReadNumber(arguments, L"y2", second.y);
  JsonReadNumber(arguments, L"z2", second.z);
  const Point way = Difference(second, first);
  const double distance = std::sqrt(way.x * way.x + way.y * way.y + way.z * way.z);
  return MakeSuccessResult(Format(L"Distance: %.4f mm.", distance),
                           Format(LR"({"point1":%s,"point2":%s,"distance_mm":%g})", PointText(first),
                                  PointText(second), distance));
}

CreoMcpOperationResult Interference(const std::wstring&) {
  ProMdl assembly = nullptr;
  if (auto active = assembly::RequireActiveAssembly(assembly); !active.success) return active;
  std::vector<InterferenceRecord> list;
  auto checked = CheckInterference(assembly, list);
  if (!checked.success) return checked;

  const int count = static_cast<int>(list.size());
  std::wstring message = Format(L"%d interference(s) detected.", count);
  if (list.empty()) message = checked.message.empty() ? L"No interference detected." : checked.message;
  return MakeSuccessResult(std::move(message),
                           Format(LR"({"interference_count":%d,"pairs":%s})", count, PairsText(list)));
}

CreoMcpOperationResult DraftAngle(const std::wstring& arguments) {
  const std::wstring axis = PullAxis(JsonReadStringArgument(arguments, L"pull_direction"));
  ProMdl model = nullptr;
  int type = -1;
  if (auto active = RequireActiveSolid(kSolidWanted, model, type); !active.success) return active;
  if (type != kPartType) return MakeFailureResult(L"AnalyzeDraftAngle requires an active part document.");

  DraftScan scan;
  scan.pull = AxisDirection(axis);
  const ProError status = VisitSurfaces(model, [&](ProSurface surface, ProError) {
    ScanSurface(scan, surface);
    return PRO_TK_NO_ERROR;
  });
  if (status != PRO_TK_NO_ERROR && status != PRO_TK_E_NOT_FOUND)
    return MakeFailureResult(L"Draft analysis failed while visiting surfaces.");

  std::wstring message = L"No planar faces found to analyse.";
  if (scan.total > 0)
    message = Format(L"Draft analysis: min=%.2f\u00b0 max=%.2f\u00b0, %d undrafted face(s).", scan.min_angle,
                     scan.max_angle, scan.undrafted);
  return MakeSuccessResult(
      std::move(message),
      Format(
          LR"({"pull_direction":"%s","min_angle_deg":%.3f,"max_angle_deg":%.3f,"undrafted_face_count":%d})",
          axis, scan.min_angle, scan.max_angle, scan.undrafted));
}

}  // namespace

void RegisterAnalysisOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_analysis_mass_properties", MassProperties);
  provider.RegisterOperation(L"api_analysis_bounding_box", BoundingBox);
  provider.RegisterOperation(L"api_analysis_measure_distance", MeasureDistance);
  provider.RegisterOperation(L"api_analysis_check_interference", Interference);
  provider.RegisterOperation(L"api_analysis_draft_angle", DraftAngle);
}

}  // namespace vek::exchange
