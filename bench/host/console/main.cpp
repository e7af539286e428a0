// The host's process. All of the host lives in creobench.dll, so that the add-in, which is linked against it,
// meets the same one.
#include "bench/host/console/program.h"

int wmain(int argc, wchar_t** argv) {
  return BenchMain(argc, argv);
}
