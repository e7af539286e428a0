// Every toolkit call of each operation here fails once: each run answers with a message, gives back what it
// was given, and leaves a session in which the same operation works.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

class FeatureFaults : public FeatureTest {
 protected:
  // The calls since the mark that can be made to fail.
  std::vector<std::string> FailableCalls() {
    auto calls = CallsSince(mark_);
    std::erase_if(calls, [](const std::string& call) { return call.ends_with("Free"); });
    return calls;
  }

  // Runs `operation` on a fresh sketch of `draw` with its calls failing one after another.
  template <typename Draw>
  void Sweep(const std::wstring& operation, const std::wstring& more, Draw draw) {
    int sketches = 0;
    const auto run = [&] {
      const std::wstring sketch = Format(L"S%d", ++sketches);
      draw(sketch);
      features_before_ = Current().features.size();
      mark_ = host().journal.Mark();
      return [=, this] { return Run(operation, Format(LR"({"sketch_name":"%s"%s})", sketch, more)); };
    };
    ASSERT_TRUE(run()().success);
    const int calls = static_cast<int>(FailableCalls().size());
    ASSERT_GT(calls, 40);
    RemoveNewest(2);
    for (int number = 1; number <= calls; ++number) {
      const auto attempt = run();
      faults().FailNumber(number, PRO_TK_GENERAL_ERROR);
      const auto result = attempt();
      faults().Clear();
      SCOPED_TRACE("call " + std::to_string(number) + ", " + FailableCalls().at(number - 1));
      EXPECT_FALSE(result.message.empty());
      EXPECT_TRUE(host().ledger.Outstanding().empty());
      EXPECT_TRUE(host().ledger.Violations().empty());
      EXPECT_EQ(Current().features.size(), features_before_ + (result.success ? 1 : 0));
      RemoveNewest(result.success ? 2 : 1);
    }
    EXPECT_TRUE(run()().success);
  }

 private:
  void RemoveNewest(int count) {
    for (int i = 0; i < count; ++i) Delete(std::wstring(Current().features.back()->name));
  }

  std::size_t features_before_ = 0;
  std::uint64_t mark_ = 0;
};

TEST_F(FeatureFaults, Extrude) {
  Sweep(L"api_feature_extrude", LR"(,"distance_mm":10,"taper_angle_deg":1)",
        [this](const std::wstring& sketch) { Rectangle(sketch, L"XY", 0, 0, 10, 10); });
}

TEST_F(FeatureFaults, RevolveThatPreparesItsAxis) {
  Sweep(L"api_feature_revolve", LR"(,"angle_deg":90)", [this](const std::wstring& sketch) {
    Rectangle(sketch, L"XY", 2, 0, 5, 3);
    Draw(L"api_sketch_polyline", sketch, LR"("points":[[0,-5],[0,5]],"construction":true)");
  });
}

TEST_F(FeatureFaults, Chamfer) {
  Block(40, 20, 10);
  Sweep(L"api_edge_chamfer",
        LR"(,"distance_mm":1,"type":"two_distance","distance2_mm":2,"edge_selectors":[">X",">Z"])",
        [this](const std::wstring& sketch) { Rectangle(sketch, L"XY", 0, 0, 10, 10); });
}

TEST_F(FeatureFaults, Shell) {
  Block(40, 20, 10);
  Sweep(L"api_feature_shell", LR"(,"thickness_mm":2,"face_indices":[1],"face_selectors":[">Z"])",
        [this](const std::wstring& sketch) { Rectangle(sketch, L"XY", 0, 0, 10, 10); });
}

TEST_F(FeatureFaults, Hole) {
  Block(40, 20, 10);
  Sweep(L"api_feature_hole", LR"(,"diameter_mm":4,"depth_mm":6)", [this](const std::wstring& sketch) {
    NewSketch(sketch, L"XY");
    Draw(L"api_sketch_point", sketch, LR"("x":10,"y":10)");
  });
}

TEST_F(FeatureFaults, Thread) {
  const std::filesystem::path charts = directory() / L"text" / L"hole";
  std::filesystem::create_directories(charts);
  std::ofstream(charts / L"ISO.hol") << "THREAD_DATA\nM2x.4\n";
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", directory().c_str());
  NewSketch(L"STUD", L"XY");
  DrawCircle(L"STUD");
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"STUD","distance_mm":7})");
  Sweep(L"api_feature_thread", LR"(,"feature_name":"Extrude 1","thread_designation":"M2x.4")",
        [this](const std::wstring& sketch) { Rectangle(sketch, L"XY", 0, 0, 10, 10); });
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", nullptr);
}

}  // namespace
}  // namespace vek::support
