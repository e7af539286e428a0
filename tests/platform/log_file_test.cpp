#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "addin/platform/log.h"
#include "tests/support/noting_program.h"
#include "tests/support/scratch_folder.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::ReadBytes;
using support::ScratchFolder;
using Clock = std::chrono::steady_clock;

// "[", 24 characters of time, "] ".
constexpr std::size_t kMessageStart = 27;

std::vector<std::string> Messages(const std::wstring& path) {
  std::istringstream file(ReadBytes(path));
  std::vector<std::string> messages;
  for (std::string line; std::getline(file, line);)
    messages.push_back(line.size() < kMessageStart ? "" : line.substr(kMessageStart));
  return messages;
}

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
  EXPECT_EQ(Messages(folder / L"a.log"), std::vector<std::string>{"late"});
}

struct Holder {
  const char* name;
  DWORD sharing;
};

class LogFileHeld : public testing::TestWithParam<Holder> {};

TEST_P(LogFileHeld, LosesTheLineBehindTheTwentiethAttempt) {
  const ScratchFolder folder;
  const HANDLE holder = OpenForReading(folder / L"a.log", GetParam().sharing);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  const auto start = Clock::now();
  LogFile(folder / L"a.log").Write("lost");
  const auto waited = Clock::now() - start;
  ::CloseHandle(holder);

  EXPECT_EQ(ReadBytes(folder / L"a.log"), "");
  // 20 attempts are 19 pauses of 5 ms.
  EXPECT_GE(waited, 90ms);
  LogFile(folder / L"a.log").Write("next");
  EXPECT_EQ(Messages(folder / L"a.log"), std::vector<std::string>{"next"});
}

// A reader that shares everything bars the log as well, since the log itself shares nothing.
INSTANTIATE_TEST_SUITE_P(ByAnother, LogFileHeld,
                         testing::Values(Holder{"alone", 0},
                                         Holder{"sharing",
                                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}),
                         [](const auto& tested) { return tested.param.name; });

TEST(LogFile, TwoThreadsLoseNothingToEachOther) {
  const ScratchFolder folder;
  const LogFile log(folder / L"a.log");
  constexpr int kLines = 60;
  const auto write = [&](const std::string& name) {
    for (int i = 0; i < kLines; ++i) {
      log.Write(name + std::to_string(i));
      std::this_thread::sleep_for(1ms);
    }
  };
  std::jthread server(write, "server ");
  write("main ");
  server.join();

  const auto messages = Messages(folder / L"a.log");
  EXPECT_EQ(messages.size(), 2u * kLines);
  for (const std::string name : {"server ", "main "}) {
    std::vector<std::string> own;
    std::copy_if(messages.begin(), messages.end(), std::back_inserter(own),
                 [&](const std::string& message) { return message.starts_with(name); });
    std::vector<std::string> expected;
    for (int i = 0; i < kLines; ++i) expected.push_back(name + std::to_string(i));
    EXPECT_EQ(own, expected);
  }
}

}  // namespace
}  // namespace vek
