// What the bench's process and its kernel hold at one moment.
#pragma once

#include <string>
#include <vector>

#include "tests/endtoend/bench_process.h"

namespace vek::soak {

struct Figures {
  long handles = 0;
  long threads = 0;
  long memory_kb = 0;  // resident
  long allocated_kb = 0;
  long blocks = 0;
  long sections = 0;  // private sections of sketches, which the add-in keeps on purpose
  long kernel_kb = 0;
  long kernel_threads = 0;
  long kernel_files = 0;
  std::vector<std::string> complaints;  // whatever else the ledger tells
};

// Waits until the server has let go of its last connection, and asks.
Figures Measure(endtoend::BenchProcess& bench);

}  // namespace vek::soak
