#include "addin/companion/face_measurement.h"

#include <ProFeature.h>
#include <ProSurfacedata.h>
#include <ProUnits.h>

#include <numbers>

#include "addin/companion/hole_info.h"
#include "addin/companion/measurement_text.h"
#include "addin/host/owned.h"
#include "addin/host/text_buffer.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr int kCylinder = 36;
constexpr int kHoleFeature = 911;
constexpr int kShaftFeature = 912;
constexpr int kInwards = -1;
// A hollow cylinder is a hole below this radius, whatever else it is.
constexpr double kLargestSureHole = 50.0;

// A selected face with all that the host says of its surface.
struct PickedFace {
  ProModelitem item{};
  ProUvParam click{};
  ProSurface surface = nullptr;
  OwnedGeometryData data;
  ProSrftype type = static_cast<ProSrftype>(-3);
  ProUvParam uv_min{}, uv_max{};
  ProSurfaceOrient orientation = PRO_SURF_ORIENT_NONE;
  ProSurfaceshapedata shape{};
  int id = -1;

  bool IsCylinder() const { return type == kCylinder; }
};

ProError ReadFace(ProSelection selection, PickedFace& face) {
  ProError status = ProSelectionModelitemGet(selection, &face.item);
  if (status == PRO_TK_NO_ERROR) status = ProSelectionUvParamGet(selection, face.click);
  if (status == PRO_TK_NO_ERROR) status = ProGeomitemToSurface(&face.item, &face.surface);
  if (status == PRO_TK_NO_ERROR) status = ProSurfaceDataGet(face.surface, face.data.out());
  if (status == PRO_TK_NO_ERROR)
    status = ProSurfacedataGet(face.data.get()->data.p_surf_data, &face.type, face.uv_min, face.uv_max,
                               &face.orientation, &face.shape, &face.id);
  return status;
}

void MeasureArea(const PickedFace& face, const std::wstring& unit, FaceMeasurement& measurement) {
  double area = 0;
  if (ProSurfaceAreaEval(face.surface, &area) != PRO_TK_NO_ERROR) area = 0;
  measurement.area = FormatLength(area, unit);
  LogShell(L"Final Surface Area Result: " + measurement.area);
}

bool LooksLikeHole(const PickedFace& face) {
  LogShell(L"Starting hole detection analysis...");
  if (!face.IsCylinder()) return false;
  LogShell(L"Surface is cylindrical - checking orientation for hole detection");
  if (face.orientation == kInwards) {
    LogShell(L"Detected as HOLE: Cylindrical surface with inward orientation");
    return true;
  }
  LogShell(L"Cylindrical surface but outward orientation - likely external cylinder");
  return false;
}

bool PointAt(const PickedFace& face, const ProUvParam& uv, ProPoint3d point, ProVector normal) {
  ProUvParam at{uv[0], uv[1]};
  ProVector first[2], second[3];
  return ProSurfaceXyzdataEval(face.surface, at, point, first, second, normal) == PRO_TK_NO_ERROR;
}

void MeasurePlaces(const PickedFace& face, const std::wstring& unit, FaceMeasurement& measurement) {
  ProPoint3d click{};
  ProVector normal{};
  const bool evaluated = PointAt(face, face.click, click, normal);
  if (evaluated) {
    measurement.clickX = FormatLength(click[0], unit);
    measurement.clickY = FormatLength(click[1], unit);
    measurement.clickZ = FormatLength(click[2], unit);
    LogShell(Format(L"Click location (Point3D): [%lf, %lf, %lf]", click[0], click[1], click[2]));
    measurement.normal = Format(L"%lf, %lf, %lf", normal[0], normal[1], normal[2]);
    LogShell(Format(L"Surface normal vector: %s", measurement.normal));
  }
  if (face.IsCylinder()) {
    const ProVector& origin = face.shape.cylinder.origin;
    measurement.centerX = FormatLength(origin[0], unit);
    measurement.centerY = FormatLength(origin[1], unit);
    measurement.centerZ = FormatLength(origin[2], unit);
    LogShell(Format(L"Surface center point (Point3D): [%lf, %lf, %lf]", origin[0], origin[1], origin[2]));
  } else if (evaluated) {
    measurement.centerX = measurement.clickX;
    measurement.centerY = measurement.clickY;
    measurement.centerZ = measurement.clickZ;
    LogShell(Format(L"Surface center point (using click location): [%lf, %lf, %lf]", click[0], click[1],
                    click[2]));
  }
}

// What the feature that made the hole adds to what is known of it.
void LookAtFeature(PickedFace& face, HoleInfo& hole) {
  ProFeature feature{};
  const ProError status = ProGeomitemFeatureGet(&face.item, &feature);
  LogShell(Format(L"ProGeomitemFeatureGet returned: %d", status));
  if (status == PRO_TK_BAD_INPUTS) {
    LogShell(L"ProGeomitemFeatureGet returned PRO_TK_BAD_INPUTS - surface may not have a parent feature");
    return;
  }
  if (status != PRO_TK_NO_ERROR) {
    LogShell(Format(L"ProGeomitemFeatureGet failed with error: %d", status));
    return;
  }
  LogShell(L"Successfully retrieved parent feature - checking feature type");
  ProFeattype type = -1;
  if (const ProError failure = ProFeatureTypeGet(&feature, &type); failure != PRO_TK_NO_ERROR) {
    LogShell(Format(L"Failed to get feature type, error: %d", failure));
    return;
  }
  LogShell(Format(L"Parent feature type: %d", type));
  if (type != kHoleFeature && type != kShaftFeature) {
    LogShell(Format(L"Parent feature is not a hole type (type: %d)", type));
    return;
  }
  LogShell(L"Detected as HOLE: Surface belongs to hole/shaft feature");
  ExtractHoleInfo(face.item, hole);
}

// Whether the radius alone makes it a hole.
bool MeasureRound(const PickedFace& face, const std::wstring& unit, FaceMeasurement& measurement) {
  measurement.radius = measurement.diameter = measurement.perimeter = L"0.0";
  const double radius = face.shape.cylinder.radius;
  if (!face.IsCylinder() || !(radius > 0)) return false;
  measurement.radius = FormatLength(radius, unit);
  LogShell(L"Cylindrical surface radius: " + measurement.radius);
  measurement.diameter = FormatLength(2 * radius, unit);
  LogShell(L"Cylindrical surface diameter: " + measurement.diameter);
  // Of both rims together.
  measurement.perimeter = FormatLength(4 * std::numbers::pi * radius, unit);
  LogShell(L"Cylindrical surface perimeter: " + measurement.perimeter);
  if (!(radius < kLargestSureHole) || face.orientation != kInwards) return false;
  LogShell(L"Detected as HOLE: Small cylindrical surface with inward orientation");
  return true;
}

// The way from the first to the last point of the parameters, along the origin of the cylinder: it is the
// origin that stands here, not the axis, and the companion counts on it.
void MeasureDepth(const PickedFace& face, const std::wstring& unit, HoleInfo& hole) {
  ProPoint3d start{}, end{};
  ProVector normal{};
  const bool has_start = PointAt(face, face.uv_min, start, normal);
  if (!has_start) LogShell(L"Failed to evaluate start point for hole depth");
  const bool has_end = PointAt(face, face.uv_max, end, normal);
  if (!has_end) LogShell(L"Failed to evaluate end point for hole depth");
  if (!has_start || !has_end) return;
  const ProVector& origin = face.shape.cylinder.origin;
  double depth = 0;
  for (int axis = 0; axis < 3; ++axis) depth += (end[axis] - start[axis]) * origin[axis];
  hole.holeDepth = FormatLength(depth, unit);
  LogShell(L"Hole depth: " + hole.holeDepth);
}

void Keep(const HoleInfo& hole, FaceMeasurement& measurement) {
  measurement.threadSize = hole.threadSize;
  measurement.holeDiameter = hole.holeDiameter;
  measurement.holeDepth = hole.holeDepth;
  measurement.standard = hole.standard;
  measurement.threadClass = hole.threadClass;
  measurement.holeType = hole.holeType;
}

int TypeOfCurrent(ProMdl model) {
  LogShell(L"Resetting error status for model type determination");
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR) return PRO_MDL_UNUSED;
  switch (static_cast<int>(type)) {
    case 2:
      LogShell(L"The current model is a PART");
      break;
    case 5:
      LogShell(L"The current model is SURFACE");
      break;
    case 1:
      LogShell(L"The current model is ASSEMBLY");
      break;
    default:
      break;
  }
  return type;
}

}  // namespace

std::wstring DetectModelUnit(ProMdl model) {
  ProUnitsystem system{};
  ProUnititem unit{};
  ProName name{};
  const wchar_t* failed = nullptr;
  if (ProMdlPrincipalunitsystemGet(model, &system) != PRO_TK_NO_ERROR)
    failed = L"ERROR: Failed to get principal unit system";
  else if (ProUnitsystemUnitGet(&system, PRO_UNITTYPE_LENGTH, &unit) != PRO_TK_NO_ERROR)
    failed = L"ERROR: Failed to get length unit from principal system";
  else if (ProUnitNameGet(&unit, name) != PRO_TK_NO_ERROR)
    failed = L"ERROR: Failed to get unit name";
  if (failed) {
    LogShell(failed);
    return L"mm";
  }
  const std::wstring lowered = ToLower(BufferText(name));
  LogShell(Format(L"Model unit system: %s", lowered));
  return LengthUnitWord(lowered);
}

int MeasureFace(ProMdl model, ProSelection selection, FaceMeasurement& measurement) {
  PickedFace face;
  if (const ProError status = ReadFace(selection, face); status != PRO_TK_NO_ERROR) return status;
  const std::wstring unit = DetectModelUnit(model);
  LogShell(Format(L"Detected unit type: %s", unit));
  MeasureArea(face, unit, measurement);
  bool is_hole = LooksLikeHole(face);
  MeasurePlaces(face, unit, measurement);
  HoleInfo hole;
  if (is_hole) LookAtFeature(face, hole);
  if (MeasureRound(face, unit, measurement)) is_hole = true;
  MeasureDepth(face, unit, hole);
  hole.holeDiameter = measurement.diameter;
  measurement.isHole = is_hole;
  if (is_hole) Keep(hole, measurement);
  LogShell(Format(L"Final hole detection result: %s",
                  is_hole ? L"TRUE - This is a HOLE" : L"FALSE - This is NOT a hole"));
  measurement.surfaceType = SurfaceTypeWord(face.type);
  LogShell(Format(L"Surface type: %s", measurement.surfaceType));
  return TypeOfCurrent(model);
}

}  // namespace vek
