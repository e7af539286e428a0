// Which components of an assembly share space.
#pragma once

#include <ProMdl.h>

#include <string>
#include <vector>

#include "addin/server/operation_result.h"

namespace vek::exchange {

// Two occurrences of the first level that overlap, or hold parts that do.
struct InterferenceRecord {
  std::wstring occ1;
  std::wstring occ2;
  double volume_cm3 = 0;
};

// Fills the list. A success without any may carry the message that tells why there are none.
CreoMcpOperationResult CheckInterference(ProMdl assembly, std::vector<InterferenceRecord>& list);

}  // namespace vek::exchange
