#include "tests/faults/swept_run.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <regex>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "addin/text/utf8.h"
#include "tests/faults/fault_runs.h"
#include "tests/faults/windows_calls.h"

namespace vek::support {
namespace {

bool SweepsAll() {
  const char* const wish = std::getenv("VEK_SWEEP");
  return wish != nullptr && std::string_view(wish) == "all";
}

// Calls that only give back, and the timer's re-arming: no fault reaches them.
bool CanFail(const std::string& call) {
  constexpr std::string_view kSure[] = {"ProUIDialogTimerStart", "ProUIDialogTimerStop", "ProUITimerDestroy",
                                        "ProUIDialogDestroy", "ProNotificationUnset"};
  return !call.ends_with("Free") && std::ranges::find(kSure, call) == std::end(kSure);
}

std::string Describe(const Failure& failure) {
  const bool of_toolkit = failure.side == Failure::Side::kToolkit;
  return "call " + std::to_string(failure.number) + ", " + failure.call +
         (of_toolkit ? ", " + std::to_string(failure.status) : " of Windows");
}

}  // namespace

std::set<std::filesystem::path> SweptRun::TemporaryFiles() {
  std::set<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path()))
    files.insert(entry.path());
  return files;
}

void SweptRun::TestBody() {
  files_ = TemporaryFiles();
  context_ = "undisturbed";
  Try(nullptr);
  const std::size_t stride = SweepsAll() ? 1 : stride_;
  std::size_t runs = 0, of_windows = 0;
  const std::vector<Failure> failures = failures_;
  for (std::size_t i = 0; i < failures.size(); ++i) {
    if (i % stride != 0 && !IsAlwaysMade(failures[i])) continue;
    context_ = Describe(failures[i]);
    Try(&failures[i]);
    ++(failures[i].side == Failure::Side::kToolkit ? runs : of_windows);
  }
  context_ = "all in all";
  Conclude();
  std::printf("sweep %s %zu %zu %zu\n", name_.c_str(), runs, of_windows, findings_.size());
  for (const std::string& finding : findings_) ADD_FAILURE() << finding;
}

void SweptRun::Try(const Failure* failure) {
  const auto before = OutstandingOfWindows();
  Prepare();
  mark_ = host().journal.Mark();
  ResetWindowsCalls();
  if (failure && failure->side == Failure::Side::kToolkit)
    faults().FailNumber(failure->number, failure->status);
  if (failure && failure->side == Failure::Side::kWindows) FailWindowsCall({failure->call, failure->number});
  Go();
  if (failure)
    ExpectFailed(*failure);
  else
    failures_ = Failures();
  faults().Clear();
  ResetWindowsCalls();
  Examine(failure);
  ExamineRemains(failure);
  if (OutstandingOfWindows() != before)
    for (const auto& [kind, count] : OutstandingOfWindows())
      Find("Windows has not got back: " + std::to_string(count) + " " + kind);
}

std::vector<bench::JournalEntry> SweptRun::ToolkitCalls() {
  auto calls = host().journal.Since(mark_);
  std::erase_if(calls, [](const bench::JournalEntry& call) { return !CanFail(call.name); });
  return calls;
}

std::vector<Failure> SweptRun::Failures() {
  static const StatusTable statuses = ReadStatuses();
  std::vector<Failure> failures;
  int number = 0;
  std::map<std::string, int> of_name;
  for (const auto& call : ToolkitCalls()) {
    ++number;
    const int nth = ++of_name[call.name];
    for (const int status : statuses.Of(call.name))
      if (SweepsToolkit())
        failures.push_back({Failure::Side::kToolkit, call.name, number, status, nth, call.status != 0});
  }
  for (const WindowsCall& call : WindowsCallsMade())
    failures.push_back({Failure::Side::kWindows, call.name, call.nth, 0, 0, false});
  return failures;
}

void SweptRun::ExpectFailed(const Failure& failure) {
  if (failure.side == Failure::Side::kWindows) {
    if (!WindowsCallFailed()) Find("the call was not made");
    return;
  }
  const auto calls = ToolkitCalls();
  const auto index = static_cast<std::size_t>(failure.number) - 1;
  if (calls.size() <= index || calls[index].name != failure.call || calls[index].status != failure.status)
    Find("another call was failed");
}

void SweptRun::NewSession() {
  const std::filesystem::path last = directory();
  OperationTest::TearDown();
  // A program that the run has started may still stand in the directory.
  std::error_code ignored;
  for (int i = 0; i < 1000 && std::filesystem::exists(last); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    std::filesystem::remove_all(last, ignored);
  }
  OperationTest::SetUp();
}

void SweptRun::Lay(const std::wstring& operation, const std::wstring& arguments) {
  if (const auto result = Run(operation, arguments); !result.success)
    throw std::logic_error("the ground is not to be had: " + EncodeUtf8(operation) + ": " +
                           EncodeUtf8(result.message));
}

std::wstring SweptRun::WithoutChance(const std::wstring& text) {
  static const std::wregex chance(
      LR"([a-z]:[^']*vek_operations_[0-9_]+|vek_[a-z]+_[0-9_]+|vek[0-9a-f]+\b|parent assembly: [0-9a-fx]+)",
      std::regex::icase);
  return std::regex_replace(text, chance, L"…");
}

// What nothing may leave behind.
void SweptRun::ExamineRemains(const Failure* failure) {
  // One that could not be deleted stays.
  const bool undeletable = failure && failure->call == "DeleteFileW";
  for (const auto& file : TemporaryFiles()) {
    if (files_.contains(file) || file.filename() == directory().filename()) continue;
    if (!undeletable) Find("left among the temporary files: " + file.filename().string());
    std::filesystem::remove_all(file);
  }
  for (const std::string& line : host().announcements.Lines())
    if (line.starts_with("complaint: ")) Find(line);
  for (const auto& [kind, count] : host().ledger.Outstanding())
    Find(std::to_string(count) + " outstanding of kind " + bench::Name(kind));
  for (const std::string& violation : host().ledger.Violations()) Find(violation);
  host().ledger.Clear();
}

}  // namespace vek::support
