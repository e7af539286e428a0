// The add-in in this process, with the bench as its host.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "bench/host/instruments/journal.h"

namespace vek {

// The lines that the add-in had logged when the tests began: what its load has left.
const std::vector<std::wstring>& LinesLoggedAtLoad();

class Lifecycle : public testing::Test {
 protected:
  void SetUp() override;
  // Stops the add-in if the test has not, and looks that nothing is left behind in the host.
  void TearDown() override;

  // Starts it and expects the host to be told that all is well.
  void Start();
  void Stop();

  // The calls since the mark, and the same as names alone; those that register the commands are one name
  // there.
  static std::vector<bench::JournalEntry> CallsSince(std::uint64_t mark);
  static std::vector<std::string> NamesSince(std::uint64_t mark);

  // The lines logged since the start of the test, without the one that the server thread writes whenever it
  // gets going.
  static std::vector<std::wstring> Lines();
  static bool Logged(const std::wstring& line);

  static std::wstring HelperPath();

 private:
  bool started_ = false;
};

// Someone else who listens on the add-in's port and lets nobody share it.
class PortTaken {
 public:
  PortTaken();
  ~PortTaken();
  PortTaken(const PortTaken&) = delete;
  PortTaken& operator=(const PortTaken&) = delete;

 private:
  std::uintptr_t socket_;
};

}  // namespace vek
