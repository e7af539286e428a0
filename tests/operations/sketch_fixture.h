// A part with a sketch in it, and looks at what the sketch has become.
#pragma once

#include <cstddef>
#include <string>

#include "addin/ops/sketch/session.h"
#include "bench/host/model/section_data.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

class SketchTest : public OperationTest {
 protected:
  // Creates a sketch on a plane of the active part.
  void CreateSketch(const std::wstring& name, const std::wstring& plane = L"XY");
  // Runs a drawing operation on the sketch with more arguments, such as `"x":1,"y":2`, and gives the labels.
  std::wstring Draw(const std::wstring& operation, const std::wstring& sketch, const std::wstring& arguments);
  // A point, drawn for the sake of its commit.
  CreoMcpOperationResult DrawPoint(const std::wstring& sketch);

  sketch::SketchSession& Session(const std::wstring& name);
  // The section of the sketch's feature in the model. Its entity 1 is the seed.
  const bench::SectionData& Section(const std::wstring& sketch);
  const bench::SectionEntity& Entity(const std::wstring& sketch, int id);
};

// A part with the sketch "S" in it, whose commits are to be looked at.
class CommittedSketchTest : public SketchTest {
 protected:
  void SetUp() override;
  // The sketch has no feature in the model, and its geometry is still there.
  void ExpectUncommitted(std::size_t entities);

  std::size_t features_before_ = 0;  // that of the sketch included
};

// A line, centerline or point pair within 1e-9 of these coordinates.
void ExpectEnds(const bench::SectionEntity& entity, Pro2dEntType type, bench::Point2 first,
                bench::Point2 second);
void ExpectPoint(const bench::Point2& point, double x, double y);
void ExpectArc(const bench::SectionEntity& entity, bench::Point2 center, double radius, double start,
               double end);

}  // namespace vek::support
