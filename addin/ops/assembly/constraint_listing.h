// The listing of an assembly's constraints.
#pragma once

#include <string>

#include "addin/server/provider.h"

namespace vek::assembly {

// One row of the listing.
struct ConstraintInfo {
  std::wstring name;  // the owner's name, the type word and the place among the owner's constraints, from 1
  std::wstring type;
  bool suppressed = false;
  std::wstring occ1;  // the occurrence that bears the constraint
  std::wstring occ2;  // the one that it refers to; empty when there is none or it can't be found
};

void RegisterConstraintListingOperation(CreoMcpProvider& provider);

}  // namespace vek::assembly
