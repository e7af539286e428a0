#include "bench/host/calls/selection.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "bench/host/calls/array.h"
#include "bench/host/calls/component_path.h"
#include "bench/host/calls/reference.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

OpaqueHandles<ProSelection, ProModelitem>& Selections() {
  static OpaqueHandles<ProSelection, ProModelitem> selections;
  return selections;
}

OpaqueHandles<ProSelection, SelectedPart>& Parts() {
  static OpaqueHandles<ProSelection, SelectedPart> parts;
  return parts;
}

std::unordered_map<ProSelection, ProAsmcomppath>& ComponentPaths() {
  static std::unordered_map<ProSelection, ProAsmcomppath> paths;
  return paths;
}

std::unordered_map<ProSelection, SelectionPlace>& Places() {
  static std::unordered_map<ProSelection, SelectionPlace> places;
  return places;
}

template <typename Handles, typename Selected>
ProSelection Enter(Handles& handles, const Selected& selected) {
  const ProSelection selection = handles.Enter(selected);
  TheHost().ledger.Give(selection, HandleKind::kSelection, CurrentCall());
  return selection;
}

bool IsLive(ProSelection selection) {
  return selection && TheHost().ledger.Check(selection, HandleKind::kSelection, CurrentCall());
}

}  // namespace

bool FreeSelection(ProSelection selection) {
  if (!TheHost().ledger.TakeBack(selection, HandleKind::kSelection, CurrentCall())) return false;
  Selections().Remove(selection);
  Parts().Remove(selection);
  ComponentPaths().erase(selection);
  Places().erase(selection);
  return true;
}

ProSelection NewSelection(const ProModelitem& item) {
  return Enter(Selections(), item);
}

ProSelection NewSelection(const SelectedPart& part) {
  return Enter(Parts(), part);
}

ProSelection NewSelection(const ProModelitem& item, const ProAsmcomppath& path) {
  const ProSelection selection = NewSelection(item);
  if (path.table_num > 0) ComponentPaths()[selection] = path;
  return selection;
}

ProSelection NewSelection(const ProModelitem& item, const ProAsmcomppath& path,
                          const std::array<double, 2>& parameters) {
  const ProSelection selection = NewSelection(item, path);
  Places()[selection].parameters = parameters;
  return selection;
}

ProAsmcomppath PathSelected(ProSelection selection) {
  if (const auto path = ComponentPaths().find(selection); path != ComponentPaths().end()) return path->second;
  const ProModelitem* item = Selections().Find(selection);
  return {item ? item->owner : nullptr, {}, 0};
}

const SelectionPlace& PlaceSelected(ProSelection selection) {
  static const SelectionPlace nowhere;
  const auto place = Places().find(selection);
  return place == Places().end() ? nowhere : place->second;
}

const ProModelitem* SelectedItem(ProSelection selection) {
  return IsLive(selection) ? Selections().Find(selection) : nullptr;
}

const SelectedPart* PartSelected(ProSelection selection) {
  return IsLive(selection) ? Parts().Find(selection) : nullptr;
}

}  // namespace bench

using namespace bench;

ProError ProSelectionAlloc(ProAsmcomppath* path, ProModelitem* item, ProSelection* selection) {
  HOST_CALL(path, item) {
    if (!item || !selection) return PRO_TK_BAD_INPUTS;
    if (!ItemExists(*item)) return PRO_TK_E_NOT_FOUND;
    if (!path) {
      *selection = NewSelection(*item);
      return PRO_TK_NO_ERROR;
    }
    PathEnd end;
    if (const ProError status = EndOf(*path, end)) return status;
    if (end.model != item->owner) return PRO_TK_BAD_INPUTS;
    *selection = NewSelection(*item, *path);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionFree(ProSelection* selection) {
  HOST_CALL_THAT_NEVER_FAILS(selection ? *selection : nullptr) {
    if (!selection || !*selection) return PRO_TK_BAD_INPUTS;
    if (!FreeSelection(*selection)) return PRO_TK_INVALID_PTR;
    *selection = nullptr;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionarrayFree(ProSelection* selections) {
  HOST_CALL_THAT_NEVER_FAILS(selections) {
    if (!selections) return PRO_TK_BAD_INPUTS;
    const auto all = ArrayObjects(selections);
    if (!all) return PRO_TK_INVALID_PTR;
    // A selection in it that was freed before is a mistake, but no reason to keep the others.
    bool right = true;
    for (const ProSelection selection : *all) right &= FreeSelection(selection);
    FreeArray(selections);
    return right ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
  };
}

ProError ProSelectionModelitemGet(ProSelection selection, ProModelitem* item) {
  HOST_CALL(selection) {
    if (!selection || !item) return PRO_TK_BAD_INPUTS;
    const ProModelitem* selected = SelectedItem(selection);
    if (!selected) return PRO_TK_INVALID_PTR;
    *item = *selected;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionAsmcomppathGet(ProSelection selection, ProAsmcomppath* path) {
  HOST_CALL(selection) {
    if (!selection || !path) return PRO_TK_BAD_INPUTS;
    if (!SelectedItem(selection)) return PRO_TK_INVALID_PTR;
    *path = PathSelected(selection);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionCopy(ProSelection from, ProSelection* to) {
  HOST_CALL(from) {
    if (!from || !to) return PRO_TK_BAD_INPUTS;
    const ProModelitem* item = SelectedItem(from);
    if (!item) return PRO_TK_INVALID_PTR;
    *to = NewSelection(ProModelitem(*item), PathSelected(from));
    if (const SelectionPlace place = PlaceSelected(from); place.view || place.point || place.parameters)
      Places()[*to] = place;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionToReference(ProSelection selection, ProReference* reference) {
  HOST_CALL(selection) {
    if (!selection || !reference) return PRO_TK_BAD_INPUTS;
    const ProModelitem* item = SelectedItem(selection);
    if (!item) return PRO_TK_INVALID_PTR;
    if (!ItemExists(*item)) return PRO_TK_E_NOT_FOUND;
    *reference = NewReference(*item);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionViewSet(ProView view, ProSelection* selection) {
  HOST_CALL(view, selection ? *selection : nullptr) {
    if (!view || !selection || !*selection) return PRO_TK_BAD_INPUTS;
    if (!SelectedItem(*selection) || !DrawingWithView(view)) return PRO_TK_INVALID_PTR;
    Places()[*selection].view = view;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionPoint3dSet(ProPoint3d point, ProSelection* selection) {
  HOST_CALL(selection ? *selection : nullptr) {
    if (!point || !selection || !*selection) return PRO_TK_BAD_INPUTS;
    if (!SelectedItem(*selection)) return PRO_TK_INVALID_PTR;
    for (int i = 0; i < 3; ++i)
      if (!std::isfinite(point[i])) return PRO_TK_BAD_INPUTS;
    Places()[*selection].point = Vector3{point[0], point[1], point[2]};
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelectionUvParamGet(ProSelection selection, ProUvParam uv) {
  HOST_CALL(selection) {
    if (!selection || !uv) return PRO_TK_BAD_INPUTS;
    if (!SelectedItem(selection)) return PRO_TK_INVALID_PTR;
    const auto& parameters = PlaceSelected(selection).parameters;
    if (!parameters) return PRO_TK_E_NOT_FOUND;
    std::ranges::copy(*parameters, uv);
    return PRO_TK_NO_ERROR;
  };
}
