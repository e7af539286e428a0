// Constraints and dimensions of sections, solved by the kernel.
#pragma once

#include <optional>
#include <string>

#include "bench/host/model/section_data.h"

namespace bench {

// What came of a section's constraints and dimensions.
struct SolvedSection {
  std::optional<SectionData> section;  // with its entities moved; nothing when they can't all hold
  std::string reason;                  // why not
  bool no_kernel = false;
};

// Solves a section as it is. The dimension of the id `measured`, if there is one, doesn't move anything: it
// takes the value that it has.
SolvedSection SolveSection(const SectionData& section, std::optional<int> measured = std::nullopt);

}  // namespace bench
