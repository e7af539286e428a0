// What the companion application is sent, character by character, and the words and numbers in it.
#include <gtest/gtest.h>

#include "addin/companion/companion_messages.h"
#include "addin/companion/measurement_text.h"

namespace vek {
namespace {

TEST(CompanionMessages, AreComposedFieldByFieldWithoutEscaping) {
  EXPECT_EQ(FilePathMessage(LR"(C:\work\part.prt.1)"), LR"({"filePath":"C:/work/part.prt.1"})");

  FaceMeasurement face;
  face.area = L"100.000000mm";
  face.perimeter = face.radius = face.diameter = L"0.0";
  face.normal = L"0.000000, 0.000000, 1.000000";
  face.surfaceType = L"Plane";
  EXPECT_EQ(FaceMeasurementMessage(face),
            LR"({"Area":"100.000000mm","Perimeter":"0.0","Radius":"0.0","Diameter":"0.0",)"
            LR"("CenterPoint":{"X":"0.0","Y":"0.0","Z":"0.0"},"Normal":"0.000000, 0.000000, 1.000000",)"
            LR"("IsHole":false,"surfaceType":"Plane","SelectedHoleInfo":null})");
  face.isHole = true;
  face.threadSize = L"M8.0";
  face.holeDiameter = L"8.000000mm";
  face.holeDepth = L"20.000000mm";
  face.standard = L"Standard";
  face.threadClass = L"Standard Thread";
  face.holeType = L"Straight Cylindrical";
  const std::wstring message = FaceMeasurementMessage(face);
  EXPECT_EQ(message.substr(message.find(L"\"IsHole\"")),
            LR"("IsHole":true,"surfaceType":"Plane","SelectedHoleInfo":{"ThreadSize":"M8.0",)"
            LR"("HoleDiameter":"8.000000mm","HoleDepth":"20.000000mm","Standard":"Standard",)"
            LR"("ThreadClass":"Standard Thread","HoleType":"Straight Cylindrical"}})");
}

TEST(MeasurementTexts, TakeEveryValueForMillimetres) {
  EXPECT_EQ(FormatLength(25.4, L"in"), L"1.000000in");
  EXPECT_EQ(FormatLength(1500, L"m"), L"1.500000m");
  EXPECT_EQ(FormatLength(15, L"cm"), L"1.500000cm");
  EXPECT_EQ(FormatLength(15, L"mm"), L"15.000000mm");
  EXPECT_EQ(FormatLength(15, L"furlong"), L"15.000000mm");
}

TEST(MeasurementTexts, FindTheUnitByItsShortName) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {{L"mm", L"mm"},
                                                             {L"in", L"in"},
                                                             {L"INCH", L"in"},
                                                             {L"cm", L"cm"},
                                                             {L"m", L"mm"},
                                                             // The "meter" in a name in full is found first.
                                                             {L"millimeter", L"m"},
                                                             {L"Centimeter", L"m"},
                                                             {L"m kg s", L"m"},
                                                             {L"", L"mm"}};
  for (const auto& [name, unit] : cases) EXPECT_EQ(LengthUnitWord(name), unit) << name;
}

TEST(MeasurementTexts, GradeThreadsByTheDiametersNumber) {
  const std::pair<double, const wchar_t*> cases[] = {{-1, L"N/A"},
                                                     {0, L"N/A"},
                                                     {2.999, L"Fine Thread"},
                                                     {3, L"Standard Thread"},
                                                     {9.999, L"Standard Thread"},
                                                     {10, L"Coarse Thread"}};
  for (const auto& [diameter, word] : cases) EXPECT_EQ(ThreadClassWord(diameter), word) << diameter;
}

TEST(MeasurementTexts, NameSurfacesAsTheHostNumbersThem) {
  for (const auto& [type, word] :
       {std::pair(34, L"Plane"), {36, L"Cylinder"}, {44, L"TABCYL"}, {39, L"OTHER"}})
    EXPECT_EQ(SurfaceTypeWord(type), word) << type;
}

}  // namespace
}  // namespace vek
