#include "addin/ops/drawing/cross_sections.h"

#include <ProXsec.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/ops/common/units.h"
#include "addin/ops/drawing/drawing_names.h"
#include "addin/ops/drawing/frame.h"
#include "addin/ops/drawing/offset_plane.h"
#include "addin/ops/drawing/views.h"
#include "addin/platform/files.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::drawing {
namespace {

// Below this, in model units, the datum plane itself is cut along.
constexpr double kSmallestOffset = 0.0001;

constexpr std::size_t kPlaneNameLength = 31;
constexpr int kNoQuilt = -1;

// What is cut along: a surface, and the name of the datum plane that it is or was made from.
struct CutSurface {
  ProGeomitem item{};
  std::wstring base_plane;
};

double ModelOffset(ProDrawing drawing, ProView parent, ProSolid solid, double sheet_offset) {
  double scale = 1;
  if (ProDrawingViewScaleGet(drawing, parent, &scale) != PRO_TK_NO_ERROR) scale = 1;
  return MmToModelGuarded(solid, sheet_offset / DivisibleScale(scale));
}

// The wanted datum plane, or the first of the others that the model has.
bool FindBasePlane(ProSolid solid, const std::wstring& wanted, CutSurface& base) {
  for (const std::wstring& name :
       {wanted, std::wstring(L"FRONT"), std::wstring(L"RIGHT"), std::wstring(L"TOP")}) {
    if (!FindDatumSurface(solid, name, base.item)) continue;
    base.base_plane = name;
    return true;
  }
  return false;
}

void MoveOffBasePlane(ProSolid solid, double offset, CutSurface& surface) {
  if (!(std::fabs(offset) > kSmallestOffset)) return;
  const std::wstring name = Format(L"VEK_SEC_PLN_%u", TickCount()).substr(0, kPlaneNameLength);
  ProGeomitem moved{};
  const auto created = CreateOffsetPlane(solid, surface.item, offset, name, moved);
  if (created.success)
    surface.item = moved;
  else
    LogDrawing(Format(L"offset plane failed (%s); using principal plane.", created.message));
}

std::wstring NewSectionName(ProSolid solid) {
  std::vector<std::wstring> names;
  VisitCrossSections(solid, [&names](ProXsec* section, ProError) {
    ProName name{};
    if (ProXsecNameGet(section, name) == PRO_TK_NO_ERROR) names.push_back(BufferText(name));
    return PRO_TK_NO_ERROR;
  });
  return FreeSectionName(TickCount(), [&names](const std::wstring& candidate) {
    return std::ranges::any_of(names,
                               [&](const std::wstring& name) { return EqualsIgnoreCase(name, candidate); });
  });
}

CreoMcpOperationResult CreatePlanarXsec(ProSolid solid, int surface_id, const std::wstring& name) {
  ProName buffer;
  CopyCut(buffer, name);
  ProXsec section{};
  const ProError status = ProXsecPlanarWithoptionsCreate(solid, buffer, surface_id, 0, 0, kNoQuilt,
                                                         PRO_B_FALSE, PRO_B_FALSE, nullptr, &section);
  if (status == PRO_TK_NO_ERROR) return MakeSuccessResult();
  const ProError older_status = ProXsecPlanarCreate(solid, buffer, surface_id, 0, kNoQuilt, &section);
  if (older_status == PRO_TK_NO_ERROR) return MakeSuccessResult();
  return MakeFailureResult(Format(L"Failed to create cross-section '%s' on surface id=%d (status=%d/%d).",
                                  name, surface_id, status, older_status));
}

}  // namespace

CreoMcpOperationResult CreateSectionCrossSection(ProDrawing drawing, ProView parent, ProSolid solid,
                                                 const CuttingLine& line, std::wstring& name) {
  name.clear();
  if (solid == nullptr) return MakeFailureResult(L"Solid is null for section creation.");

  const std::wstring plane = CuttingPlane(line);
  const double sheet_offset = SheetOffset(line, ViewCentre(drawing, parent, {0, 0}));
  const double model_offset = ModelOffset(drawing, parent, solid, sheet_offset);
  LogDrawing(Format(L"section cut (%.3f,%.3f)->(%.3f,%.3f) plane=%s sheetOffset=%.3f modelOffset=%.3f",
                    line.x1, line.y1, line.x2, line.y2, plane, sheet_offset, model_offset));

  CutSurface surface;
  if (!FindBasePlane(solid, plane, surface))
    return MakeFailureResult(L"Could not find a FRONT/RIGHT/TOP datum plane to cut the section through.");
  MoveOffBasePlane(solid, model_offset, surface);

  const std::wstring section = NewSectionName(solid);
  if (auto created = CreatePlanarXsec(solid, surface.item.id, section); !created.success) return created;
  name = section;
  LogDrawing(Format(L"created xsec '%s' on surface id=%d (base plane '%s')", name, surface.item.id,
                    surface.base_plane));
  return MakeSuccessResult();
}

}  // namespace vek::drawing
