// The log: its two encodings, its lines, and whoever else holds its file.
#include <gtest/gtest.h>

#include <windows.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "addin/platform/log.h"
#include "addin/platform/text_encoding.h"
#include "tests/support/log_tail.h"
#include "tests/support/noting_program.h"
#include "tests/support/scratch_folder.h"

namespace vek {
namespace {

TEST(AddinLog, OperationsWriteUtf8TheShellTheCodePageAndBytesPass) {
  const support::LogTail tail;
  LogOperation(L"MCP Dispatch 10 \u00b5m \u20ac");
  LogShell(L"ERROR: caf\u00e9");
  WriteLog("raw \xFF");
  WriteLog(nullptr);
  EXPECT_EQ(tail.Messages(), (std::vector<std::string>{"MCP Dispatch 10 \xC2\xB5m \xE2\x82\xAC",
                                                       "ERROR: " + EncodeAnsi(L"caf\u00e9"), "raw \xFF"}));
}

using namespace std::chrono_literals;
using support::ReadBytes;
using support::ScratchFolder;
using Clock = std::chrono::steady_clock;

// "[", 24 characters of time, "] ".
constexpr std::size_t kMessageStart = 27;

HANDLE OpenForReading(const std::wstring& path, DWORD sharing) {
  return ::CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

TEST(LogFile, WritesTheLocalTimeInBracketsAndTheMessage) {
  const ScratchFolder folder;
  const std::time_t before = std::time(nullptr);
  LogFile(folder / L"a.log").Write("SUCCESS: done");
  const std::time_t after = std::time(nullptr);

  std::vector<std::string> possible;
  for (std::time_t second = before; second <= after; ++second)
    possible.push_back("[" + std::string(std::ctime(&second), 24) + "] SUCCESS: done\n");
  const std::string written = ReadBytes(folder / L"a.log");
  EXPECT_NE(std::find(possible.begin(), possible.end(), written), possible.end()) << written;
}

TEST(LogFile, AppendsTheBytesAsTheyAreToWhatStandsAndClosesTheFile) {
  const ScratchFolder folder;
  std::ofstream(std::filesystem::path(folder / L"a.log"), std::ios::binary) << "older\n";
  const std::string message = "\xC3\xA9 and \xE9 and \r\n behind";
  const LogFile log(folder / L"a.log");
  log.Write(message);
  log.Write("");

  const HANDLE alone = OpenForReading(folder / L"a.log", 0);
  EXPECT_NE(alone, INVALID_HANDLE_VALUE);
  ::CloseHandle(alone);
  const std::string written = ReadBytes(folder / L"a.log");
  ASSERT_EQ(written.size(), 6 + kMessageStart + message.size() + 1 + kMessageStart + 1);
  EXPECT_EQ(written.substr(0, 7), "older\n[");
  EXPECT_EQ(written.substr(6 + kMessageStart, message.size() + 2), message + "\n[");
}

TEST(LogFile, WaitsForWhoeverHoldsTheFile) {
  const ScratchFolder folder;
  const support::LogTail tail(folder / L"a.log");
  const HANDLE holder = OpenForReading(folder / L"a.log", 0);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  std::atomic<bool> written{false};
  std::jthread writer([&] {
    LogFile(folder / L"a.log").Write("late");
    written = true;
  });
  std::this_thread::sleep_for(15ms);
  EXPECT_FALSE(written);
  ::CloseHandle(holder);
  writer.join();
  EXPECT_EQ(tail.Messages(), std::vector<std::string>{"late"});
}

// A reader that shares everything bars the log as well, since the log itself shares nothing.
TEST(LogFile, LosesTheLineBehindTheTwentiethAttempt) {
  for (const DWORD sharing :
       {0ul, static_cast<DWORD>(FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE)}) {
    const ScratchFolder folder;
    const support::LogTail tail(folder / L"a.log");
    const HANDLE holder = OpenForReading(folder / L"a.log", sharing);
    ASSERT_NE(holder, INVALID_HANDLE_VALUE);
    const auto start = Clock::now();
    LogFile(folder / L"a.log").Write("lost");
    EXPECT_GE(Clock::now() - start, 90ms) << "20 attempts are 19 pauses of 5 ms";
    ::CloseHandle(holder);
    EXPECT_EQ(ReadBytes(folder / L"a.log"), "");
    LogFile(folder / L"a.log").Write("next");
    EXPECT_EQ(tail.Messages(), std::vector<std::string>{"next"});
  }
}

TEST(LogFile, TwoThreadsLoseNothingToEachOther) {
  const ScratchFolder folder;
  const support::LogTail tail(folder / L"a.log");
  const LogFile log(folder / L"a.log");
  std::vector<std::string> expected[2];
  for (int i = 0; i < 60; ++i)
    for (const int thread : {0, 1}) expected[thread].push_back(std::to_string(thread) + std::to_string(i));
  const auto write = [&](const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
      log.Write(line);
      std::this_thread::sleep_for(1ms);
    }
  };
  std::jthread server([&] { write(expected[1]); });
  write(expected[0]);
  server.join();

  std::vector<std::string> own[2];
  for (const std::string& message : tail.Messages()) own[message.starts_with("1")].push_back(message);
  EXPECT_EQ(own[0], expected[0]);
  EXPECT_EQ(own[1], expected[1]);
}

}  // namespace
}  // namespace vek
