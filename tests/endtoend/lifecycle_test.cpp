// The life of the add-in in its host, as its log and its helper tell it.

#include <algorithm>
#include <filesystem>
#include <thread>

#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {
namespace {

using namespace std::chrono_literals;

// Each test installs its own: the helper outlives the host, and what a test left behind would note its call
// among those of the next.
class Lifecycle : public testing::Test {
 protected:
  Lifecycle() { RemoveLog(); }

  // The update check runs on its own; what comes behind it can be ordered only once it has been noted.
  void AwaitUpdateCheck() const {
    for (int i = 0; i < 500 && installed_.HelperCalls().empty(); ++i) std::this_thread::sleep_for(20ms);
  }

  const InstalledAddin installed_{std::filesystem::path(BenchHome()) / "installed" /
                                  testing::UnitTest::GetInstance()->current_test_info()->name()};
};

TEST_F(Lifecycle, StartsAndStopsInItsOrder) {
  {
    BenchProcess bench(installed_.Environment());
    EXPECT_EQ(Request("GET", "/health").status, 200);
    AwaitUpdateCheck();
    EXPECT_EQ(bench.Quit(), 0);
  }
  const std::vector<std::string> milestones = {
      "SUCCESS: URL displayed in embedded browser",
      "File open polling timer started (100ms interval)",
      "Server status: ACTIVE",
      "Polling timer resources cleaned up",
      "Port 4001 released",
      "VekWebServer: VekWebServer: Destructor called",
  };
  std::vector<std::string> lines = LogLines();
  std::erase_if(lines, [&](const std::string& line) {
    return std::find(milestones.begin(), milestones.end(), line) == milestones.end();
  });
  EXPECT_EQ(lines, milestones);
  EXPECT_EQ(installed_.HelperCalls(), (std::vector<std::string>{"--check-update", "--install-pending"}));
}

TEST_F(Lifecycle, EndOfInputStopsTheAddinAsWell) {
  BenchProcess bench(installed_.Environment());
  EXPECT_EQ(bench.EndInput(), 0);
  EXPECT_NE(LogText().find("Port 4001 released"), std::string::npos);
}

}  // namespace
}  // namespace vek::endtoend
