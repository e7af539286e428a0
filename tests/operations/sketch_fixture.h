// A part with a sketch in it, and looks at what the sketch has become.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include "addin/ops/sketch/session.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/model/section_data.h"
#include "tests/support/captured_log.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

// What an operation is told beside the sketch's name, such as `"x":1,"y":2`, with that name.
inline std::wstring InSketch(const std::wstring& more, const std::wstring& sketch = L"S") {
  return Format(LR"({"sketch_name":"%s",%s})", sketch, more);
}

class SketchTest : public OperationTest {
 protected:
  // Creates a sketch on a plane of the active part.
  void CreateSketch(const std::wstring& name, const std::wstring& plane = L"XY") {
    Succeed(L"api_sketch_create", Format(LR"({"name":"%s","plane":"%s"})", name, plane));
  }
  // Runs a drawing operation on the sketch, and gives the labels.
  std::wstring Draw(const std::wstring& operation, const std::wstring& sketch, const std::wstring& more) {
    const auto data = Succeed(operation, InSketch(more, sketch));
    return data.is_object() ? DecodeUtf8(data.value("entity", "")) : std::wstring();
  }
  // A point, drawn for the sake of its commit.
  CreoMcpOperationResult DrawPoint(const std::wstring& sketch) {
    return Run(L"api_sketch_point", InSketch(LR"("x":1,"y":2)", sketch));
  }

  sketch::SketchSession& Session(const std::wstring& name) {
    sketch::SketchSession* const session = sketch::FindSketchSession(name);
    if (session == nullptr) throw std::logic_error("no such sketch session");
    return *session;
  }
  // The section of the sketch's feature in the model. Its entity 1 is the seed.
  const bench::SectionData& Section(const std::wstring& sketch) {
    const bench::Feature* const feature = FeatureNamed(sketch);
    if (feature == nullptr || !feature->section) throw std::logic_error("no such sketch feature");
    return *feature->section;
  }
  const bench::SectionEntity& Entity(const std::wstring& sketch, int id) {
    return Section(sketch).entities.at(id);
  }
};

// A part with the sketch "S" in it, whose commits are to be looked at.
class CommittedSketchTest : public SketchTest {
 protected:
  void SetUp() override {
    SketchTest::SetUp();
    NewPart();
    CreateSketch(L"S");
    features_before_ = Current().features.size();
    ClearCapturedLog();
  }
  // The sketch has no feature in the model, and its geometry is still there.
  void ExpectUncommitted(std::size_t entities) {
    EXPECT_FALSE(Session(L"S").has_feature);
    EXPECT_EQ(Session(L"S").feature.id, 0);
    EXPECT_EQ(Session(L"S").entities.size(), entities);
    EXPECT_EQ(Current().features.size(), features_before_ - 1);
  }

  std::size_t features_before_ = 0;  // that of the sketch included
};

inline void ExpectPoint(const bench::Point2& point, double x, double y) {
  EXPECT_NEAR(point[0], x, 1e-9);
  EXPECT_NEAR(point[1], y, 1e-9);
}
// A line, centerline or point pair within 1e-9 of these coordinates.
inline void ExpectEnds(const bench::SectionEntity& entity, Pro2dEntType type, bench::Point2 first,
                       bench::Point2 second) {
  EXPECT_EQ(entity.type, type);
  ExpectPoint(entity.first, first[0], first[1]);
  ExpectPoint(entity.second, second[0], second[1]);
}
inline void ExpectArc(const bench::SectionEntity& entity, bench::Point2 center, double radius, double start,
                      double end) {
  EXPECT_EQ(entity.type, PRO_2D_ARC);
  ExpectPoint(entity.first, center[0], center[1]);
  EXPECT_NEAR(entity.radius, radius, 1e-9);
  EXPECT_NEAR(entity.start_angle, start, 1e-12);
  EXPECT_NEAR(entity.end_angle, end, 1e-12);
}

}  // namespace vek::support
