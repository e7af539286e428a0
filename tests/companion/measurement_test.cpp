// Measuring a face by the command, to the last character of what is sent.
#include "addin/companion/find_component.h"

#include <algorithm>
#include <regex>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/companion/running_companion.h"
#include "tests/support/captured_log.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

using support::RunningCompanion;

class Measurement : public support::OperationTest {
 protected:
  void SetUp() override {
    OperationTest::SetUp();
    NewPart();
  }

  // A block of 40 x 20 x 10 mm with a hole of 8 mm through it, drilled or cut, along z at x 30, y 10.
  void DrilledBlock() {
    Block(40, 20, 10);
    Succeed(L"api_sketch_create", LR"({"plane":"XY","name":"SPOT"})");
    Succeed(L"api_sketch_point", LR"({"sketch_name":"SPOT","x":30,"y":10})");
    Succeed(L"api_feature_hole", LR"({"sketch_name":"SPOT","diameter_mm":8,"depth_mm":12})");
  }
  void CutBlock() {
    Block(40, 20, 10);
    Circle(L"CUT", 30, 10, 4);
    Succeed(L"api_feature_extrude", LR"({"sketch_name":"CUT","distance_mm":10,"operation":"cut"})");
  }
  void Circle(const wchar_t* sketch, double x, double y, double radius) {
    const std::wstring name(sketch);
    Succeed(L"api_sketch_create", LR"({"plane":"XY","name":")" + name + LR"("})");
    Succeed(L"api_sketch_circle_center_radius", LR"({"sketch_name":")" + name + LR"(","cx":)" +
                                                    support::Number(x) + L",\"cy\":" + support::Number(y) +
                                                    L",\"radius\":" + support::Number(radius) + L"}");
  }

  std::string SentForTheCylinder() {
    bench::Model& part = Current();
    host().picks.Select({{{PRO_SURFACE, part.ids_of_keys.at(Frame().key), bench::Handle(part)}, {}}});
    const std::size_t before = companion_.Received().size();
    CommandFindComponent();
    const auto received = companion_.Received();
    EXPECT_EQ(received.size(), before + 1);
    // What is nothing but rounding has no sign of its own.
    return received.empty() ? "" : std::regex_replace(received.back(), std::regex("-0\\.000000"), "0.000000");
  }

  const bench::FaceInfo& Frame() {
    const auto& faces = Current().topology.faces;
    return *std::ranges::find(faces, "cylinder", &bench::FaceInfo::type);
  }
  static std::string Length(double value) { return EncodeUtf8(Format(L"%lfmm", value)); }
  // The direction to the axis from where a cylinder about z is picked: half a turn behind the start of its
  // parameters.
  std::string Inwards() {
    const bench::Vector3& start = Frame().x;
    return EncodeUtf8(Format(L"%lf, %lf, %lf", start[0], start[1], 0.0));
  }

  // What is sent for the wall of the block's hole.
  std::string Inward(const std::string& thread, const std::string& standard, const std::string& thread_class,
                     const std::string& hole_type);

  RunningCompanion companion_;
};

// Of a cylinder about z. Where its parameters begin, and so in which direction it is picked and where its
// origin lies on the axis, is the kernel's choice; all else is worked out by hand. A hole's depth is the way
// along the axis times the origin, as it has always been: 10 mm along z times the origin's z.
std::string Measurement::Inward(const std::string& thread, const std::string& standard,
                                const std::string& thread_class, const std::string& hole_type) {
  // Wall 2 pi 4 x 10 = 251.327412, both rims 4 pi 4 = 50.265482.
  return R"(/receive-data {"Area":"251.327412mm","Perimeter":"50.265482mm","Radius":"4.000000mm",)"
         R"("Diameter":"8.000000mm","CenterPoint":{"X":"30.000000mm","Y":"10.000000mm","Z":")" +
         Length(Frame().origin[2]) + R"("},"Normal":")" + Inwards() +
         R"(","IsHole":true,"surfaceType":"Cylinder","SelectedHoleInfo":{"ThreadSize":")" + thread +
         R"(","HoleDiameter":"8.000000mm","HoleDepth":")" + Length(10 * Frame().origin[2]) +
         R"(","Standard":")" + standard + R"(","ThreadClass":")" + thread_class + R"(","HoleType":")" +
         hole_type + R"("}})";
}

TEST_F(Measurement, OfADrilledHole) {
  DrilledBlock();
  EXPECT_EQ(SentForTheCylinder(), Inward("M8.0", "Standard", "Standard Thread", "Straight Cylindrical"));
  EXPECT_EQ(support::CountCaptured(L"Measurement data sent successfully"), 1);
}

TEST_F(Measurement, OfAnInwardCylinderThatNoHoleMade) {
  CutBlock();
  EXPECT_EQ(SentForTheCylinder(), Inward("", "", "", ""));
}

TEST_F(Measurement, OfAnOutwardCylinderInAModelInInches) {
  Circle(L"PIN", 0, 0, 25.4);
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"PIN","distance_mm":50.8})");
  // The numbers stay, in inches now, and count as so many millimetres: radius 25.4, wall 2 pi 25.4 x 50.8 =
  // 8107.319666, both rims 4 pi 25.4 = 319.185814. Divided by 25.4: 1, 319.185814, 12.566371.
  Current().length_unit = bench::LengthUnit::kInch;
  Succeed(L"api_document_rebuild");
  const std::string sent = SentForTheCylinder();
  EXPECT_TRUE(sent.starts_with(
      R"(/receive-data {"Area":"319.185814in","Perimeter":"12.566371in","Radius":"1.000000in","Diameter":"2.000000in",)"))
      << sent;
  EXPECT_TRUE(sent.ends_with(R"("IsHole":false,"surfaceType":"Cylinder","SelectedHoleInfo":null})")) << sent;
}

}  // namespace
}  // namespace vek
