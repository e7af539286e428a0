// One constraint between the faces of two occurrences.
//
// Main thread only.
#pragma once

#include <ProGeomitem.h>

#include <optional>
#include <string>

#include "addin/ops/assembly/occurrences.h"

namespace vek::assembly {

struct OccurrenceFace {
  const OccurrenceInfo& occurrence;
  ProGeomitem face{};
};

struct ConstraintRequest {
  int creo_type = 0;
  std::optional<double> offset;  // model units, or degrees of an angle
};

// What a failure to make the constraint is called. The status is put behind `application`.
struct ConstraintFailures {
  const wchar_t* selection;
  const wchar_t* constraint;
  const wchar_t* content;
  const wchar_t* offset;
  const wchar_t* array;
  std::wstring application;
};

// Constrains the occurrence of `moved`, which is the one to move, against that of `reference`. The host is
// given the constraint at the last step: until then nothing has changed.
CreoMcpOperationResult ConstrainOccurrence(ProMdl assembly, OccurrenceFace& moved, OccurrenceFace& reference,
                                           const ConstraintRequest& request,
                                           const ConstraintFailures& failures);

}  // namespace vek::assembly
