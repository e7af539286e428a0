#include "tests/operations/feature_test.h"

#include <algorithm>
#include <variant>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/instruments/call_frame.h"
#include "tests/support/captured_log.h"

namespace vek::support {

void FeatureTest::SetUp() {
  OperationTest::SetUp();
  NewPart();
}

void FeatureTest::NewSketch(const std::wstring& name, const std::wstring& plane) {
  Succeed(L"api_sketch_create", Format(LR"({"name":"%s","plane":"%s"})", name, plane));
}

void FeatureTest::Draw(const std::wstring& operation, const std::wstring& sketch,
                       const std::wstring& arguments) {
  Succeed(operation, Format(LR"({"sketch_name":"%s",%s})", sketch, arguments));
}

void FeatureTest::DrawCircle(const std::wstring& sketch) {
  Draw(L"api_sketch_circle_center_radius", sketch, LR"("cx":4,"cy":0,"radius":1)");
}

void FeatureTest::DrawAxis(const std::wstring& sketch, int up) {
  Draw(L"api_sketch_line_two_points", sketch,
       Format(LR"("x1":0,"y1":%d,"x2":0,"y2":%d,"centerline":true)", -5 * up, 5 * up));
}

std::wstring FeatureTest::Create(const std::wstring& operation, const std::wstring& arguments) {
  const auto data = Succeed(operation, arguments);
  return data.is_object() ? DecodeUtf8(data.value("feature_name", "")) : std::wstring();
}

void FeatureTest::Delete(const std::wstring& feature) {
  Succeed(L"api_feature_delete", Format(LR"({"feature_name":"%s"})", feature));
}

void FeatureTest::ExpectSolid(const SketchFrame& frame, const SolidSum& expected, const bench::Box& outline) {
  EXPECT_NEAR(Volume(), expected.volume, 1e-6 * expected.volume);
  const Vector3 mass_center = Current().topology.mass.value_or(bench::MassProperties{}).center;
  const Vector3 center = frame.Place(expected.Center());
  const bench::Box wanted = frame.Place(outline), box = Outline();
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(mass_center[i], center[i], 1e-5) << "axis " << i;
    EXPECT_NEAR(box.low[i], wanted.low[i], 1e-5) << "axis " << i;
    EXPECT_NEAR(box.high[i], wanted.high[i], 1e-5) << "axis " << i;
  }
}

FeatureTest::ModelState FeatureTest::State() {
  ModelState state;
  for (const auto& feature : Current().features)
    state.features.push_back(Format(L"%d %s %d", feature->id, feature->name, feature->status));
  if (const auto& mass = Current().topology.mass) state.volume = mass->volume;
  state.undo_steps = UndoStack().size();
  return state;
}

void FeatureTest::ExpectCreated(const CreoMcpOperationResult& result, const std::wstring& name,
                                const std::wstring& message) {
  EXPECT_TRUE(result.success);
  EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
  EXPECT_EQ(result.dataJson, Format(LR"({"feature_name":"%s"})", name));
  ASSERT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(UndoStack().back().label, L"Create " + name);
  ClearHistory();
}

void FeatureTest::ExpectRefusals(const std::vector<Refusal>& refusals) {
  const ModelState before = State();
  for (const auto& [operation, arguments, message] : refusals) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    ExpectFailure(operation, arguments, message);
    EXPECT_EQ(State(), before);
  }
}

// What the first and the last steps of every operation answer, which have tests of their own.
static bool IsAnswerOfAny(const std::string& message) {
  return message == "No active Creo document." || message == "Failed to determine active document type." ||
         message == "Failed to visit features (status=-8)." ||
         message == "Failed to select the active part for feature creation." ||
         message == "Failed to allocate feature create options." ||
         message.find("' not found.") != std::string::npos;
}

void FeatureTest::ExpectFailures(const std::wstring& operation, const std::wstring& arguments,
                                 const std::vector<std::wstring>& messages, std::size_t staying,
                                 const std::function<void()>& prepare) {
  std::vector<std::string> calls, told;
  // The first run is without a failure and gives the calls.
  for (std::size_t number = 0; number <= calls.size(); ++number) {
    SCOPED_TRACE(EncodeUtf8(operation) + " call " + std::to_string(number) +
                 (number > 0 ? " " + calls[number - 1] : ""));
    prepare();
    const ModelState before = State();
    const auto mark = host().journal.Mark();
    if (number > 0) faults().FailNumber(static_cast<int>(number), PRO_TK_BAD_CONTEXT);
    const auto result = Run(operation, arguments);
    faults().Clear();
    EXPECT_FALSE(result.message.empty());
    EXPECT_TRUE(host().ledger.Outstanding().empty());
    EXPECT_TRUE(host().ledger.Violations().empty());
    if (number == 0) {
      ASSERT_TRUE(result.success) << EncodeUtf8(result.message);
      calls = CallsSince(mark);
      std::erase_if(calls, [](const std::string& call) { return call.ends_with("Free"); });
    }
    if (!result.success) {
      if (staying == 0) {
        EXPECT_EQ(State(), before) << EncodeUtf8(result.message);
      }
      EXPECT_LE(Current().features.size(), before.features.size() + staying);
      EXPECT_EQ(UndoStack().size(), before.undo_steps);
      const std::string message = EncodeUtf8(result.message);
      if (!IsAnswerOfAny(message) && !std::ranges::count(told, message)) told.push_back(message);
    }
    while (Current().features.size() > before.features.size()) {
      const bench::Feature& newest = *Current().features.back();
      Delete(newest.name.empty() ? Format(L"%s_%d", feature::FeatureTypeWord(newest.type), newest.id)
                                 : std::wstring(newest.name));
      if (HasFailure()) return;
    }
  }
  std::vector<std::string> expected;
  for (const std::wstring& message : messages) expected.push_back(EncodeUtf8(message));
  EXPECT_EQ(told, expected);
}

void FeatureTest::ExpectHostRefusal(const std::wstring& operation, const std::wstring& sketch,
                                    const std::wstring& more) {
  SCOPED_TRACE(EncodeUtf8(sketch + L" " + more));
  const ModelState before = State();
  ClearCapturedLog();
  const auto result = Run(operation, Format(LR"({"sketch_name":"%s"%s})", sketch, more));
  EXPECT_FALSE(result.success);
  EXPECT_EQ(result.dataJson, L"null");
  const std::size_t from = std::min(result.message.find(L"status=-"), result.message.size());
  const std::wstring status = result.message.substr(from, result.message.find(L',', from) - from);
  EXPECT_EQ(EncodeUtf8(result.message),
            EncodeUtf8(Format(L"Creo could not create the feature from sketch '%s' (%s, errors=1).", sketch,
                              status)));
  EXPECT_EQ(
      CountCaptured(Format(L"Feature Create (sketched): %s errCount=1 featId=0 sketch='%s'", status, sketch)),
      1);
  EXPECT_EQ(State(), before);
}

namespace {

std::string NodeText(const bench::ElementNode& node) {
  std::string text = std::to_string(node.id);
  if (const int* number = std::get_if<int>(&node.value)) text += "=" + std::to_string(*number);
  if (const double* number = std::get_if<double>(&node.value)) text += "=" + bench::Describe(*number);
  if (const auto* items = std::get_if<std::vector<bench::ItemReference>>(&node.value))
    text += "=@" + std::to_string(items->size());
  if (const auto* collection = std::get_if<bench::Collection>(&node.value))
    for (const auto& instruction : collection->instructions)
      text += (&instruction == &collection->instructions.front() ? "=" : "+") +
              std::to_string(instruction.type) + (instruction.include ? "" : "-");
  if (node.id == 447 || node.children.empty()) return text;
  std::string children;
  for (const auto& child : node.children) children += (children.empty() ? "" : " ") + NodeText(*child);
  return text + "(" + children + ")";
}

}  // namespace

std::string TreeOf(const bench::Feature* feature) {
  return feature != nullptr && feature->tree ? NodeText(*feature->tree) : "none";
}

}  // namespace vek::support
