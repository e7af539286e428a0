// What the tests of the feature family share beyond the fixture of all operations.
#pragma once

#include <string>
#include <vector>

#include "addin/ops/common/history.h"
#include "addin/ops/feature/frame.h"
#include "bench/host/feature.h"
#include "bench/host/section_data.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

class FeatureTest : public OperationTest {
 protected:
  // A feature put at the end of the current part behind the operations' back, without geometry.
  bench::Feature& AddFeature(ProFeattype type, const std::wstring& name);
  // The handle under which the add-in knows a feature of the current part.
  ProFeature HandleOf(const bench::Feature& feature);

  // Sketches on the part's planes, in millimetres.
  void NewSketch(const std::wstring& name, const std::wstring& plane);
  void Circle(const std::wstring& sketch, double cx, double cy, double radius);
  void Line(const std::wstring& sketch, double x1, double y1, double x2, double y2);
  void Centerline(const std::wstring& sketch, double x1, double y1, double x2, double y2);
  void ConstructionLine(const std::wstring& sketch, double x1, double y1, double x2, double y2);

  // The entities of one type in a sketch's feature, in the order of their ids.
  std::vector<bench::SectionEntity> EntitiesOf(const std::wstring& sketch, Pro2dEntType type);

  // What must be the same after an operation that failed.
  struct ModelState {
    std::vector<std::wstring> features;
    double volume = 0;
    std::size_t undo_steps = 0;
    bool operator==(const ModelState&) const = default;
  };
  ModelState State();
};

// A feature's tree from its root down, one text a row: the ids of its parents and its own, and its value.
// What the host keeps under the section element is left out.
std::vector<std::string> RowsOf(const bench::Feature& feature);

// A failure that begins so: the host's own numbers follow.
void ExpectFailureStart(const CreoMcpOperationResult& result, const std::wstring& start);

}  // namespace vek::support
