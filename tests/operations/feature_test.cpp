#include "tests/operations/feature_test.h"

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/call_frame.h"

namespace vek::support {
namespace {

std::string ValueText(const bench::ElementNode& node) {
  if (const int* number = std::get_if<int>(&node.value)) return "=" + std::to_string(*number);
  if (const double* number = std::get_if<double>(&node.value)) return "=" + bench::Describe(*number);
  return {};
}

void AddRows(const bench::ElementNode& node, const std::string& path, std::vector<std::string>& rows) {
  const std::string here = path + std::to_string(node.id);
  rows.push_back(here + ValueText(node));
  if (node.id == 447) return;
  for (const auto& child : node.children) AddRows(*child, here + "/", rows);
}

std::wstring LineArguments(const std::wstring& sketch, double x1, double y1, double x2, double y2,
                           const std::wstring& more) {
  return Format(LR"({"sketch_name":"%s","x1":%s,"y1":%s,"x2":%s,"y2":%s%s})", sketch, Number(x1), Number(y1),
                Number(x2), Number(y2), more);
}

}  // namespace

bench::Feature& FeatureTest::AddFeature(ProFeattype type, const std::wstring& name) {
  auto feature = std::make_unique<bench::Feature>();
  feature->id = Current().next_id++;
  feature->type = type;
  feature->name = name;
  Current().features.push_back(std::move(feature));
  return *Current().features.back();
}

ProFeature FeatureTest::HandleOf(const bench::Feature& feature) {
  return {PRO_FEATURE, feature.id, bench::Handle(Current())};
}

void FeatureTest::NewSketch(const std::wstring& name, const std::wstring& plane) {
  Succeed(L"api_sketch_create", Format(LR"({"name":"%s","plane":"%s"})", name, plane));
}

void FeatureTest::Circle(const std::wstring& sketch, double cx, double cy, double radius) {
  Succeed(L"api_sketch_circle_center_radius", Format(LR"({"sketch_name":"%s","cx":%s,"cy":%s,"radius":%s})",
                                                     sketch, Number(cx), Number(cy), Number(radius)));
}

void FeatureTest::Line(const std::wstring& sketch, double x1, double y1, double x2, double y2) {
  Succeed(L"api_sketch_line_two_points", LineArguments(sketch, x1, y1, x2, y2, L""));
}

void FeatureTest::Centerline(const std::wstring& sketch, double x1, double y1, double x2, double y2) {
  Succeed(L"api_sketch_line_two_points", LineArguments(sketch, x1, y1, x2, y2, L",\"centerline\":true"));
}

void FeatureTest::ConstructionLine(const std::wstring& sketch, double x1, double y1, double x2, double y2) {
  Succeed(L"api_sketch_polyline",
          Format(LR"({"sketch_name":"%s","points":[[%s,%s],[%s,%s]],"construction":true})", sketch,
                 Number(x1), Number(y1), Number(x2), Number(y2)));
}

std::vector<bench::SectionEntity> FeatureTest::EntitiesOf(const std::wstring& sketch, Pro2dEntType type) {
  std::vector<bench::SectionEntity> entities;
  const bench::Feature* feature = FeatureNamed(sketch);
  if (feature == nullptr || !feature->section) {
    ADD_FAILURE() << "no section of " << EncodeUtf8(sketch);
    return entities;
  }
  for (const auto& [id, entity] : feature->section->entities)
    if (entity.type == type) entities.push_back(entity);
  return entities;
}

FeatureTest::ModelState FeatureTest::State() {
  ModelState state;
  for (const auto& feature : Current().features)
    state.features.push_back(Format(L"%d %s %d", feature->id, feature->name, feature->status));
  if (const auto& mass = Current().topology.mass) state.volume = mass->volume;
  state.undo_steps = UndoStack().size();
  return state;
}

std::vector<std::string> RowsOf(const bench::Feature& feature) {
  std::vector<std::string> rows;
  if (feature.tree) AddRows(*feature.tree, "", rows);
  return rows;
}

void ExpectFailureStart(const CreoMcpOperationResult& result, const std::wstring& start) {
  EXPECT_FALSE(result.success);
  EXPECT_EQ(result.dataJson, L"null");
  EXPECT_EQ(EncodeUtf8(result.message.substr(0, start.size())), EncodeUtf8(start));
}

}  // namespace vek::support
