#include "tests/companion/running_companion.h"

#include <winsock2.h>

#include <windows.h>

#include <chrono>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "bench/running_mark.h"

namespace vek::support {
namespace {

using namespace std::chrono_literals;

bool Listens() {
  const SOCKET probe = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(4000);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const bool connected = connect(probe, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  closesocket(probe);
  return connected;
}

std::wstring Widened(const char* text) {
  return {text, text + std::char_traits<char>::length(text)};
}

}  // namespace

RunningCompanion::RunningCompanion(const std::string& answers) {
  WSADATA data;
  WSAStartup(MAKEWORD(2, 2), &data);
  if (Listens()) throw std::runtime_error("port 4000 is taken");
  if (!answers.empty())
    std::ofstream(std::filesystem::path(home_ / L"companion.answers"), std::ios::binary) << answers;
  mark_ = CreateMutexW(nullptr, FALSE, bench::kRunningMark);
  SetEnvironmentVariableW(L"CREO_BENCH_HOME", home_.path().c_str());
  std::wstring program = Widened(VEK_TEST_COMPANION);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(nullptr, program.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &started))
    throw std::runtime_error("the companion does not start");
  CloseHandle(started.hThread);
  process_ = started.hProcess;
  const auto patience = std::chrono::steady_clock::now() + 20s;
  while (!Listens()) {
    if (std::chrono::steady_clock::now() > patience)
      throw std::runtime_error("the companion does not listen");
    std::this_thread::sleep_for(20ms);
  }
}

RunningCompanion::~RunningCompanion() {
  TerminateProcess(process_, 0);
  WaitForSingleObject(process_, 10'000);
  CloseHandle(process_);
  CloseHandle(mark_);
}

std::vector<std::string> RunningCompanion::Received() const {
  std::ifstream log(std::filesystem::path(home_ / L"companion.log"), std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(log, line);) lines.push_back(line);
  return lines;
}

}  // namespace vek::support
