// The programs of the sweep: `./test` makes some of their runs, and all of them with VEK_SWEEP=all. `./run
// sweep` sums up what they print.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>

#include "tests/faults/swept_run.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", L"" VEK_INSTALLATION);
  // Temporary files of its own: what stays behind is this program's.
  const std::filesystem::path shared = std::filesystem::temp_directory_path();
  const auto own = shared / ("vek_faults_" + std::to_string(::GetCurrentProcessId()));
  std::filesystem::create_directories(own);
  for (const wchar_t* const name : {L"TMP", L"TEMP"}) ::SetEnvironmentVariableW(name, own.c_str());
  vek::support::RegisterSweeps();
  const int result = RUN_ALL_TESTS();
  std::filesystem::current_path(shared);
  std::filesystem::remove_all(own);
  return result;
}
