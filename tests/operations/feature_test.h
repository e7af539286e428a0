// What the tests of the feature family share beyond the fixture of all operations: solids as sums of pieces
// that are worked out by hand, an empty part, sketches in it, and looks at what came of an operation.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <variant>
#include <vector>

#include "addin/ops/common/history.h"
#include "addin/ops/feature/frame.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/feature.h"
#include "bench/host/model/vector3.h"
#include "tests/operations/sketch_fixture.h"

namespace vek::support {

using bench::Vector3;

// Volume, and volume times centre of mass.
struct SolidSum {
  double volume = 0;
  Vector3 moment{0, 0, 0};

  Vector3 Center() const { return {moment[0] / volume, moment[1] / volume, moment[2] / volume}; }
};

inline SolidSum operator+(const SolidSum& a, const SolidSum& b) {
  return {a.volume + b.volume,
          {a.moment[0] + b.moment[0], a.moment[1] + b.moment[1], a.moment[2] + b.moment[2]}};
}

inline SolidSum operator-(const SolidSum& a, const SolidSum& b) {
  return {a.volume - b.volume,
          {a.moment[0] - b.moment[0], a.moment[1] - b.moment[1], a.moment[2] - b.moment[2]}};
}

inline SolidSum BoxPiece(const Vector3& low, const Vector3& high) {
  const double volume = (high[0] - low[0]) * (high[1] - low[1]) * (high[2] - low[2]);
  SolidSum sum{volume, {}};
  for (int i = 0; i < 3; ++i) sum.moment[i] = volume * (low[i] + high[i]) / 2;
  return sum;
}

// A sketch plane of the start template in the axes of the model.
struct SketchFrame {
  const wchar_t* plane;
  Vector3 s, t, w;

  Vector3 Place(const Vector3& local) const {
    Vector3 place{};
    for (int i = 0; i < 3; ++i) place[i] = s[i] * local[0] + t[i] * local[1] + w[i] * local[2];
    return place;
  }
  bench::Box Place(const bench::Box& local) const {
    const Vector3 a = Place(local.low), b = Place(local.high);
    bench::Box box;
    for (int i = 0; i < 3; ++i) {
      box.low[i] = std::min(a[i], b[i]);
      box.high[i] = std::max(a[i], b[i]);
    }
    return box;
  }
};

// FRONT has the normal +Z and TOP +Y, both with +X to the right of the sketch; RIGHT has the normal +X and +Y
// up. What is left follows from s × t = w: up is +Y on FRONT and -Z on TOP, and right is -Z on RIGHT.
inline constexpr SketchFrame kFront{L"FRONT", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
inline constexpr SketchFrame kTop{L"TOP", {1, 0, 0}, {0, 0, -1}, {0, 1, 0}};
inline constexpr SketchFrame kRight{L"RIGHT", {0, 0, -1}, {0, 1, 0}, {1, 0, 0}};

// A request that is refused.
struct Refusal {
  const wchar_t* operation;
  const wchar_t* arguments;
  const wchar_t* message;
};

class FeatureTest : public SketchTest {
 protected:
  void SetUp() override {
    SketchTest::SetUp();
    NewPart();
  }

  // About (4, 0) with the radius 1.
  void DrawCircle(const std::wstring& sketch) {
    Draw(L"api_sketch_circle_center_radius", sketch, LR"("cx":4,"cy":0,"radius":1)");
  }
  void DrawAxis(const std::wstring& sketch, int up = 1) {
    Draw(L"api_sketch_line_two_points", sketch,
         Format(LR"("x1":0,"y1":%d,"x2":0,"y2":%d,"centerline":true)", -5 * up, 5 * up));
  }

  // Runs an operation that makes a feature. Gives the feature's name, or nothing when it failed.
  std::wstring Create(const std::wstring& operation, const std::wstring& arguments) {
    const auto data = Succeed(operation, arguments);
    return data.is_object() ? DecodeUtf8(data.value("feature_name", "")) : std::wstring();
  }
  void Delete(const std::wstring& feature) {
    Succeed(L"api_feature_delete", Format(LR"({"feature_name":"%s"})", feature));
  }

  // The model against numbers worked out by hand, which are those of the sketch's frame.
  void ExpectSolid(const SketchFrame& frame, const SolidSum& expected, const bench::Box& outline) {
    EXPECT_NEAR(Volume(), expected.volume, 1e-6 * expected.volume);
    const Vector3 mass_center = Current().topology.mass.value_or(bench::MassProperties{}).center;
    const Vector3 center = frame.Place(expected.Center());
    EXPECT_THAT(mass_center, testing::Pointwise(testing::DoubleNear(1e-5), center));
    ExpectBox(frame.Place(outline), 1e-5);
  }
  void ExpectBox(const bench::Box& expected, double tolerance = 1e-6) {
    const bench::Box box = Outline();
    EXPECT_THAT(box.low, testing::Pointwise(testing::DoubleNear(tolerance), expected.low));
    EXPECT_THAT(box.high, testing::Pointwise(testing::DoubleNear(tolerance), expected.high));
  }

  // What must be the same after an operation that failed.
  struct ModelState {
    std::vector<std::wstring> features;
    double volume = 0;
    std::size_t undo_steps = 0;
    bool operator==(const ModelState&) const = default;
  };
  ModelState State() {
    ModelState state;
    for (const auto& feature : Current().features)
      state.features.push_back(Format(L"%d %s %d", feature->id, feature->name, feature->status));
    if (const auto& mass = Current().topology.mass) state.volume = mass->volume;
    state.undo_steps = UndoStack().size();
    return state;
  }

  // One new feature, told, and as the only step of the history, which is forgotten.
  void ExpectCreated(const CreoMcpOperationResult& result, const std::wstring& name,
                     const std::wstring& message) {
    EXPECT_TRUE(result.success);
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
    EXPECT_EQ(result.dataJson, Format(LR"({"feature_name":"%s"})", name));
    ASSERT_EQ(UndoStack().size(), 1u);
    EXPECT_EQ(UndoStack().back().label, L"Create " + name);
    ClearHistory();
  }
  void ExpectRefusals(const std::vector<Refusal>& refusals) {
    const ModelState before = State();
    for (const auto& [operation, arguments, message] : refusals) {
      SCOPED_TRACE(EncodeUtf8(arguments));
      ExpectFailure(operation, arguments, message);
      EXPECT_EQ(State(), before);
    }
  }
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

inline std::string NodeText(const bench::ElementNode& node) {
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

// A feature's tree in the form `id=value(children)`, without what the host keeps under the section element. A
// reference element shows how many it holds, a collection the types of its instructions.
inline std::string TreeOf(const bench::Feature* feature) {
  return feature != nullptr && feature->tree ? NodeText(*feature->tree) : "none";
}

}  // namespace vek::support
