// The life of the add-in in its host, as its log and its helper tell it.

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

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
  // The server thread speaks for itself, at times that nobody fixes.
  std::vector<std::string> lines = LogLines();
  std::erase_if(lines, [](const std::string& line) {
    return line.find("Server thread") != std::string::npos ||
           line.find("Received request") != std::string::npos;
  });
  const std::vector<std::string> expected = {
      "VekWebServer: VekWebServer: Constructor called",
      "SUCCESS: URL displayed in embedded browser",
      "File open dialog created",
      "File open polling timer initialized",
      "File open polling timer started (100ms interval)",
      "=== Starting Vek Web Server ===",
      "Port: 4001",
      "Purpose: Receive part opening requests from external applications",
      "VekWebServer: VekWebServer: Starting server on port 4001",
      "VekWebServer: VekWebServer: Server started successfully on port 4001",
      "Vek Web Server started successfully on port 4001",
      "Web server is now listening for part opening requests",
      "Available endpoints:",
      "  - POST / : Part opening requests (JSON format)",
      "  - POST /execute : MCP operations",
      "  - GET /health : Health check",
      "Performance optimizations:",
      "  - Zero-latency connection acceptance",
      "  - Minimal 0.1ms polling interval",
      "  - Immediate request processing",
      "Server status: ACTIVE",
      "================================",
      "Polling timer resources cleaned up",
      "=== Stopping Vek Web Server ===",
      "VekWebServer: VekWebServer: Stopping server",
      "VekWebServer: VekWebServer: Server stopped",
      "Vek Web Server stopped successfully",
      "Port 4001 released",
      "================================",
      "VekWebServer: VekWebServer: Destructor called",
  };
  EXPECT_EQ(lines, expected);
  EXPECT_EQ(HelperCalls(), (std::vector<std::string>{"--check-update", "--install-pending"}));
}

TEST_F(Lifecycle, EndOfInputStopsTheAddinAsWell) {
  BenchProcess bench(Environment());
  EXPECT_EQ(bench.EndInput(), 0);
  EXPECT_NE(LogText().find("Port 4001 released"), std::string::npos);
}

TEST_F(Lifecycle, WithThePortTakenTheAddinStaysWithoutItsServer) {
  const int taken = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(kPort);
  const int reuse = 1;  // of what earlier benches left behind
  setsockopt(taken, SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);
  ASSERT_EQ(bind(taken, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(taken, 1), 0);
  {
    BenchProcess bench(Environment());
    AwaitUpdateCheck();
    EXPECT_TRUE(bench.Console("ledger").empty());
  }
  close(taken);
  const std::vector<std::string> lines = LogLines();
  for (const char* line : {"ERROR: Failed to start Vek Web Server",
                           "Error details: Failed to start HTTP server", "Server status: FAILED"})
    EXPECT_NE(std::find(lines.begin(), lines.end(), line), lines.end()) << line;
  EXPECT_EQ(HelperCalls(), (std::vector<std::string>{"--check-update", "--install-pending"}));
}

TEST_F(Lifecycle, ABatchIsLoggedBetweenItsTwoLines) {
  {
    BenchProcess bench(Environment());
    Execute(R"({"api_document_list_open":{}})");
  }
  const std::vector<std::string> lines = LogLines();
  const auto begin = std::find(lines.begin(), lines.end(), "MCP Batch BEGIN count=1");
  ASSERT_NE(begin, lines.end());
  ASSERT_GE(lines.end() - begin, 4);
  EXPECT_EQ(begin[1], "MCP Dispatch BEGIN op='api_document_list_open' args={}");
  EXPECT_EQ(
      begin[2],
      "MCP Dispatch END   op='api_document_list_open' success=true message=0 open document(s). data=[]");
  EXPECT_EQ(begin[3], "MCP Batch END");
}

}  // namespace
}  // namespace vek::endtoend
