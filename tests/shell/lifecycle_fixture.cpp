#include "tests/shell/lifecycle_fixture.h"

#include <winsock2.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "addin/shell/lifecycle.h"
#include "bench/host/host.h"
#include "tests/support/captured_log.h"
#include "tests/support/noting_program.h"

namespace vek {
namespace {

constexpr unsigned short kPort = 4001;

// Asked for when the first test has not begun yet, but all of the program has been loaded.
class LoadObserver : public testing::Environment {
 public:
  void SetUp() override {
    for (const auto& line : support::CapturedLog()) lines.push_back(line.text);
  }
  std::vector<std::wstring> lines;
};

LoadObserver* const loadObserver = new LoadObserver;
[[maybe_unused]] const testing::Environment* const registered =
    testing::AddGlobalTestEnvironment(loadObserver);

}  // namespace

const std::vector<std::wstring>& LinesLoggedAtLoad() {
  return loadObserver->lines;
}

void Lifecycle::SetUp() {
  bench::TheHost().Reset();
  support::RemoveNotingProgram(HelperPath());
  support::ClearCapturedLog();
}

void Lifecycle::TearDown() {
  if (started_) AddinTerminate();
  EXPECT_EQ(bench::TheHost().ledger.Violations(), std::vector<std::string>{});
  EXPECT_TRUE(bench::TheHost().ledger.Outstanding().empty());
  EXPECT_EQ(bench::TheHost().ui.TimerCount(), 0u);
  EXPECT_EQ(bench::TheHost().ui.DialogCount(), 0u);
}

void Lifecycle::Start() {
  started_ = true;
  wchar_t complaint[80] = L"untouched";
  EXPECT_EQ(AddinInitialize(0, nullptr, nullptr, nullptr, complaint), 0);
  EXPECT_STREQ(complaint, L"untouched");
}

void Lifecycle::Stop() {
  started_ = false;
  AddinTerminate();
}

std::vector<bench::JournalEntry> Lifecycle::CallsSince(std::uint64_t mark) {
  return bench::TheHost().journal.Since(mark);
}

std::vector<std::string> Lifecycle::NamesSince(std::uint64_t mark) {
  std::vector<std::string> names;
  for (const auto& call : CallsSince(mark)) {
    const std::string group = call.name.starts_with("ProCmd") || call.name.starts_with("ProMenubar")
                                  ? "ProCmd…, ProMenubar…"
                                  : call.name;
    if (group == call.name || names.empty() || names.back() != group) names.push_back(group);
  }
  return names;
}

std::vector<std::wstring> Lifecycle::Lines() {
  std::vector<std::wstring> lines;
  for (const auto& line : support::CapturedLog()) {
    EXPECT_EQ(line.side, support::LogSide::kShell) << "the shell and the server write in the code page";
    if (line.text != L"VekWebServer: VekWebServer: Server thread started") lines.push_back(line.text);
  }
  return lines;
}

bool Lifecycle::Logged(const std::wstring& line) {
  return support::CountCaptured(line) > 0;
}

std::wstring Lifecycle::HelperPath() {
  return support::TestProgramFolder() + L"\\VekAI.Creo.AddinHelper.exe";
}

PortTaken::PortTaken() {
  WSADATA details{};
  if (::WSAStartup(MAKEWORD(2, 2), &details) != 0) throw std::runtime_error("no sockets");
  socket_ = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  const int on = 1;
  ::setsockopt(socket_, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&on), sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = ::htonl(INADDR_ANY);
  address.sin_port = ::htons(kPort);
  if (::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(socket_, 1) != 0)
    throw std::runtime_error("the port is taken already");
}

PortTaken::~PortTaken() {
  ::closesocket(socket_);
  ::WSACleanup();
}

}  // namespace vek
