// What the fault sweep runs, as runs.json beside this file has it: grounds, and by family the runs, one or
// more for each operation.
//
//   "ground": ["the ground it stands on", ["operation", {arguments}], …]
//   ["ground", "operation", {arguments}, {"detours": [["call", status, first, last]], "succeeds": false}]
//
//   "statuses": {"call": [status, …]}: what the add-in takes from it as something else than a failure
//
// messages.json has what the answers say then, by operation, and for each of its runs in their order:
//
//   [["call", nth, "message"], …]: the nth call of that name fails with -1, the operation's first that makes
//   it say so
//
// In arguments `<dir>` stands for the test's directory and `<step>` for a STEP file as base64.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vek::support {

struct Step {
  std::wstring operation, arguments;
};

// Toolkit calls, from the first to the last of that name, that always answer so: they lead a run to the
// branch behind the ordinary one. The status 0 is a success without effect.
struct Detour {
  std::string call;
  int status, first, last;
};

// What the answer says when the nth call of that name fails.
struct ToldFailure {
  std::string call;
  int nth;
  std::string message;
};

struct FaultRun {
  std::string family;        // those of one are run in one process
  std::vector<Step> ground;  // what prepares an empty session
  Step step;
  std::vector<Detour> detours;
  bool succeeds = true;  // when no other call fails
  std::vector<ToldFailure> told;
  std::set<std::string> messages;  // all that failures in the operation's runs say
};

std::vector<FaultRun> ReadFaultRuns();

// Arguments with what stands for something else put in.
std::wstring Filled(std::wstring arguments, const std::filesystem::path& directory);

// With which statuses each call is to fail.
struct StatusTable {
  std::vector<int> of_all;
  std::map<std::string, std::vector<int>> beyond;

  std::vector<int> Of(const std::string& call) const;
};
StatusTable ReadStatuses();

}  // namespace vek::support
