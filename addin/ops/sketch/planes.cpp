#include "addin/ops/sketch/planes.h"

#include <array>

#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

// The planes that can orient a sketch, in the order of preference, and what the normal of the chosen one
// becomes.
struct OrientationChoice {
  std::array<std::wstring_view, 3> candidates;
  int direction;
};

OrientationChoice OrientationFor(std::wstring_view plane_name) {
  if (ToUpper(plane_name) == L"RIGHT") return {{L"TOP", L"FRONT", L"RIGHT"}, 1};
  return {{L"RIGHT", L"TOP", L"FRONT"}, 4};
}

template <typename Find>
bool FirstOrientation(const OrientationChoice& choice, std::wstring_view plane_name, Find&& find,
                      ProModelitem& item) {
  for (const std::wstring_view candidate : choice.candidates) {
    if (EqualsIgnoreCase(candidate, plane_name)) continue;
    if (find(candidate, item)) return true;
  }
  return false;
}

bool FindPlaneSurface(ProMdl model, std::wstring_view name, ProModelitem& item) {
  ProName buffer;
  CopyCut(buffer, name);
  ProFeature feature{};
  if (ProModelitemByNameInit(model, kFeatureItem, buffer, &feature) != PRO_TK_NO_ERROR) return false;
  ProModelitem surface{};
  surface.id = -1;
  VisitGeometry(feature, kSurfaceItem, [&surface](ProGeomitem* visited, ProError) {
    if (surface.id < 0) surface = *visited;
    return PRO_TK_NO_ERROR;
  });
  if (surface.id < 0) return false;
  item = surface;
  item.type = kSurfaceItem;
  return true;
}

bool FindPlaneDatum(ProMdl model, std::wstring_view name, ProModelitem& item) {
  ProName buffer;
  CopyCut(buffer, name);
  ProModelitem datum{};
  if (ProModelitemByNameInit(model, kDatumPlaneItem, buffer, &datum) != PRO_TK_NO_ERROR) return false;
  item = datum;
  item.type = kDatumPlaneItem;
  return true;
}

bool FindInForm(ProMdl model, std::wstring_view name, PlaneForm form, ProModelitem& item) {
  return form == PlaneForm::kDatum ? FindPlaneDatum(model, name, item) : FindPlaneSurface(model, name, item);
}

}  // namespace

bool FindDatumPlane(ProMdl model, std::wstring_view name, ProModelitem& item) {
  LogOperation(Format(L"Sketch FindDatumPlane: looking up '%s'", name));
  if (FindPlaneSurface(model, name, item) || FindPlaneDatum(model, name, item)) return true;
  LogOperation(Format(L"Sketch FindDatumPlane: '%s' not found", name));
  return false;
}

void ChooseOrientation(SketchSession& session) {
  const OrientationChoice choice = OrientationFor(session.plane_name);
  session.orient_dir = choice.direction;
  session.has_orient = FirstOrientation(
      choice, session.plane_name,
      [&session](std::wstring_view name, ProModelitem& item) {
        return FindDatumPlane(session.model, name, item);
      },
      session.orient_item);
}

bool ResolvePlaneRefs(SketchSession& session, PlaneForm form) {
  ProModelitem plane{};
  if (!FindInForm(session.model, session.plane_name, form, plane)) return false;

  const OrientationChoice choice = OrientationFor(session.plane_name);
  session.orient_dir = choice.direction;
  ProModelitem orientation{};
  const auto find = [&session, form](std::wstring_view name, ProModelitem& item) {
    return FindInForm(session.model, name, form, item);
  };
  if (!FirstOrientation(choice, session.plane_name, find, orientation)) return false;

  session.plane_item = plane;
  session.orient_item = orientation;
  session.has_orient = true;
  LogOperation(Format(L"Sketch Commit: using %s refs for plane/orient",
                      form == PlaneForm::kDatum ? L"PRO_DATUM_PLANE" : L"PRO_SURFACE"));
  LogItem(L"Commit planeItem", session.plane_item);
  LogItem(L"Commit orientItem", session.orient_item);
  return true;
}

void LogItem(std::wstring_view title, const ProModelitem& item) {
  LogOperation(
      Format(L"Sketch %s: type=%d id=%d owner=%p", title, static_cast<int>(item.type), item.id, item.owner));
}

}  // namespace vek::sketch
