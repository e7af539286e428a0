// Collections of curves and of surfaces.
#include <ProCollect.h>

#include <algorithm>
#include <optional>

#include "bench/host/calls/array.h"
#include "bench/host/calls/collection_handles.h"
#include "bench/host/calls/reference.h"
#include "bench/host/calls/selection.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

constexpr int kOneCurve = 101;
constexpr int kOneCompositeCurve = 103;
constexpr int kCurvesOfFeature = 108;
constexpr int kEndOfChain = 114;
constexpr int kSingleSurfaces = 1;
constexpr int kWholeSolid = 4;
constexpr int kOneSurface = 1;
constexpr auto kCompositeCurve = static_cast<ProType>(180);

bool IsCurveInstruction(int type) {
  return type == kOneCurve || type == kOneCompositeCurve || type == kCurvesOfFeature || type == kEndOfChain;
}

// Whether an instruction of that type works on such an item.
bool Takes(int type, ProType item) {
  switch (type) {
    case kOneCurve:
      return item == PRO_EDGE || item == PRO_CURVE;
    case kOneCompositeCurve:
      return item == kCompositeCurve;
    case kCurvesOfFeature:
      return item == PRO_FEATURE;
    default:
      return false;
  }
}

// What a caller's reference refers to, where that is there.
ProError ReadReference(ProReference reference, ItemReference& item) {
  const ReferredItem referred = ItemOf(reference);
  if (referred.status != PRO_TK_NO_ERROR) return referred.status;
  if (!referred.item) return PRO_TK_BAD_INPUTS;
  if (!ItemExists(*referred.item)) return PRO_TK_E_NOT_FOUND;
  item = {referred.item->type, referred.item->id, referred.item->owner};
  return PRO_TK_NO_ERROR;
}

ProError AddToCollection(ProCollection collection, void* instruction, bool of_surfaces) {
  if (!collection || !instruction) return PRO_TK_BAD_INPUTS;
  OpenCollection* open = UseCollection(collection);
  const OpenInstruction* added = UseInstruction(instruction, of_surfaces);
  if (!open || !added) return PRO_TK_INVALID_PTR;
  if (open->of_surfaces != of_surfaces) return PRO_TK_INVALID_TYPE;
  if (added->in_collection) return PRO_TK_E_FOUND;
  const int type = added->content.type;
  const bool needs_none = type == (of_surfaces ? kWholeSolid : kEndOfChain);
  if (added->content.items.empty() && !needs_none) return PRO_TK_BAD_INPUTS;
  AddInstruction(*open, instruction);
  return PRO_TK_NO_ERROR;
}

void AddOnce(std::vector<ProModelitem>& items, const ProModelitem& item) {
  const bool known = std::ranges::any_of(items, [&](const ProModelitem& each) {
    return each.type == item.type && each.id == item.id && each.owner == item.owner;
  });
  if (!known && ItemExists(item)) items.push_back(item);
}

// The curves and edges that come of a collection's instructions, each once.
std::vector<ProModelitem> CarryOut(const Collection& collection) {
  std::vector<ProModelitem> items;
  for (const CollectionInstruction& instruction : collection.instructions) {
    for (const ItemReference& reference : instruction.items) {
      const ProModelitem item{reference.type, reference.id, reference.owner};
      if (instruction.type != kCurvesOfFeature) {
        AddOnce(items, item);
        continue;
      }
      const Feature* feature = FindFeature(&item);
      if (!feature) continue;
      for (const GeometryItem& each : feature->items)
        if (each.type == PRO_CURVE) AddOnce(items, {PRO_CURVE, each.id, reference.owner});
    }
  }
  return items;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProCrvcollectionAlloc(ProCollection* collection) {
  HOST_CALL() {
    if (!collection) return PRO_TK_BAD_INPUTS;
    *collection = NewCollection(false);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSrfcollectionAlloc(ProCollection* collection) {
  HOST_CALL() {
    if (!collection) return PRO_TK_BAD_INPUTS;
    *collection = NewCollection(true);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProCollectionFree(ProCollection* collection) {
  HOST_CALL_THAT_NEVER_FAILS(collection ? *collection : nullptr) {
    if (!collection || !*collection) return PRO_TK_BAD_INPUTS;
    if (!FreeCollection(*collection)) return PRO_TK_INVALID_PTR;
    *collection = nullptr;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProCrvcollinstrAlloc(ProCrvcollinstrType type, ProCrvcollinstr* instruction) {
  HOST_CALL(type) {
    if (!instruction || !IsCurveInstruction(type)) return PRO_TK_BAD_INPUTS;
    *instruction = static_cast<ProCrvcollinstr>(NewInstruction(false, type, true));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProCrvcollinstrFree(ProCrvcollinstr instruction) {
  HOST_CALL_THAT_NEVER_FAILS(instruction) {
    if (!instruction) return PRO_TK_BAD_INPUTS;
    return FreeInstruction(instruction, false) ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
  };
}

ProError ProCrvcollinstrReferenceAdd(ProCrvcollinstr instruction, ProReference reference) {
  HOST_CALL(instruction, reference) {
    ItemReference item;
    if (!instruction) return PRO_TK_BAD_INPUTS;
    OpenInstruction* open = UseInstruction(instruction, false);
    if (!open) return PRO_TK_INVALID_PTR;
    if (const ProError status = ReadReference(reference, item)) return status;
    if (!Takes(open->content.type, item.type)) return PRO_TK_INVALID_TYPE;
    if (!open->content.items.empty()) return PRO_TK_E_FOUND;
    open->content.items.push_back(item);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProCrvcollectionInstructionAdd(ProCollection collection, ProCrvcollinstr instruction) {
  HOST_CALL(collection, instruction) {
    return AddToCollection(collection, instruction, false);
  };
}

ProError ProCrvcollectionRegenerate(ProCollection collection, ProSelection** selections, int* count) {
  HOST_CALL(collection) {
    if (!collection || !selections || !count) return PRO_TK_BAD_INPUTS;
    const OpenCollection* open = UseCollection(collection);
    if (!open) return PRO_TK_INVALID_PTR;
    if (open->of_surfaces) return PRO_TK_INVALID_TYPE;
    const auto items = CarryOut(ContentOf(*open));
    if (items.empty()) return PRO_TK_E_NOT_FOUND;
    std::vector<ProSelection> found;
    for (const ProModelitem& item : items) found.push_back(NewSelection(item));
    *selections = NewArray(found);
    *count = static_cast<int>(found.size());
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSrfcollinstrAlloc(ProSrfcollinstrType type, ProBoolean include, ProSrfcollinstr* instruction) {
  HOST_CALL(type, include) {
    if (!instruction) return PRO_TK_BAD_INPUTS;
    if (static_cast<int>(type) != kSingleSurfaces && static_cast<int>(type) != kWholeSolid)
      return PRO_TK_BAD_INPUTS;
    *instruction = static_cast<ProSrfcollinstr>(NewInstruction(true, type, include != PRO_B_FALSE));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSrfcollinstrFree(ProSrfcollinstr instruction) {
  HOST_CALL_THAT_NEVER_FAILS(instruction) {
    if (!instruction) return PRO_TK_BAD_INPUTS;
    return FreeInstruction(instruction, true) ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
  };
}

ProError ProSrfcollinstrIncludeSet(ProSrfcollinstr instruction, ProBoolean include) {
  HOST_CALL(instruction, include) {
    if (!instruction) return PRO_TK_BAD_INPUTS;
    OpenInstruction* open = UseInstruction(instruction, true);
    if (!open) return PRO_TK_INVALID_PTR;
    open->content.include = include != PRO_B_FALSE;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSrfcollrefAlloc(ProSrfcollrefType type, ProReference reference,
                            ProSrfcollref* surface_reference) {
  HOST_CALL(type, reference) {
    ItemReference item;
    if (!surface_reference || static_cast<int>(type) != kOneSurface) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ReadReference(reference, item)) return status;
    if (item.type != PRO_SURFACE) return PRO_TK_INVALID_TYPE;
    *surface_reference = NewSurfaceReference(item);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSrfcollrefFree(ProSrfcollref surface_reference) {
  HOST_CALL_THAT_NEVER_FAILS(surface_reference) {
    if (!surface_reference) return PRO_TK_BAD_INPUTS;
    return FreeSurfaceReference(surface_reference) ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
  };
}

ProError ProSrfcollinstrReferenceAdd(ProSrfcollinstr instruction, ProSrfcollref surface_reference) {
  HOST_CALL(instruction, surface_reference) {
    if (!instruction || !surface_reference) return PRO_TK_BAD_INPUTS;
    OpenInstruction* open = UseInstruction(instruction, true);
    if (!open || !UseSurfaceReference(surface_reference)) return PRO_TK_INVALID_PTR;
    if (open->content.type != kSingleSurfaces) return PRO_TK_INVALID_TYPE;
    AddSurfaceReference(*open, surface_reference);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSrfcollectionInstructionAdd(ProCollection collection, ProSrfcollinstr instruction) {
  HOST_CALL(collection, instruction) {
    return AddToCollection(collection, instruction, true);
  };
}
