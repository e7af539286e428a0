#include "tests/operations/sketch_fixture.h"

#include <stdexcept>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/support/captured_log.h"

namespace vek::support {

void SketchTest::CreateSketch(const std::wstring& name, const std::wstring& plane) {
  Succeed(L"api_sketch_create", Format(LR"({"name":"%s","plane":"%s"})", name, plane));
}

std::wstring SketchTest::Draw(const std::wstring& operation, const std::wstring& sketch,
                              const std::wstring& arguments) {
  const auto data = Succeed(operation, Format(LR"({"sketch_name":"%s",%s})", sketch, arguments));
  return data.is_object() ? DecodeUtf8(data.value("entity", "")) : std::wstring();
}

CreoMcpOperationResult SketchTest::DrawPoint(const std::wstring& sketch) {
  return Run(L"api_sketch_point", Format(LR"({"sketch_name":"%s","x":1,"y":2})", sketch));
}

sketch::SketchSession& SketchTest::Session(const std::wstring& name) {
  sketch::SketchSession* const session = sketch::FindSketchSession(name);
  if (session == nullptr) throw std::logic_error("no such sketch session");
  return *session;
}

const bench::SectionData& SketchTest::Section(const std::wstring& sketch) {
  const bench::Feature* const feature = FeatureNamed(sketch);
  if (feature == nullptr || !feature->section) throw std::logic_error("no such sketch feature");
  return *feature->section;
}

const bench::SectionEntity& SketchTest::Entity(const std::wstring& sketch, int id) {
  return Section(sketch).entities.at(id);
}

void CommittedSketchTest::SetUp() {
  SketchTest::SetUp();
  NewPart();
  CreateSketch(L"S");
  features_before_ = Current().features.size();
  ClearCapturedLog();
}

void CommittedSketchTest::ExpectUncommitted(std::size_t entities) {
  EXPECT_FALSE(Session(L"S").has_feature);
  EXPECT_EQ(Session(L"S").feature.id, 0);
  EXPECT_EQ(Session(L"S").entities.size(), entities);
  EXPECT_EQ(Current().features.size(), features_before_ - 1);
}

void ExpectPoint(const bench::Point2& point, double x, double y) {
  EXPECT_NEAR(point[0], x, 1e-9);
  EXPECT_NEAR(point[1], y, 1e-9);
}

void ExpectEnds(const bench::SectionEntity& entity, Pro2dEntType type, bench::Point2 first,
                bench::Point2 second) {
  EXPECT_EQ(entity.type, type);
  ExpectPoint(entity.first, first[0], first[1]);
  ExpectPoint(entity.second, second[0], second[1]);
}

void ExpectArc(const bench::SectionEntity& entity, bench::Point2 center, double radius, double start,
               double end) {
  EXPECT_EQ(entity.type, PRO_2D_ARC);
  ExpectPoint(entity.first, center[0], center[1]);
  EXPECT_NEAR(entity.radius, radius, 1e-9);
  EXPECT_NEAR(entity.start_angle, start, 1e-12);
  EXPECT_NEAR(entity.end_angle, end, 1e-12);
}

}  // namespace vek::support
