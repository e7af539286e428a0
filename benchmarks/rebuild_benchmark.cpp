// A tray with forty features that shape it, the sketches behind them not counted: how long it takes to be
// rebuilt by a kernel that knows nothing of it, and to take one more feature.
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "benchmarks/host_in_process.h"

namespace {

using benchmarks::HostInProcess;
using vek::Format;

constexpr double kBudgetMs = 2000;
constexpr int kShapingFeatures = 40;
constexpr int kRounds = 5;

class Tray {
 public:
  // False when a step fails, which is told on standard error.
  bool Build() {
    bool ok = host_.Run(L"api_document_new_part") && BuildWalls() && BuildFloor();
    for (const int x : {-75, -25, 25, 75})
      for (const int y : {-35, 35}) ok = ok && BuildPost(x, y);
    if (ok && features_ != kShapingFeatures) std::fprintf(stderr, "the tray has %d features\n", features_);
    return ok && features_ == kShapingFeatures;
  }

  std::optional<double> RebuildMs() {
    auto& kernel = bench::TheHost().kernel;
    kernel.Stop();
    // The start of the kernel is none of the part's.
    if (!kernel.Ask("regenerate", R"("recipes":[])")) return std::nullopt;
    bench::TheHost().CurrentModel()->geometry = nullptr;
    return host_.Milliseconds(L"api_document_rebuild");
  }

  // A hole beside the earlier ones: where nothing is left to cut, none can be made.
  std::optional<double> OneMoreMs() {
    constexpr int kFirstY = -16, kDistance = 8;
    const std::wstring sketch =
        Sketch(L"api_sketch_point", Format(LR"("x":80,"y":%d)", kFirstY + kDistance * more_++));
    return host_.Milliseconds(L"api_feature_hole",
                              Format(LR"({"sketch_name":"%s","diameter_mm":5,"depth_mm":10})", sketch));
  }

 private:
  // A sketch on TOP, whose normal is +Y, with one drawing in it; empty when that fails.
  std::wstring Sketch(const wchar_t* operation, const std::wstring& arguments) {
    const std::wstring name = Format(L"SKETCH_%d", ++sketches_);
    const bool ok = host_.Run(L"api_sketch_create", Format(LR"({"name":"%s","plane":"XZ"})", name)) &&
                    host_.Run(operation, Format(LR"({"sketch_name":"%s",%s})", name, arguments));
    return ok ? name : std::wstring();
  }

  // Runs an operation that makes a feature. Gives its name; empty when that fails.
  std::wstring Make(const wchar_t* operation, const std::wstring& arguments) {
    std::wstring data;
    if (!host_.Run(operation, Format(L"{%s}", arguments), data)) return {};
    ++features_;
    return vek::JsonReadStringArgument(data, L"feature_name");
  }
  std::wstring MakeFrom(const std::wstring& sketch, const wchar_t* operation, const wchar_t* arguments) {
    return Make(operation, Format(LR"("sketch_name":"%s",%s)", sketch, arguments));
  }

  bool BuildWalls() {
    const std::wstring outline =
        Sketch(L"api_sketch_rectangle_two_points", LR"("x1":-100,"y1":-60,"x2":100,"y2":60)");
    return !MakeFrom(outline, L"api_feature_extrude", LR"("distance_mm":30)").empty() &&
           !Make(L"api_edge_fillet", LR"("radius_mm":10,"edge_selectors":["|Y"])").empty() &&
           !Make(L"api_feature_shell", LR"("thickness_mm":6,"face_selectors":[">Y"])").empty() &&
           !Make(L"api_edge_chamfer", LR"("distance_mm":1,"edge_selectors":["<Y"])").empty();
  }

  // A grid of holes and a circle of cuts.
  bool BuildFloor() {
    const std::wstring point = Sketch(L"api_sketch_point", LR"("x":-85,"y":0)");
    const std::wstring hole = MakeFrom(point, L"api_feature_hole", LR"("diameter_mm":5,"depth_mm":10)");
    const std::wstring circle = Sketch(L"api_sketch_circle_center_radius", LR"("cx":15,"cy":0,"radius":3)");
    const std::wstring cut =
        MakeFrom(circle, L"api_feature_extrude", LR"("distance_mm":10,"operation":"cut")");
    return !hole.empty() && !cut.empty() &&
           !Make(L"api_pattern_rectangular",
                 Format(LR"("feature_names":["%s"],"x_direction":"X","x_count":3,"x_spacing_mm":20,)"
                        LR"("y_direction":"Y","y_count":2,"y_spacing_mm":12)",
                        hole))
                .empty() &&
           !Make(L"api_pattern_circular", Format(LR"("feature_names":["%s"],"axis":"Z","count":6)", cut))
                .empty();
  }

  // A drilled post with a rounded foot and a bevelled top.
  bool BuildPost(int x, int y) {
    const std::wstring circle =
        Sketch(L"api_sketch_circle_center_radius", Format(LR"("cx":%d,"cy":%d,"radius":7)", x, y));
    const std::wstring post = MakeFrom(circle, L"api_feature_extrude", LR"("distance_mm":18)");
    if (post.empty()) return false;
    const auto edges = [&post](const wchar_t* size, const wchar_t* selector) {
      return Format(LR"("feature_name":"%s","%s":2,"edge_selectors":["%s"])", post, size, selector);
    };
    const std::wstring point = Sketch(L"api_sketch_point", Format(LR"("x":%d,"y":%d)", x, y));
    return !Make(L"api_edge_fillet", edges(L"radius_mm", L"<Y")).empty() &&
           !Make(L"api_edge_chamfer", edges(L"distance_mm", L">Y")).empty() &&
           !MakeFrom(point, L"api_feature_hole", LR"("diameter_mm":5,"depth_mm":14)").empty();
  }

  HostInProcess host_;
  int sketches_ = 0;
  int features_ = 0;
  int more_ = 0;
};

}  // namespace

int main() {
  Tray tray;
  if (!tray.Build()) return 1;
  const auto rebuilds = benchmarks::Repeat(kRounds, [&] { return tray.RebuildMs(); });
  const auto additions = benchmarks::Repeat(kRounds, [&] { return tray.OneMoreMs(); });
  if (!rebuilds || !additions) return 1;
  benchmarks::PrintRow("rebuilding a part of forty features", "ms", *rebuilds, kBudgetMs);
  benchmarks::PrintRow("- one more feature in it", "ms", *additions);
  return 0;
}
