// Constraints of components.
#include <ProAsmcomp.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "bench/host/calls/array.h"
#include "bench/host/calls/component_path.h"
#include "bench/host/calls/component_record.h"
#include "bench/host/calls/selection.h"
#include "bench/host/features/component_placement.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/instruments/opaque_handles.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

struct SelectedReference {
  ProModelitem item;
  ProAsmcomppath path;
  ProDatumside side;
};

struct OpenConstraint {
  int type = PRO_ASM_UNDEFINED;
  std::optional<SelectedReference> on_assembly;
  std::optional<SelectedReference> on_component;
  std::optional<double> offset;
};

OpaqueHandles<ProAsmcompconstraint, OpenConstraint>& Constraints() {
  static OpaqueHandles<ProAsmcompconstraint, OpenConstraint> constraints;
  return constraints;
}

ProAsmcompconstraint Enter(OpenConstraint constraint) {
  const ProAsmcompconstraint handle = Constraints().Enter(std::move(constraint));
  TheHost().ledger.Give(handle, HandleKind::kConstraint, CurrentCall());
  return handle;
}

// The constraint behind a handle; null, and a violation, when it is no live one.
OpenConstraint* Use(ProAsmcompconstraint handle) {
  if (!TheHost().ledger.Check(handle, HandleKind::kConstraint, CurrentCall())) return nullptr;
  return Constraints().Find(handle);
}

bool Free(ProAsmcompconstraint handle) {
  if (!TheHost().ledger.TakeBack(handle, HandleKind::kConstraint, CurrentCall())) return false;
  Constraints().Remove(handle);
  return true;
}

template <typename Change>
ProError ChangeConstraint(ProAsmcompconstraint handle, Change&& change) {
  if (!handle) return PRO_TK_BAD_INPUTS;
  OpenConstraint* constraint = Use(handle);
  if (!constraint) return PRO_TK_INVALID_PTR;
  change(*constraint);
  return PRO_TK_NO_ERROR;
}

ProError SetReference(ProAsmcompconstraint handle, ProSelection selection, ProDatumside side,
                      std::optional<SelectedReference> OpenConstraint::*place) {
  if (!selection) return PRO_TK_BAD_INPUTS;
  const ProModelitem* item = SelectedItem(selection);
  if (!item) return PRO_TK_INVALID_PTR;
  return ChangeConstraint(handle, [&](OpenConstraint& constraint) {
    constraint.*place = SelectedReference{*item, PathSelected(selection), side};
  });
}

PlacedItem Placed(const SelectedReference& reference) {
  return {IdsOf(reference.path), reference.item.type, reference.item.id};
}

// A constraint as the component keeps it; nothing when a reference begins in another model.
std::optional<ComponentConstraint> Kept(const OpenConstraint& constraint, const FoundComponent& found) {
  ComponentConstraint kept{
      .type = constraint.type, .on_assembly{}, .on_component{}, .offset = constraint.offset};
  if (const auto& reference = constraint.on_assembly) {
    if (reference->path.owner != found.assembly) return std::nullopt;
    kept.on_assembly = Placed(*reference);
  }
  if (const auto& reference = constraint.on_component) {
    if (reference->path.owner != PlacedModel(*found.feature->component)) return std::nullopt;
    kept.on_component = Placed(*reference);
  }
  return kept;
}

std::optional<SelectedReference> Given(Model* start, const std::optional<PlacedItem>& item) {
  const auto end = start && item ? Follow(*start, item->path) : std::nullopt;
  if (!end || !end->model) return std::nullopt;
  ProAsmcomppath path{Handle(*start), {}, static_cast<int>(item->path.size())};
  std::ranges::copy(item->path, path.comp_id_table);
  return SelectedReference{{item->type, item->id, Handle(*end->model)}, path, PRO_DATUM_SIDE_NONE};
}

OpenConstraint Opened(const ComponentConstraint& constraint, const FoundComponent& found) {
  return {constraint.type, Given(found.assembly, constraint.on_assembly),
          Given(PlacedModel(*found.feature->component), constraint.on_component), constraint.offset};
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProAsmcompconstraintAlloc(ProAsmcompconstraint* constraint) {
  HOST_CALL() {
    if (!constraint) return PRO_TK_BAD_INPUTS;
    *constraint = Enter({});
    return PRO_TK_NO_ERROR;
  };
}

ProError ProAsmcompconstraintFree(ProAsmcompconstraint constraint) {
  HOST_CALL_THAT_NEVER_FAILS(constraint) {
    if (!constraint) return PRO_TK_BAD_INPUTS;
    return Free(constraint) ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
  };
}

ProError ProAsmcompconstraintArrayFree(ProAsmcompconstraint* constraints) {
  HOST_CALL_THAT_NEVER_FAILS(constraints) {
    if (!constraints) return PRO_TK_BAD_INPUTS;
    const auto all = ArrayObjects(constraints);
    if (!all) return PRO_TK_INVALID_PTR;
    // A constraint in it that was freed before is a mistake, but no reason to keep the others.
    bool right = true;
    for (const ProAsmcompconstraint constraint : *all) right &= Free(constraint);
    FreeArray(constraints);
    return right ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
  };
}

ProError ProAsmcompconstraintTypeGet(ProAsmcompconstraint constraint, ProAsmcompConstrType* type) {
  HOST_CALL(constraint) {
    if (!type) return PRO_TK_BAD_INPUTS;
    return ChangeConstraint(constraint, [&](const OpenConstraint& open) {
      *type = static_cast<ProAsmcompConstrType>(open.type);
    });
  };
}

ProError ProAsmcompconstraintTypeSet(ProAsmcompconstraint constraint, ProAsmcompConstrType type) {
  HOST_CALL(constraint, static_cast<int>(type)) {
    return ChangeConstraint(constraint, [&](OpenConstraint& open) { open.type = type; });
  };
}

ProError ProAsmcompconstraintAsmreferenceGet(ProAsmcompconstraint constraint, ProSelection* reference,
                                             ProDatumside* side) {
  HOST_CALL(constraint) {
    if (!constraint || !reference || !side) return PRO_TK_BAD_INPUTS;
    const OpenConstraint* open = Use(constraint);
    if (!open) return PRO_TK_INVALID_PTR;
    if (!open->on_assembly || !ItemExists(open->on_assembly->item)) return PRO_TK_E_NOT_FOUND;
    *reference = NewSelection(open->on_assembly->item, open->on_assembly->path);
    *side = open->on_assembly->side;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProAsmcompconstraintAsmreferenceSet(ProAsmcompconstraint constraint, ProSelection reference,
                                             ProDatumside side) {
  HOST_CALL(constraint, reference, static_cast<int>(side)) {
    return SetReference(constraint, reference, side, &OpenConstraint::on_assembly);
  };
}

ProError ProAsmcompconstraintCompreferenceSet(ProAsmcompconstraint constraint, ProSelection reference,
                                              ProDatumside side) {
  HOST_CALL(constraint, reference, static_cast<int>(side)) {
    return SetReference(constraint, reference, side, &OpenConstraint::on_component);
  };
}

ProError ProAsmcompconstraintOffsetSet(ProAsmcompconstraint constraint, double offset) {
  HOST_CALL(constraint, offset) {
    if (!std::isfinite(offset)) return PRO_TK_BAD_INPUTS;
    return ChangeConstraint(constraint, [&](OpenConstraint& open) { open.offset = offset; });
  };
}

ProError ProAsmcompConstraintsGet(ProAsmcomp* component, ProAsmcompconstraint** constraints) {
  HOST_CALL(component) {
    FoundComponent found;
    if (!constraints) return PRO_TK_BAD_INPUTS;
    *constraints = nullptr;
    if (const ProError status = Resolve(component, found)) return status;
    std::vector<ProAsmcompconstraint> handles;
    for (const ComponentConstraint& each : found.feature->component->constraints)
      handles.push_back(Enter(Opened(each, found)));
    if (handles.empty()) return PRO_TK_E_NOT_FOUND;
    *constraints = NewArray(handles);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProAsmcompConstraintsSet(ProAsmcomppath* path, ProAsmcomp* component,
                                  ProAsmcompconstraint* constraints) {
  HOST_CALL(path, component, constraints) {
    FoundComponent found;
    if (const ProError status = Resolve(component, found)) return status;
    if (const ProError status = CheckPath(path, found)) return status;
    const auto handles = ArrayObjects(constraints);
    if (!handles || handles->empty()) return PRO_TK_BAD_INPUTS;
    std::vector<ComponentConstraint> set;
    for (const ProAsmcompconstraint handle : *handles) {
      const OpenConstraint* open = handle ? Use(handle) : nullptr;
      if (!open) return PRO_TK_INVALID_PTR;
      auto kept = Kept(*open, found);
      if (!kept) return PRO_TK_BAD_INPUTS;
      set.push_back(std::move(*kept));
    }
    return SetConstraints(*found.assembly, *found.feature, std::move(set));
  };
}

ProError ProAsmcompAllConstrRemove(ProAsmcomp* component) {
  HOST_CALL(component) {
    FoundComponent found;
    if (const ProError status = Resolve(component, found)) return status;
    return SetConstraints(*found.assembly, *found.feature, {});
  };
}
