// Every operation runs into a kernel that is gone and can't be started: an answer with a message, nothing
// held, the models that were there are there, and what they were is made again once there is a kernel.
#include <algorithm>
#include <cstdlib>

#include "addin/ops/drawing/drawing_source.h"
#include "addin/text/utf8.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {
namespace {

class KernelAbsence : public OperationTest {
 public:
  explicit KernelAbsence(const FaultRun& run) : run_(run) {}

 private:
  struct Known {
    std::vector<int> features;
    double volume = 0;
  };

  void TestBody() override {
    drawing::PendingSource() = {};
    for (const Step& step : run_.ground) Succeed(step.operation, Filled(step.arguments, directory()));
    const std::wstring program = DecodeUtf8(std::getenv("VEK_BENCH_KERNEL"));
    const auto before = Models();

    host().kernel.SetProgram(L"");
    const auto result = Run(run_.step.operation, Filled(run_.step.arguments, directory()));
    EXPECT_FALSE(result.message.empty());
    EXPECT_EQ(result.message.find(L"' threw"), std::wstring::npos) << EncodeUtf8(result.message);
    EXPECT_TRUE(nlohmann::json::accept(EncodeUtf8(result.dataJson))) << EncodeUtf8(result.dataJson);
    if (!result.success) ExpectSame(before, Models(), EncodeUtf8(result.message));

    host().kernel.SetProgram(program);
    if (host().CurrentModel() != nullptr && Current().type != PRO_MDL_DRAWING)
      Succeed(L"api_document_rebuild");
  }

  std::vector<Known> Models() {
    std::vector<Known> models;
    for (const bench::Model* const model : host().session.All()) {
      Known& known = models.emplace_back();
      for (const auto& feature : model->features) known.features.push_back(feature->id);
      if (model->topology.mass) known.volume = model->topology.mass->volume;
    }
    return models;
  }

  // What stood before stands, and looks as it did. A commit takes the old feature of its sketch away first,
  // and brings one back the next time.
  void ExpectSame(const std::vector<Known>& before, const std::vector<Known>& after,
                  const std::string& message) {
    const bool commits = run_.step.operation.starts_with(L"api_sketch_");
    ASSERT_GE(after.size(), before.size()) << message;
    for (std::size_t i = 0; i < before.size(); ++i) {
      EXPECT_EQ(after[i].volume, before[i].volume) << message;
      for (const int feature : before[i].features)
        EXPECT_TRUE(commits || std::ranges::count(after[i].features, feature) == 1)
            << feature << " is gone: " << message;
    }
  }

  const FaultRun& run_;
};

}  // namespace

void RegisterKernelAbsences() {
  static const std::vector<FaultRun> runs = ReadFaultRuns();
  int number = 0;
  for (const FaultRun& run : runs) {
    const std::string name = EncodeUtf8(run.step.operation).substr(4) + "_" + std::to_string(++number);
    if (!run.detours.empty()) continue;
    testing::RegisterTest("KernelAbsence", name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [&run]() -> KernelAbsence* { return new KernelAbsence(run); });
  }
}

}  // namespace vek::support
