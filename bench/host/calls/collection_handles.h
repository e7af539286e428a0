// Handles on collections and on what they are put together from.
//
// Instructions and surface references are their callers' until they are added to something; then they belong
// to that, and go with it. A collection that was set into an element belongs to the element's tree: its
// callers may still free their handle on it, but need not.
#pragma once

#include <ProCollect.h>

#include <vector>

#include "bench/host/instruments/ledger.h"
#include "bench/host/model/element_tree.h"

namespace bench {

struct OpenInstruction {
  CollectionInstruction content;
  bool of_surfaces = false;
  bool in_collection = false;
};

struct OpenCollection {
  bool of_surfaces = false;
  bool of_tree = false;
  std::vector<void*> instructions;  // in their order
};

// New ones in the ledger, in the name of the call that is being made. Instructions of curves and of surfaces
// have handles of different types; here they are plain addresses.
ProCollection NewCollection(bool of_surfaces);
void* NewInstruction(bool of_surfaces, int type, bool include);
ProSrfcollref NewSurfaceReference(const ItemReference& item);

// What stands behind a handle; null, and a violation, when it is no live one.
OpenCollection* UseCollection(ProCollection collection);
OpenInstruction* UseInstruction(void* instruction, bool of_surfaces);
const ItemReference* UseSurfaceReference(ProSrfcollref reference);

// Both are live, and the instruction is in no collection yet.
void AddInstruction(OpenCollection& collection, void* instruction);
// Both are live; the handle on the reference ends.
void AddSurfaceReference(OpenInstruction& instruction, ProSrfcollref reference);

// The collection as an element keeps it.
Collection ContentOf(const OpenCollection& collection);
void GiveToTree(ProCollection collection);

// False, and a violation, for what its caller can't free.
bool FreeCollection(ProCollection collection);
bool FreeInstruction(void* instruction, bool of_surfaces);
bool FreeSurfaceReference(ProSrfcollref reference);

}  // namespace bench
