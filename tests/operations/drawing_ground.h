// A slab, the templates of a test, and a drawing of the slab.
#pragma once

#include <gmock/gmock.h>

#include <windows.h>

#include <fstream>

#include "addin/ops/drawing/drawing_source.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/drawing/projection.h"
#include "tests/support/captured_log.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

// A template with one sheet.
inline constexpr const char* kOneSheet =
    R"({"format":"creobench drawing template","version":1,"views":[],)"
    R"("sheets":[{"size":"A3","width":420,"height":297,"border":10,"scale":1}]})";

class DrawingTest : public OperationTest {
 protected:
  void SetUp() override {
    OperationTest::SetUp();
    // The only templates are those that a test puts into its directory.
    ::SetEnvironmentVariableW(L"PRO_DIRECTORY", nullptr);
    drawing::PendingSource() = {};
  }
  void TearDown() override {
    drawing::PendingSource() = {};
    OperationTest::TearDown();
  }

  void Template(const std::wstring& file, const char* text = kOneSheet) {
    std::filesystem::create_directories((directory() / file).parent_path());
    std::ofstream(directory() / (file + L".drw")) << text;
  }

  // 40 mm along x, 30 mm along y, 10 mm along z; the datum planes halve it.
  // It is `part()` from then on.
  bench::Model& Slab() {
    part_ = &NewPart();
    // Sketches of all parts share their names.
    Rectangle(part_name(), L"XY", -20, -15, 20, 15);
    Succeed(L"api_feature_extrude",
            Format(LR"({"sketch_name":"%s","distance_mm":10,"both_sides":true})", part_name()));
    return *part_;
  }

  // The drawing of a new slab, without views.
  void SlabDrawing() {
    Slab();
    Template(L"a3_drawing");
    Succeed(L"api_drawing_create");
  }
  // The same with a front view around (100, 150).
  void SlabWithBaseView(double scale = 1) {
    SlabDrawing();
    Succeed(L"api_drawing_add_base_view", Format(LR"({"scale":%s})", Number(scale)));
  }

  bench::Model& part() { return *part_; }
  const std::wstring& part_name() { return part_->name; }
  // The id of the surface that is TOP's.
  int FindTop() {
    for (const auto& feature : part().features)
      if (feature->name == L"TOP")
        for (const auto& item : feature->items)
          if (item.type == PRO_SURFACE) return item.id;
    return -1;
  }
  bench::Drawing& sheets() {
    if (!Current().drawing) throw std::logic_error("no drawing is current");
    return *Current().drawing;
  }
  bench::DrawingView& LastView() { return *sheets().views.back(); }

  // The middle of the last view's outline, and its width and height.
  void ExpectLastView(const bench::Vector2& middle, const bench::Vector2& size) {
    const bench::Rectangle box = bench::OutlineOf(sheets(), LastView());
    for (int i = 0; i < 2; ++i) {
      EXPECT_NEAR(box.Middle()[i], middle[i], 1e-6) << "axis " << i;
      EXPECT_NEAR(box.high[i] - box.low[i], size[i], 1e-6) << "axis " << i;
    }
  }

  // The message of a successful run.
  std::string Message(const std::wstring& operation, const std::wstring& arguments = L"{}") {
    const auto result = Run(operation, arguments);
    EXPECT_TRUE(result.success);
    return EncodeUtf8(result.message);
  }

  static int CountLogged(const std::wstring& message) { return CountCaptured(L"CreoMcpDrawing: " + message); }

 private:
  bench::Model* part_ = nullptr;
};

}  // namespace vek::support
