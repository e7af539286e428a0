#include "addin/ops/assembly/geometry_selection.h"

#include "addin/ops/assembly/constraint_words.h"
#include "addin/ops/assembly/poses.h"
#include "addin/ops/feature/edge_selection.h"
#include "addin/ops/feature/selector_syntax.h"
#include "addin/text/format.h"

namespace vek::assembly {
namespace {

// Beyond any coordinate of a model.
constexpr double kFarOut = 1e30;

bool IsOfType(ProSurface surface, int wanted) {
  ProSrftype type{};
  return ProSurfaceTypeGet(surface, &type) == PRO_TK_NO_ERROR && static_cast<int>(type) == wanted;
}

bool ItemOf(ProMdl model, ProSurface surface, ProGeomitem& face) {
  return ProSurfaceToGeomitem(static_cast<ProSolid>(model), surface, &face) == PRO_TK_NO_ERROR;
}

}  // namespace

bool FindFaceOfKind(ProMdl model, int surface_type, ProGeomitem& face) {
  if (model == nullptr) return false;
  ProSurface fallback = nullptr;
  for (const ProSurface surface : feature::SolidSurfaces(model)) {
    ProSrftype read{};
    if (ProSurfaceTypeGet(surface, &read) != PRO_TK_NO_ERROR) continue;
    const int type = read;
    if (type == surface_type && ItemOf(model, surface, face)) return true;
    if (fallback == nullptr && (type == kPlaneSurface || type == kCylinderSurface)) fallback = surface;
  }
  return fallback != nullptr && ItemOf(model, fallback, face);
}

bool FaceBySelector(ProMdl model, std::wstring_view selector, ProGeomitem& face) {
  const auto read = feature::ReadFaceSelector(selector);
  if (!read || model == nullptr) return false;
  const bool largest = read->kind == feature::SelectorKind::kLargest;
  ProVector direction = {0, 0, 0};
  direction[read->axis] = 1;

  ProSurface taken = nullptr;
  double best = largest ? -kFarOut : kFarOut;
  for (const ProSurface surface : feature::SolidSurfaces(model)) {
    if (!IsOfType(surface, kPlaneSurface)) continue;
    ProPoint3d low{}, high{};
    if (ProSurfaceExtremesEval(surface, direction, low, high) != PRO_TK_NO_ERROR) continue;
    const double value = largest ? high[read->axis] : low[read->axis];
    if (!(largest ? value > best : value < best)) continue;
    best = value;
    taken = surface;
  }
  return taken != nullptr && ItemOf(model, taken, face);
}

CreoMcpOperationResult BuildGeometrySelection(ProMdl assembly, const OccurrenceInfo* occurrence,
                                              ProGeomitem* geometry, OwnedSelection& selection) {
  if (geometry == nullptr) return MakeFailureResult(L"Missing geometry item for selection.");
  ProAsmcomppath path{};
  if (occurrence != nullptr) {
    if (auto built = ComponentPathFor(assembly, *occurrence, path); !built.success) return built;
    if (ProSelectionAlloc(&path, geometry, selection.out()) != PRO_TK_NO_ERROR || !selection)
      return MakeFailureResult(
          Format(L"Failed to allocate selection for occurrence '%s'.", occurrence->name));
    return MakeSuccessResult();
  }
  path.owner = assembly;
  if (ProSelectionAlloc(&path, geometry, selection.out()) != PRO_TK_NO_ERROR || !selection)
    return MakeFailureResult(L"Failed to allocate assembly geometry selection.");
  return MakeSuccessResult();
}

}  // namespace vek::assembly
