// Every call of every operation fails once, and after each failure the session must be as sound as before: an
// answer that can be read, nothing lost, nothing held, and the next operation works.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string_view>

#include "addin/ops/drawing/drawing_source.h"
#include "addin/server/json_writer.h"
#include "addin/text/utf8.h"
#include "bench/host/kernel_link/base64.h"
#include "bench/host/storage/model_file.h"
#include "tests/faults/fault_runs.h"
#include "tests/faults/swept_run.h"

namespace vek::support {
namespace {

constexpr std::size_t kStride = 23;

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

// The failures of Windows that change nothing for the client.
bool IsHarmless(const std::string& call) {
  constexpr std::string_view kHarmless[] = {
      // A folder that isn't seen is made again, and is there already.
      "GetFileAttributesW",
      // What is of no use any more stays where it is.
      "DeleteFileW", "SelectObject",
      // A picture that is shrunk less well.
      "SetStretchBltMode", "SetBrushOrgEx",
      // What must come before any picture in Windows, and needn't in Wine.
      "GdiplusStartup"};
  return std::ranges::find(kHarmless, call) != std::end(kHarmless);
}

class OperationSweep : public SweptRun {
 public:
  explicit OperationSweep(const FaultRun& run)
      : SweptRun(EncodeUtf8(run.step.operation), kStride), run_(run) {}

 private:
  // What no operation may leave behind otherwise than it was.
  struct Surroundings {
    std::wstring directory;
    bench::Model* model;
    bench::Matrix view;
  };

  void Prepare() override {
    NewSession();
    drawing::PendingSource() = {};
    for (const Step& step : run_.ground) Lay(step.operation, Filled(step.arguments));
    for (const Detour& detour : run_.detours)
      faults().Fail(detour.call, detour.status, detour.first, detour.last);
    before_ = Look();
  }

  void Go() override { result_ = Run(run_.step.operation, Filled(run_.step.arguments)); }

  void Examine(const Failure* failure) override {
    const std::string message = EncodeUtf8(result_.message);
    if (!failure && result_.success != run_.succeeds) Find("the answer is: " + message);
    if (message.empty()) Find("no message");
    if (message.find("' threw") != std::string::npos) Find(message);
    if (!nlohmann::json::accept(EncodeUtf8(result_.dataJson)))
      Find("no JSON: " + EncodeUtf8(result_.dataJson));

    const std::wstring told = WithoutChance(result_.message + result_.dataJson);
    if (!failure)
      undisturbed_ = told;
    else if (failure->side == Failure::Side::kWindows && told == undisturbed_ && !IsHarmless(failure->call))
      Find("nobody is told");

    // Neither is promised where the host doesn't tell the old one, or refuses to go back.
    const std::string failed = failure ? failure->call : "";
    const Surroundings after = Look();
    if (after.directory != before_.directory && !failed.starts_with("ProDirectory"))
      Find("the working directory stays changed");
    if (after.model == before_.model && after.view != before_.view && !failed.starts_with("ProViewMatrix"))
      Find("the view stays turned");

    Probe(L"api_document_list_open");
    if (host().CurrentModel() != nullptr) Probe(L"api_document_info");
  }

  std::wstring Filled(std::wstring arguments) {
    Replace(arguments, L"<dir>", JsonEscape(directory().wstring()));
    Replace(arguments, L"<step>", StepFile());
    return arguments;
  }

  Surroundings Look() {
    bench::Model* const model = host().CurrentModel();
    return {bench::WorkingDirectory(), model, model == nullptr ? bench::Matrix{} : model->view};
  }

  void Probe(const wchar_t* operation) {
    if (const auto result = Run(operation); !result.success)
      Find(EncodeUtf8(operation) + " fails afterwards: " + EncodeUtf8(result.message));
  }

  const FaultRun& run_;
  Surroundings before_;
  CreoMcpOperationResult result_;
  std::wstring undisturbed_;
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

}  // namespace

// A suite for each family, so that they can be run side by side.
void RegisterSweeps() {
  int number = 0;
  for (const FaultRun& run : Runs()) {
    const std::string name = EncodeUtf8(run.step.operation).substr(4) + "_" + std::to_string(++number);
    testing::RegisterTest(run.family.c_str(), name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [&run]() -> OperationSweep* { return new OperationSweep(run); });
  }
}

}  // namespace vek::support
