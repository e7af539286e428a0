// References to items, as element trees and collections hold them.
#pragma once

#include <ProObjects.h>

#include <vector>

#include "addin/host/owned.h"

namespace vek {

// What a tree or a collection refers to lives beside it and is freed after it.
using OwnedReferences = std::vector<OwnedReference>;

// A new reference to `item`: ProReferenceAlloc, then ProReferenceSet. `reference` is empty on failure.
ProError MakeReference(const ProModelitem& item, OwnedReference& reference);

}  // namespace vek
