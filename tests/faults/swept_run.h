// A run that is made over and over, each time in a new session and with another of its calls failing: first
// of the toolkit's, with each of the statuses that mean something to the add-in, then of Windows'.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "bench/host/instruments/journal.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

struct Failure {
  enum class Side { kToolkit, kWindows };
  Side side = Side::kToolkit;
  std::string call;
  int number = 0;  // of the toolkit's calls in the run, from 1; of Windows' calls of that name, from 1
  int status = 0;  // of the toolkit
  int nth = 0;     // of the toolkit's calls of that name, from 1
  bool fails_anyway = false;  // in the run that nothing disturbs
};

class SweptRun : public OperationTest {
 protected:
  // Under this name its figures are printed. `stride`: every so manieth of its failures is made, unless the
  // environment asks for all.
  SweptRun(std::string name, std::size_t stride) : name_(std::move(name)), stride_(stride) {}

  // A new session, up to the first call of the run. Throws std::logic_error when that ground isn't to be had.
  virtual void Prepare() = 0;
  virtual void Go() = 0;
  // What must hold when the run is over and nothing fails any more; null for the run that nothing disturbs.
  virtual void Examine(const Failure* failure) = 0;
  // What must hold when all failures have been made.
  virtual void Conclude() {}

  // Whether the failure is made in every slice.
  virtual bool IsAlwaysMade(const Failure&) const { return false; }
  // Whether the toolkit's calls are failed as well, or those of Windows alone.
  virtual bool SweepsToolkit() const { return true; }

  void NewSession();
  // Runs a step of a ground.
  void Lay(const std::wstring& operation, const std::wstring& arguments = L"{}");
  // A text without what differs from one session to the next: directory, temporary names, addresses.
  static std::wstring WithoutChance(const std::wstring& text);
  void Find(const std::string& what) { findings_.push_back(context_ + ": " + what); }

 private:
  void TestBody() override;
  void Try(const Failure* failure);
  std::vector<Failure> Failures();
  std::vector<bench::JournalEntry> ToolkitCalls();
  static std::set<std::filesystem::path> TemporaryFiles();
  void ExpectFailed(const Failure& failure);
  void ExamineRemains(const Failure* failure);

  const std::string name_;
  const std::size_t stride_;
  std::string context_;
  std::uint64_t mark_ = 0;
  std::vector<Failure> failures_;
  std::set<std::filesystem::path> files_;  // the temporary ones that were there before
  std::vector<std::string> findings_;
};

// Makes a test of each run; every program of the sweep has its own.
void RegisterSweeps();

}  // namespace vek::support
