// Every toolkit call of every operation fails once, and after each failure the session must be as sound as
// before: an answer that can be read, nothing lost, nothing held, and the next operation works.
//
// `./test` makes every kStride-th of these runs, and all of them with VEK_SWEEP=all. `./run sweep` sums up
// what they print.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <set>

#include "addin/ops/drawing/drawing_source.h"
#include "addin/server/json_writer.h"
#include "addin/text/utf8.h"
#include "bench/host/kernel_link/base64.h"
#include "bench/host/storage/model_file.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {
namespace {

constexpr std::size_t kStride = 23;

// A general error, and the two that operations take for an answer: nothing there, and it is there already.
constexpr ProError kStatuses[] = {PRO_TK_GENERAL_ERROR, PRO_TK_E_NOT_FOUND, PRO_TK_E_FOUND};

bool SweepsAll() {
  const char* const wish = std::getenv("VEK_SWEEP");
  return wish != nullptr && std::string_view(wish) == "all";
}

const std::wstring& StepFile() {
  static const std::wstring base64 = [] {
    std::ifstream stream(VEK_TEST_DATA "/inch_block.stp", std::ios::binary);
    return DecodeUtf8(bench::EncodeBase64(std::string(std::istreambuf_iterator<char>(stream), {})));
  }();
  return base64;
}

void Replace(std::wstring& text, std::wstring_view what, const std::wstring& with) {
  for (auto at = text.find(what); at != std::wstring::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
}

class FaultSweep : public OperationTest {
 public:
  explicit FaultSweep(const FaultRun& run) : run_(run) {}

 private:
  // What no operation may leave behind otherwise than it was.
  struct Surroundings {
    std::wstring directory;
    bench::Model* model;
    bench::Matrix view;
  };

  void TestBody() override {
    const auto begin = std::chrono::steady_clock::now();
    const std::vector<std::string> calls = CallsThatCanFail();
    const std::size_t stride = SweepsAll() ? 1 : kStride;
    std::size_t runs = 0;
    for (std::size_t i = 0; i < calls.size() * std::size(kStatuses); i += stride, ++runs)
      FailOne(i / std::size(kStatuses), calls[i / std::size(kStatuses)], kStatuses[i % std::size(kStatuses)]);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    std::printf("sweep %s %zu %zu %zu %.1f\n", EncodeUtf8(run_.step.operation).c_str(), calls.size(), runs,
                findings_.size(), took.count());
    for (const std::string& finding : findings_) ADD_FAILURE() << finding;
  }

  CreoMcpOperationResult RunStep(const Step& step) {
    std::wstring arguments = step.arguments;
    Replace(arguments, L"<dir>", JsonEscape(directory().wstring()));
    Replace(arguments, L"<step>", StepFile());
    return Run(step.operation, arguments);
  }

  // The run's ground in a session of its own, up to the first call of the run.
  void Prepare() {
    OperationTest::TearDown();
    OperationTest::SetUp();
    drawing::PendingSource() = {};
    for (const Step& step : run_.ground)
      if (const auto result = RunStep(step); !result.success)
        throw std::logic_error("the ground is not to be had: " + EncodeUtf8(step.operation) + ": " +
                               EncodeUtf8(result.message));
    for (const Detour& detour : run_.detours)
      faults().Fail(detour.call, detour.status, detour.first, detour.last);
  }

  // The calls since then that a fault can reach. Those that only give back are never failed.
  std::vector<bench::JournalEntry> FaultableSince(std::uint64_t mark) {
    auto calls = host().journal.Since(mark);
    std::erase_if(calls, [](const bench::JournalEntry& call) { return call.name.ends_with("Free"); });
    return calls;
  }

  // Those of the run that nothing disturbs.
  std::vector<std::string> CallsThatCanFail() {
    Prepare();
    const std::uint64_t mark = host().journal.Mark();
    const Surroundings before = Look();
    const auto result = RunStep(run_.step);
    std::vector<std::string> names;
    for (const auto& call : FaultableSince(mark)) names.push_back(call.name);
    context_ = "undisturbed";
    if (result.success != run_.succeeds) Find("the answer is: " + EncodeUtf8(result.message));
    Check(result, before, "");
    return names;
  }

  // The run with the call of that index failing.
  void FailOne(std::size_t index, const std::string& call, ProError status) {
    Prepare();
    context_ = "call " + std::to_string(index + 1) + ", " + call + ", " + std::to_string(status);
    const Surroundings before = Look();
    const std::uint64_t mark = host().journal.Mark();
    faults().FailNumber(static_cast<int>(index) + 1, status);
    const auto result = RunStep(run_.step);
    const auto calls = FaultableSince(mark);
    if (calls.size() <= index || calls[index].name != call || calls[index].status != status)
      Find("another call was failed");
    Check(result, before, call);
  }

  Surroundings Look() {
    bench::Model* const model = host().CurrentModel();
    return {bench::WorkingDirectory(), model, model == nullptr ? bench::Matrix{} : model->view};
  }

  void Check(const CreoMcpOperationResult& result, const Surroundings& before, const std::string& failed) {
    faults().Clear();
    const std::string message = EncodeUtf8(result.message);
    if (message.empty()) Find("no message");
    if (message.find("' threw") != std::string::npos) Find(message);
    if (!nlohmann::json::accept(EncodeUtf8(result.dataJson))) Find("no JSON: " + EncodeUtf8(result.dataJson));

    // Neither is promised where the host doesn't tell the old one, or refuses to go back.
    const Surroundings after = Look();
    if (after.directory != before.directory && !failed.starts_with("ProDirectory"))
      Find("the working directory stays changed");
    if (after.model == before.model && after.view != before.view && !failed.starts_with("ProViewMatrix"))
      Find("the view stays turned");
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path()))
      if (entry.path().filename() != directory().filename())
        Find("left among the temporary files: " + entry.path().filename().string());
    for (const std::string& line : host().announcements.Lines())
      if (line.starts_with("complaint: ")) Find(line);

    Probe(L"api_document_list_open");
    if (host().CurrentModel() != nullptr) Probe(L"api_document_info");
    for (const auto& [kind, count] : host().ledger.Outstanding())
      Find(std::to_string(count) + " outstanding of kind " + bench::Name(kind));
    for (const std::string& violation : host().ledger.Violations()) Find(violation);
    host().ledger.Clear();
  }

  void Probe(const wchar_t* operation) {
    if (const auto result = Run(operation); !result.success)
      Find(EncodeUtf8(operation) + " fails afterwards: " + EncodeUtf8(result.message));
  }

  void Find(const std::string& what) { findings_.push_back(context_ + ": " + what); }

  const FaultRun& run_;
  std::string context_;
  std::vector<std::string> findings_;
};

const std::vector<FaultRun>& Runs() {
  static const std::vector<FaultRun> runs = ReadFaultRuns();
  return runs;
}

TEST(FaultRuns, MissNoOperation) {
  std::set<std::wstring> expected, swept;
  for (const wchar_t* const name : CreoMcpProvider::ExpectedNames()) expected.insert(name);
  for (const FaultRun& run : Runs()) swept.insert(run.step.operation);
  EXPECT_EQ(swept, expected);
}

// A suite for each family, so that they can be run side by side.
void RegisterSweeps() {
  int number = 0;
  for (const FaultRun& run : Runs()) {
    const std::string name = EncodeUtf8(run.step.operation).substr(4) + "_" + std::to_string(++number);
    testing::RegisterTest(run.family.c_str(), name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [&run]() -> FaultSweep* { return new FaultSweep(run); });
  }
}

}  // namespace
}  // namespace vek::support

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", L"" VEK_INSTALLATION);
  // Temporary files of its own: what stays behind is this program's.
  const std::filesystem::path shared = std::filesystem::temp_directory_path();
  const auto own = shared / ("vek_faults_" + std::to_string(::GetCurrentProcessId()));
  std::filesystem::create_directories(own);
  for (const wchar_t* const name : {L"TMP", L"TEMP"}) ::SetEnvironmentVariableW(name, own.c_str());
  vek::support::RegisterSweeps();
  const int result = RUN_ALL_TESTS();
  std::filesystem::current_path(shared);
  std::filesystem::remove_all(own);
  return result;
}
