// The life of the add-in in its host, as its log and its helper tell it.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <thread>

#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// An installed add-in with a helper beside it that notes how it was called. Each test installs its own: the
// helper outlives the host, and what a test left behind would note its call among those of the next.
class Lifecycle : public testing::Test {
 protected:
  void SetUp() override {
    const fs::path root(VEK_SOURCE_DIR);
    folder_ =
        fs::path(BenchHome()) / "installed" / testing::UnitTest::GetInstance()->current_test_info()->name();
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    fs::copy(root / "build/windows/addin/VekCreoAddin.dll", folder_);
    fs::copy(root / "deploy/welcome.html", folder_);
    fs::copy(root / "build/windows/tests/platform/note_arguments.exe",
             folder_ / "VekAI.Creo.AddinHelper.exe");
    RemoveLog();
  }

  std::map<std::string, std::string> Environment() const {
    return {{"VEK_BENCH_ADDIN", (folder_ / "VekCreoAddin.dll").string()}};
  }

  // The calls that the helper has noted: one line each for the command line, in their order.
  std::vector<std::string> HelperCalls() const {
    std::vector<std::string> calls;
    std::ifstream stream(folder_ / "VekAI.Creo.AddinHelper.exe.noted");
    for (std::string line; std::getline(stream, line);)
      if (const auto argument = line.find(" --"); argument != std::string::npos) {
        while (!line.empty() && line.back() == '\r') line.pop_back();
        calls.push_back(line.substr(argument + 1));
      }
    return calls;
  }

  // The update check runs on its own; what comes behind it can be ordered only once it has been noted.
  void AwaitUpdateCheck() const {
    for (int i = 0; i < 500 && HelperCalls().empty(); ++i) std::this_thread::sleep_for(20ms);
  }

  fs::path folder_;
};

TEST_F(Lifecycle, StartsAndStopsInItsOrder) {
  {
    BenchProcess bench(Environment());
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
  EXPECT_EQ(HelperCalls(), (std::vector<std::string>{"--check-update", "--install-pending"}));
}

TEST_F(Lifecycle, EndOfInputStopsTheAddinAsWell) {
  BenchProcess bench(Environment());
  EXPECT_EQ(bench.EndInput(), 0);
  EXPECT_NE(LogText().find("Port 4001 released"), std::string::npos);
}

}  // namespace
}  // namespace vek::endtoend
