// What the tests of the feature family share beyond the fixture of all operations: an empty part, sketches in
// it, and looks at what came of an operation.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "addin/ops/common/history.h"
#include "addin/ops/feature/frame.h"
#include "bench/host/model/feature.h"
#include "tests/operations/feature_solid_sums.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

// A request that is refused.
struct Refusal {
  const wchar_t* operation;
  const wchar_t* arguments;
  const wchar_t* message;
};

class FeatureTest : public OperationTest {
 protected:
  void SetUp() override;

  // A sketch with one drawing in it, whose arguments stand beside the sketch's name.
  void NewSketch(const std::wstring& name, const std::wstring& plane);
  void Draw(const std::wstring& operation, const std::wstring& sketch, const std::wstring& arguments);
  void DrawCircle(const std::wstring& sketch);  // about (4, 0) with the radius 1
  void DrawAxis(const std::wstring& sketch, int up = 1);

  // Runs an operation that makes a feature. Gives the feature's name, or nothing when it failed.
  std::wstring Create(const std::wstring& operation, const std::wstring& arguments);
  void Delete(const std::wstring& feature);

  // The model against numbers worked out by hand, which are those of the sketch's frame.
  void ExpectSolid(const SketchFrame& frame, const SolidSum& expected, const bench::Box& outline);

  // What must be the same after an operation that failed.
  struct ModelState {
    std::vector<std::wstring> features;
    double volume = 0;
    std::size_t undo_steps = 0;
    bool operator==(const ModelState&) const = default;
  };
  ModelState State();
  // One new feature, told, and as the only step of the history, which is forgotten.
  void ExpectCreated(const CreoMcpOperationResult& result, const std::wstring& name,
                     const std::wstring& message);
  void ExpectRefusals(const std::vector<Refusal>& refusals);
  // Runs the operation once for each of its toolkit calls, with that call failing with -8. `messages` are
  // what the failures tell, each once, in the order of the calls; what every operation may answer is left
  // out. Each failure leaves the part as it was, but for `staying` features, and nothing is kept of what was
  // taken. `prepare` comes before each run.
  void ExpectFailures(
      const std::wstring& operation, const std::wstring& arguments, const std::vector<std::wstring>& messages,
      std::size_t staying = 0, const std::function<void()>& prepare = [] {});
  // The host refuses the feature, with one error, a log line and numbers of its own.
  void ExpectHostRefusal(const std::wstring& operation, const std::wstring& sketch, const std::wstring& more);
};

// A block from the origin to (40, 20, 10).
class FeatureOnABlock : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    block_ = Block(40, 20, 10);
    ClearHistory();
  }

  std::wstring block_;
};

// A feature's tree in the form `id=value(children)`, without what the host keeps under the section element. A
// reference element shows how many it holds, a collection the types of its instructions.
std::string TreeOf(const bench::Feature* feature);

}  // namespace vek::support
