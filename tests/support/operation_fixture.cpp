#include "tests/support/operation_fixture.h"

#include <ProUtil.h>

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

#include "addin/host/text_buffer.h"
#include "addin/operations.h"
#include "addin/ops/common/history.h"
#include "addin/ops/sketch/session.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

// A kernel serves all tests of the process: it keeps nothing between two requests but a cache.
void UseKernelOfEnvironment() {
  static bool done = false;
  if (done) return;
  const char* const program = std::getenv("VEK_BENCH_KERNEL");
  ASSERT_NE(program, nullptr) << "VEK_BENCH_KERNEL must name the geometry kernel's program";
  bench::TheHost().kernel.SetProgram(DecodeUtf8(program));
  done = true;
}

std::filesystem::path NewTestDirectory() {
  static int count = 0;
  const auto path = std::filesystem::temp_directory_path() /
                    Format(L"vek_operations_%lu_%d", ::GetCurrentProcessId(), ++count);
  std::filesystem::create_directories(path);
  return path;
}

void Enter(const std::filesystem::path& directory) {
  ProPath buffer;
  ASSERT_TRUE(CopyWhole(buffer, directory.wstring()));
  ASSERT_EQ(ProDirectoryChange(buffer), PRO_TK_NO_ERROR);
}

// What outlives an operation in the add-in.
void ForgetState() {
  ClearHistory();
  HistoryReplaying = false;
  sketch::SketchSessionTable().clear();
  sketch::SketchNameCounter = 0;
}

}  // namespace

std::wstring Number(double value) {
  // As many digits as bring the same number back.
  char text[32];
  std::snprintf(text, sizeof(text), "%.17g", value);
  return std::wstring(text, text + std::char_traits<char>::length(text));
}

void OperationTest::SetUp() {
  host().Reset();
  ASSERT_NO_FATAL_FAILURE(UseKernelOfEnvironment());
  ForgetState();
  ClearCapturedLog();
  directory_ = NewTestDirectory();
  ASSERT_NO_FATAL_FAILURE(Enter(directory_));
  provider_ = BuildProvider();
}

void OperationTest::TearDown() {
  host().faults.Clear();
  for (const auto& [kind, count] : host().ledger.Outstanding())
    ADD_FAILURE() << count << " outstanding of kind " << bench::Name(kind);
  for (const std::string& violation : host().ledger.Violations()) ADD_FAILURE() << violation;
  if (HasFailure())
    for (const std::string& line : host().announcements.Lines()) std::cerr << "host: " << line << '\n';

  ForgetState();
  host().Reset();
  Enter(std::filesystem::temp_directory_path());
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
}

CreoMcpOperationResult OperationTest::Run(const std::wstring& name, const std::wstring& arguments) {
  return provider_.Dispatch(name, arguments);
}

nlohmann::json OperationTest::Succeed(const std::wstring& name, const std::wstring& arguments) {
  const CreoMcpOperationResult result = Run(name, arguments);
  EXPECT_TRUE(result.success) << EncodeUtf8(name + L" " + arguments + L": " + result.message);
  auto data = nlohmann::json::parse(EncodeUtf8(result.dataJson), nullptr, false);
  EXPECT_FALSE(data.is_discarded()) << EncodeUtf8(result.dataJson) << " is no JSON";
  return data;
}

void OperationTest::ExpectAnswer(const std::wstring& name, const std::wstring& arguments,
                                 const std::wstring& message, const std::wstring& data) {
  const CreoMcpOperationResult result = Run(name, arguments);
  EXPECT_TRUE(result.success) << EncodeUtf8(name + L" " + arguments);
  EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
  EXPECT_EQ(EncodeUtf8(result.dataJson), EncodeUtf8(data));
}

void OperationTest::ExpectFailure(const std::wstring& name, const std::wstring& arguments,
                                  const std::wstring& message) {
  const CreoMcpOperationResult result = Run(name, arguments);
  EXPECT_FALSE(result.success) << EncodeUtf8(name + L" " + arguments);
  EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
  EXPECT_EQ(result.dataJson, L"null");
}

bench::Model& OperationTest::NewPart() {
  Succeed(L"api_document_new_part");
  return Current();
}

bench::Model& OperationTest::NewAssembly() {
  Succeed(L"api_document_new_assembly");
  return Current();
}

bench::Model& OperationTest::AddModel(const std::wstring& name, ProMdlType type) {
  auto model = std::make_unique<bench::Model>();
  model->name = name;
  model->type = type;
  return host().session.Add(std::move(model));
}

bench::Model& OperationTest::Current() {
  bench::Model* const model = host().CurrentModel();
  if (model == nullptr) throw std::logic_error("no model is current");
  return *model;
}

void OperationTest::Rectangle(const std::wstring& sketch, const std::wstring& plane, double x1, double y1,
                              double x2, double y2) {
  Succeed(L"api_sketch_create",
          Format(LR"({"name":"%s","plane":"%s"})", JsonEscape(sketch), JsonEscape(plane)));
  Succeed(L"api_sketch_rectangle_two_points",
          Format(LR"({"sketch_name":"%s","x1":%s,"y1":%s,"x2":%s,"y2":%s})", JsonEscape(sketch), Number(x1),
                 Number(y1), Number(x2), Number(y2)));
}

std::wstring OperationTest::Block(double width_mm, double height_mm, double depth_mm) {
  Rectangle(L"BLOCK", L"XY", 0, 0, width_mm, height_mm);
  const auto data = Succeed(L"api_feature_extrude",
                            Format(LR"({"sketch_name":"BLOCK","distance_mm":%s})", Number(depth_mm)));
  return data.is_object() ? DecodeUtf8(data.value("feature_name", "")) : std::wstring();
}

double OperationTest::Volume() {
  const auto& mass = Current().topology.mass;
  EXPECT_TRUE(mass.has_value()) << "the model has no body";
  return mass ? mass->volume : 0;
}

double OperationTest::Area() {
  const auto& mass = Current().topology.mass;
  EXPECT_TRUE(mass.has_value()) << "the model has no body";
  return mass ? mass->area : 0;
}

bench::Box OperationTest::Outline() {
  const auto& outline = Current().topology.outline;
  EXPECT_TRUE(outline.has_value()) << "the model has no body";
  return outline.value_or(bench::Box{});
}

bench::Feature* OperationTest::FeatureNamed(const std::wstring& name) {
  for (const auto& feature : Current().features)
    if (feature->name == name) return feature.get();
  return nullptr;
}

std::vector<std::string> OperationTest::CallsSince(std::uint64_t mark) {
  std::vector<std::string> calls;
  for (const auto& entry : host().journal.Since(mark)) calls.push_back(entry.name);
  return calls;
}

std::vector<std::string> OperationTest::CallsSince(std::uint64_t mark,
                                                   const std::vector<std::string>& names) {
  std::vector<std::string> calls = CallsSince(mark);
  std::erase_if(calls, [&](const std::string& call) { return std::ranges::count(names, call) == 0; });
  return calls;
}

std::wstring OperationTest::JsonPath(const std::wstring& file) const {
  return JsonEscape(Full(file));
}

std::string OperationTest::Bytes(const std::wstring& file) const {
  std::ifstream stream(directory_ / file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

}  // namespace vek::support
