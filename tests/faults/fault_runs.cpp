#include "tests/faults/fault_runs.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "addin/text/utf8.h"

namespace vek::support {
namespace {

// The order of keys stays as it is written.
using Json = nlohmann::ordered_json;

Step ReadStep(const Json& operation, const Json& arguments) {
  return {DecodeUtf8(operation.get<std::string>()), DecodeUtf8(arguments.dump())};
}

std::vector<Step> ReadGround(const Json& grounds, const std::string& name) {
  std::vector<Step> steps;
  for (const Json& entry : grounds.at(name)) {
    if (entry.is_string())
      steps = ReadGround(grounds, entry);
    else
      steps.push_back(ReadStep(entry.at(0), entry.size() > 1 ? entry.at(1) : Json::object()));
  }
  return steps;
}

FaultRun ReadRun(const std::string& family, const Json& grounds, const Json& row) {
  FaultRun run{family, ReadGround(grounds, row.at(0)), ReadStep(row.at(1), row.at(2)), {}};
  if (row.size() < 4) return run;
  const Json& more = row.at(3);
  run.succeeds = more.value("succeeds", true);
  for (const Json& detour : more.value("detours", Json::array()))
    run.detours.push_back({detour.at(0), detour.at(1), detour.at(2), detour.at(3)});
  return run;
}

Json ReadRunFile() {
  std::ifstream stream(VEK_FAULT_RUNS);
  return Json::parse(stream);
}

}  // namespace

std::vector<FaultRun> ReadFaultRuns() {
  const Json file = ReadRunFile();
  std::vector<FaultRun> runs;
  for (const auto& [family, rows] : file.at("families").items())
    for (const Json& row : rows) runs.push_back(ReadRun(family, file.at("grounds"), row));
  return runs;
}

std::vector<int> StatusTable::Of(const std::string& call) const {
  std::vector<int> statuses = of_all;
  if (const auto found = beyond.find(call); found != beyond.end())
    statuses.insert(statuses.end(), found->second.begin(), found->second.end());
  return statuses;
}

StatusTable ReadStatuses() {
  StatusTable table;
  const Json file = ReadRunFile();
  for (const auto& [call, statuses] : file.at("statuses").items())
    (call == "*" ? table.of_all : table.beyond[call]) = statuses.get<std::vector<int>>();
  return table;
}

}  // namespace vek::support
