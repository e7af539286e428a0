#include "tests/faults/fault_runs.h"

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

#include "addin/server/json_writer.h"
#include "addin/text/utf8.h"
#include "bench/host/kernel_link/base64.h"

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
  FaultRun run;
  run.family = family;
  run.ground = ReadGround(grounds, row.at(0));
  run.step = ReadStep(row.at(1), row.at(2));
  if (row.size() < 4) return run;
  const Json& more = row.at(3);
  run.succeeds = more.value("succeeds", true);
  for (const Json& detour : more.value("detours", Json::array()))
    run.detours.push_back({detour.at(0), detour.at(1), detour.at(2), detour.at(3)});
  return run;
}

Json ReadFile(const char* name) {
  std::ifstream stream(std::filesystem::path(VEK_FAULT_FILES) / name);
  return Json::parse(stream);
}

// What the failures in an operation's runs say; the run itself is the one at `index` among them.
void ReadMessages(const Json& file, std::size_t index, FaultRun& run) {
  const Json runs = file.value(EncodeUtf8(run.step.operation), Json::array());
  for (const Json& rows : runs)
    for (const Json& row : rows) run.messages.insert(row.at(2));
  if (index < runs.size())
    for (const Json& row : runs[index]) run.told.push_back({row.at(0), row.at(1), row.at(2)});
}

}  // namespace

std::vector<FaultRun> ReadFaultRuns() {
  const Json file = ReadFile("runs.json"), messages = ReadFile("messages.json");
  std::vector<FaultRun> runs;
  std::map<std::wstring, std::size_t> of_operation;
  for (const auto& [family, rows] : file.at("families").items())
    for (const Json& row : rows) {
      FaultRun& run = runs.emplace_back(ReadRun(family, file.at("grounds"), row));
      ReadMessages(messages, of_operation[run.step.operation]++, run);
    }
  return runs;
}

std::wstring Filled(std::wstring arguments, const std::filesystem::path& directory) {
  static const std::wstring step_file = [] {
    std::ifstream stream(VEK_TEST_DATA "/inch_block.stp", std::ios::binary);
    return DecodeUtf8(bench::EncodeBase64(std::string(std::istreambuf_iterator<char>(stream), {})));
  }();
  const std::pair<std::wstring, std::wstring> marks[] = {{L"<dir>", JsonEscape(directory.wstring())},
                                                         {L"<step>", step_file}};
  for (const auto& [mark, text] : marks)
    for (auto at = arguments.find(mark); at != std::wstring::npos;
         at = arguments.find(mark, at + text.size()))
      arguments.replace(at, mark.size(), text);
  return arguments;
}

std::vector<int> StatusTable::Of(const std::string& call) const {
  std::vector<int> statuses = of_all;
  if (const auto found = beyond.find(call); found != beyond.end())
    statuses.insert(statuses.end(), found->second.begin(), found->second.end());
  return statuses;
}

StatusTable ReadStatuses() {
  StatusTable table;
  const Json file = ReadFile("runs.json");
  for (const auto& [call, statuses] : file.at("statuses").items())
    (call == "*" ? table.of_all : table.beyond[call]) = statuses.get<std::vector<int>>();
  return table;
}

}  // namespace vek::support
