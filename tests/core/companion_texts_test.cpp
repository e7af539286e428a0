// Words and numbers of what the companion application is sent.
#include <gtest/gtest.h>

#include "addin/companion/measurement_text.h"

namespace vek {
namespace {

TEST(MeasurementTexts, TakeEveryValueForMillimetres) {
  EXPECT_EQ(FormatLength(25.4, L"in"), L"1.000000in");
  EXPECT_EQ(FormatLength(1500, L"m"), L"1.500000m");
  EXPECT_EQ(FormatLength(15, L"cm"), L"1.500000cm");
  EXPECT_EQ(FormatLength(15, L"mm"), L"15.000000mm");
  EXPECT_EQ(FormatLength(15, L"furlong"), L"15.000000mm");
}

// The "meter" in a name in full is found first.
TEST(MeasurementTexts, FindTheUnitByItsShortName) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"mm", L"mm"},        {L"in", L"in"},        {L"INCH", L"in"},  {L"cm", L"cm"}, {L"m", L"mm"},
      {L"millimeter", L"m"}, {L"Centimeter", L"m"}, {L"m kg s", L"m"}, {L"", L"mm"}};
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
