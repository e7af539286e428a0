// A small stand-in for the companion application: takes what the add-in sends, keeps it, and answers as it is
// told.
//
// It ends by itself when no bench has run for some seconds.
#include <winsock2.h>

#include <windows.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>

#include "bench/companion/requests.h"
#include "bench/companion/scripted_answers.h"
#include "bench/running_mark.h"

namespace {

using namespace bench::companion;
using Clock = std::chrono::steady_clock;

constexpr unsigned short kPort = 4000;
// Longer than any client of it waits.
constexpr DWORD kStallMs = 15'000;
constexpr std::chrono::seconds kPatienceWithoutBench{3};
constexpr long kPollMicroseconds = 100'000;

class Socket {
 public:
  explicit Socket(SOCKET handle) : handle_(handle) {}
  ~Socket() {
    if (*this) closesocket(handle_);
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  SOCKET get() const { return handle_; }
  explicit operator bool() const { return handle_ != INVALID_SOCKET; }

 private:
  SOCKET handle_;
};

bool BenchIsRunning() {
  const HANDLE mark = OpenMutexW(SYNCHRONIZE, FALSE, bench::kRunningMark);
  if (mark) CloseHandle(mark);
  return mark != nullptr;
}

bool Readable(SOCKET socket, long microseconds) {
  fd_set sockets;
  FD_ZERO(&sockets);
  FD_SET(socket, &sockets);
  timeval limit{0, microseconds};
  return select(0, &sockets, nullptr, nullptr, &limit) == 1;
}

std::string InHome(const char* file) {
  const char* home = std::getenv("CREO_BENCH_HOME");
  return home ? std::string(home) + "\\" + file : file;
}

bool Receive(SOCKET client, Request& request) {
  std::string bytes;
  char part[4096];
  for (int count = 0; !ReadRequest(bytes, request);) {
    count = recv(client, part, sizeof part, 0);
    if (count <= 0) return false;
    bytes.append(part, static_cast<std::size_t>(count));
  }
  return true;
}

void Send(SOCKET client, const std::string& bytes) {
  for (std::size_t sent = 0; sent < bytes.size();) {
    const int count = send(client, bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
    if (count <= 0) return;
    sent += static_cast<std::size_t>(count);
  }
}

// False for a client that went away without a request.
bool Serve(SOCKET client, int number) {
  Request request;
  if (!Receive(client, request)) return false;
  std::ofstream(InHome("companion.log"), std::ios::binary | std::ios::app)
      << request.path << ' ' << request.body << '\n';
  const ScriptedAnswer answer = AnswerInLine(InHome("companion.answers"), number);
  const std::string bytes = ComposeAnswer(request, answer);
  const bool in_halves = answer.manner == ScriptedAnswer::Manner::kHalf;
  const std::size_t at_once = in_halves ? bytes.size() / 2 : 0;
  Send(client, bytes.substr(0, at_once));
  if (in_halves || answer.manner == ScriptedAnswer::Manner::kStall) Sleep(kStallMs);
  Send(client, bytes.substr(at_once));
  shutdown(client, SD_SEND);
  return true;
}

bool Listen(SOCKET listener) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(kPort);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
         listen(listener, SOMAXCONN) == 0;
}

void ServeWhileBenchRuns(SOCKET listener) {
  int served = 0;
  for (auto seen = Clock::now(); Clock::now() - seen < kPatienceWithoutBench;) {
    if (BenchIsRunning()) seen = Clock::now();
    if (!Readable(listener, kPollMicroseconds)) continue;
    const Socket client(accept(listener, nullptr, nullptr));
    if (client && Serve(client.get(), served)) ++served;
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  WSADATA data;
  if (WSAStartup(MAKEWORD(2, 2), &data) != 0) return 1;
  const Socket listener(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
  if (!listener || !Listen(listener.get())) return 1;
  ServeWhileBenchRuns(listener.get());
  WSACleanup();
  return 0;
}
