// Every call of every operation fails once, and after each failure the session must be as sound as before: an
// answer that can be read, nothing lost, nothing held, and the next operation works.
#include <algorithm>
#include <set>
#include <string_view>

#include "addin/ops/common/history.h"
#include "addin/ops/drawing/drawing_source.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/storage/model_file.h"
#include "tests/faults/fault_runs.h"
#include "tests/faults/swept_run.h"

namespace vek::support {
namespace {

constexpr std::size_t kStride = 47;
constexpr int kGeneralError = -1;

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

// Whether an operation that fails may leave the features otherwise than they were. A sketch's are taken away
// before they are made anew, what a pattern has got for itself stays, and so does what the host refuses to
// delete or to put back.
bool MayChange(const std::string& operation, const std::string& failed, const std::wstring& before,
               const std::wstring& after) {
  if (operation.starts_with("api_sketch_") || operation.starts_with("api_document_")) return true;
  if (operation.starts_with("api_pattern_") && after.starts_with(before)) return true;
  return failed == "ProFeatureDelete" || failed == "ProAsmcompAssemble";
}

class OperationSweep : public SweptRun {
 public:
  explicit OperationSweep(const FaultRun& run)
      : SweptRun(EncodeUtf8(run.step.operation), kStride), run_(run) {}

 private:
  // What no operation may leave behind otherwise than it was; the model and the history one that fails.
  struct Surroundings {
    std::wstring directory;
    bench::Model* model = nullptr;
    bench::Matrix view{};
    std::wstring features;
    std::size_t undo_steps = 0;
  };

  void Prepare() override {
    NewSession();
    drawing::PendingSource() = {};
    for (const Step& step : run_.ground) Lay(step.operation, Filled(step.arguments, directory()));
    for (const Detour& detour : run_.detours)
      faults().Fail(detour.call, detour.status, detour.first, detour.last);
    before_ = Look();
  }

  void Go() override { result_ = Run(run_.step.operation, Filled(run_.step.arguments, directory())); }

  const ToldFailure* Told(const Failure& failure) const {
    if (failure.side == Failure::Side::kWindows || failure.status != kGeneralError) return nullptr;
    for (const ToldFailure& told : run_.told)
      if (told.call == failure.call && told.nth == failure.nth) return &told;
    return nullptr;
  }

  bool IsAlwaysMade(const Failure& failure) const override { return Told(failure) != nullptr; }

  // Against messages.json.
  void ExamineMessage(const Failure& failure) {
    const std::string message = EncodeUtf8(WithoutChance(result_.message));
    const ToldFailure* const told = Told(failure);
    const bool known =
        told ? message == told->message : message == undisturbed_message_ || run_.messages.contains(message);
    if (!known)
      Find("call " + std::to_string(failure.nth) + " of that name makes it say: " + message +
           (told ? ", and not: " + told->message : ""));
    if (told) met_.insert(told);
  }

  void Conclude() override {
    for (const ToldFailure& told : run_.told)
      if (!met_.contains(&told)) Find("never made: call " + std::to_string(told.nth) + " of " + told.call);
  }

  void Examine(const Failure* failure) override {
    const std::string message = EncodeUtf8(result_.message);
    if (!failure && result_.success != run_.succeeds) Find("the answer is: " + message);
    if (message.empty()) Find("no message");
    if (message.find("' threw") != std::string::npos) Find(message);
    if (!nlohmann::json::accept(EncodeUtf8(result_.dataJson)))
      Find("no JSON: " + EncodeUtf8(result_.dataJson));

    const std::wstring told = WithoutChance(result_.message + result_.dataJson);
    if (!failure) {
      undisturbed_ = told;
      undisturbed_message_ = EncodeUtf8(WithoutChance(result_.message));
    } else if (failure->side == Failure::Side::kToolkit && failure->status == kGeneralError) {
      ExamineMessage(*failure);
    }
    if (failure && failure->side == Failure::Side::kWindows && told == undisturbed_ &&
        !IsHarmless(failure->call))
      Find("nobody is told");

    // Neither is promised where the host doesn't tell the old one, or refuses to go back.
    const std::string failed = failure ? failure->call : "";
    const Surroundings after = Look();
    if (after.directory != before_.directory && !failed.starts_with("ProDirectory"))
      Find("the working directory stays changed");
    if (after.model == before_.model && after.view != before_.view && !failed.starts_with("ProViewMatrix"))
      Find("the view stays turned");
    const std::string operation = EncodeUtf8(run_.step.operation);
    if (!result_.success && after.model == before_.model && after.features != before_.features &&
        !MayChange(operation, failed, before_.features, after.features))
      Find("features were " + EncodeUtf8(before_.features) + "and are " + EncodeUtf8(after.features));
    // Undoing sets the steps aside that it can't take back.
    if (!result_.success && after.undo_steps != before_.undo_steps && !operation.starts_with("api_document_"))
      Find("the history was changed");

    Probe(L"api_document_list_open");
    if (host().CurrentModel() != nullptr) Probe(L"api_document_info");
  }

  Surroundings Look() {
    Surroundings found{bench::WorkingDirectory(), host().CurrentModel(), {}, {}, UndoStack().size()};
    if (found.model == nullptr) return found;
    found.view = found.model->view;
    for (const auto& feature : found.model->features)
      found.features += Format(L"%d %s %d; ", feature->id, feature->name, static_cast<int>(feature->status));
    return found;
  }

  void Probe(const wchar_t* operation) {
    if (const auto result = Run(operation); !result.success)
      Find(EncodeUtf8(operation) + " fails afterwards: " + EncodeUtf8(result.message));
  }

  const FaultRun& run_;
  Surroundings before_;
  CreoMcpOperationResult result_;
  std::wstring undisturbed_;
  std::string undisturbed_message_;
  std::set<const ToldFailure*> met_;
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
