#include "bench/host/calls/collection_handles.h"

#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"

namespace bench {
namespace {

OpaqueHandles<ProCollection, OpenCollection>& Collections() {
  static OpaqueHandles<ProCollection, OpenCollection> collections;
  return collections;
}

OpaqueHandles<void*, OpenInstruction>& Instructions() {
  static OpaqueHandles<void*, OpenInstruction> instructions;
  return instructions;
}

OpaqueHandles<ProSrfcollref, ItemReference>& SurfaceReferences() {
  static OpaqueHandles<ProSrfcollref, ItemReference> references;
  return references;
}

HandleKind KindOf(bool of_surfaces) {
  return of_surfaces ? HandleKind::kSurfaceInstruction : HandleKind::kCurveInstruction;
}

Ledger& TheLedger() {
  return TheHost().ledger;
}

}  // namespace

ProCollection NewCollection(bool of_surfaces) {
  const ProCollection collection = Collections().Enter({.of_surfaces = of_surfaces, .instructions = {}});
  TheLedger().Give(collection, HandleKind::kCollection, CurrentCall());
  return collection;
}

void* NewInstruction(bool of_surfaces, int type, bool include) {
  OpenInstruction open;
  open.content.type = type;
  open.content.include = include;
  open.of_surfaces = of_surfaces;
  void* instruction = Instructions().Enter(std::move(open));
  TheLedger().Give(instruction, KindOf(of_surfaces), CurrentCall());
  return instruction;
}

ProSrfcollref NewSurfaceReference(const ItemReference& item) {
  const ProSrfcollref reference = SurfaceReferences().Enter(item);
  TheLedger().Give(reference, HandleKind::kSurfaceReference, CurrentCall());
  return reference;
}

OpenCollection* UseCollection(ProCollection collection) {
  if (OpenCollection* open = Collections().Find(collection)) return open;
  TheLedger().Check(collection, HandleKind::kCollection, CurrentCall());
  return nullptr;
}

OpenInstruction* UseInstruction(void* instruction, bool of_surfaces) {
  OpenInstruction* open = Instructions().Find(instruction);
  if (open && open->of_surfaces == of_surfaces) return open;
  TheLedger().Check(instruction, KindOf(of_surfaces), CurrentCall());
  return nullptr;
}

const ItemReference* UseSurfaceReference(ProSrfcollref reference) {
  if (!TheLedger().Check(reference, HandleKind::kSurfaceReference, CurrentCall())) return nullptr;
  return SurfaceReferences().Find(reference);
}

void AddInstruction(OpenCollection& collection, void* instruction) {
  OpenInstruction& open = *Instructions().Find(instruction);
  open.in_collection = true;
  collection.instructions.push_back(instruction);
  TheLedger().PassOn(instruction, KindOf(open.of_surfaces), CurrentCall());
}

void AddSurfaceReference(OpenInstruction& instruction, ProSrfcollref reference) {
  instruction.content.items.push_back(*SurfaceReferences().Find(reference));
  SurfaceReferences().Remove(reference);
  TheLedger().PassOn(reference, HandleKind::kSurfaceReference, CurrentCall());
}

Collection ContentOf(const OpenCollection& collection) {
  Collection content{.of_surfaces = collection.of_surfaces, .instructions = {}};
  for (void* instruction : collection.instructions)
    content.instructions.push_back(Instructions().Find(instruction)->content);
  return content;
}

void GiveToTree(ProCollection collection) {
  Collections().Find(collection)->of_tree = true;
  TheLedger().PassOn(collection, HandleKind::kCollection, CurrentCall());
}

bool FreeCollection(ProCollection collection) {
  const OpenCollection* open = Collections().Find(collection);
  const bool of_tree = open && open->of_tree;
  if (!of_tree && !TheLedger().TakeBack(collection, HandleKind::kCollection, CurrentCall())) return false;
  for (void* instruction : open->instructions) Instructions().Remove(instruction);
  Collections().Remove(collection);
  return true;
}

bool FreeInstruction(void* instruction, bool of_surfaces) {
  if (!TheLedger().TakeBack(instruction, KindOf(of_surfaces), CurrentCall())) return false;
  Instructions().Remove(instruction);
  return true;
}

bool FreeSurfaceReference(ProSrfcollref reference) {
  if (!TheLedger().TakeBack(reference, HandleKind::kSurfaceReference, CurrentCall())) return false;
  SurfaceReferences().Remove(reference);
  return true;
}

}  // namespace bench
