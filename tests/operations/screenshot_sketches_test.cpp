// Which sketches the window shows: those that nothing has been made of.
#include <gmock/gmock.h>

#include <cstdint>
#include <fstream>
#include <iterator>

#include "addin/text/format.h"
#include "bench/host/features/shown_sketches.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

class ShownSketches : public OperationTest {
 protected:
  void Sketch(const std::wstring& name, const std::wstring& plane, const wchar_t* draw,
              const std::wstring& what) {
    Succeed(L"api_sketch_create", Format(LR"({"name":"%s","plane":"%s"})", name, plane));
    Succeed(draw, Format(LR"({"sketch_name":"%s",%s})", name, what));
  }
  void Circle(const std::wstring& name, double radius) {
    Sketch(name, L"XY", L"api_sketch_circle_center_radius", Format(LR"("cx":0,"cy":0,"radius":%g)", radius));
  }

  std::vector<std::wstring> Shown() {
    std::vector<std::wstring> names;
    for (const int id : bench::ShownSketches(Current())) names.push_back(Current().FindFeature(id)->name);
    return names;
  }

  // The front view, 100 by 100.
  std::string Picture() {
    const std::wstring file = Format(L"%d.bmp", ++pictures_);
    Succeed(L"api_export_screenshot",
            Format(LR"({"output_path":"%s","view":"front","width_px":100,"height_px":100})", JsonPath(file)));
    std::ifstream stream(directory() / file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
  }
  // From the lower left corner.
  static bool IsBlue(const std::string& picture, std::size_t x, std::size_t y) {
    const std::size_t at = 54 + 300 * y + 3 * x;
    return static_cast<std::uint8_t>(picture.at(at)) > static_cast<std::uint8_t>(picture.at(at + 2)) + 60;
  }

 private:
  int pictures_ = 0;
};

TEST_F(ShownSketches, AreInThePictureUntilASolidIsMadeOfThem) {
  NewPart();
  Circle(L"S", 10);
  // 90 pixels for 20 mm: the circle runs through (5, 50), its centre is marked by the sketch's first point.
  const std::string sketch = Picture();
  for (const auto& [x, y] : {std::pair(5, 50), {50, 5}, {95, 50}, {50, 95}, {50, 50}})
    EXPECT_TRUE(IsBlue(sketch, static_cast<std::size_t>(x), static_cast<std::size_t>(y))) << x << ' ' << y;
  EXPECT_FALSE(IsBlue(sketch, 30, 50));

  Succeed(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})");
  const std::string solid = Picture();
  for (std::size_t y = 0; y < 100; ++y)
    for (std::size_t x = 0; x < 100; ++x) EXPECT_FALSE(IsBlue(solid, x, y)) << x << ' ' << y;

  Succeed(L"api_feature_suppress", LR"({"feature_name":"Extrude 1"})");
  EXPECT_EQ(Picture(), sketch);
  Succeed(L"api_feature_unsuppress", LR"({"feature_name":"Extrude 1"})");
  EXPECT_EQ(Picture(), solid);
}

TEST_F(ShownSketches, GoWithTheFirstFeatureThatTakesThem) {
  NewPart();
  Block(40, 20, 10);
  EXPECT_THAT(Shown(), ElementsAre());
  Sketch(L"POINTS", L"XY", L"api_sketch_point", LR"("x":20,"y":10)");
  EXPECT_THAT(Shown(), ElementsAre(L"POINTS"));
  Succeed(L"api_feature_hole", LR"({"sketch_name":"POINTS","diameter_mm":8,"depth_mm":6})");
  EXPECT_THAT(Shown(), ElementsAre());

  NewPart();
  Sketch(L"PATH", L"XY", L"api_sketch_polyline", LR"("points":[[0,0],[30,0],[30,20]])");
  Sketch(L"PROFILE", L"YZ", L"api_sketch_circle_center_radius", LR"("cx":0,"cy":0,"radius":3)");
  EXPECT_THAT(Shown(), ElementsAre(L"PATH", L"PROFILE"));
  // The add-in draws the profile again in the sweep.
  Succeed(L"api_feature_sweep", LR"({"profile_sketch_name":"PROFILE","path_sketch_name":"PATH"})");
  EXPECT_THAT(Shown(), ElementsAre(L"PROFILE"));
}

TEST_F(ShownSketches, GoWithTheirCopiesInAPatternButNotWithMirrorImages) {
  NewPart();
  Circle(L"S", 3);
  Succeed(L"api_pattern_mirror", LR"({"feature_names":["S"],"mirror_plane":"YZ"})");
  Succeed(L"api_pattern_rectangular",
          LR"({"feature_names":["S"],"x_direction":"X","x_count":3,"x_spacing_mm":10})");
  EXPECT_THAT(Shown(), ElementsAre(L"S", L"Mirror 1", L"Pattern 1"));
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})");
  EXPECT_THAT(Shown(), ElementsAre(L"Mirror 1"));
}

}  // namespace
}  // namespace vek::support
