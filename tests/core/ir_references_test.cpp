#include "addin/ops/assembly/ir_references.h"

#include <gtest/gtest.h>

namespace vek::assembly {
namespace {

TEST(IrReferences, ATextFallsIntoThreeFields) {
  const struct {
    const wchar_t *text, *occurrence, *kind, *selector;
  } cases[] = {
      {L"BOLT", L"BOLT", L"", L""},
      {L" \tBOLT\n", L"BOLT", L"", L""},
      // A kind is lowered only when a selector follows, be it an empty one.
      {L"BOLT@Faces", L"BOLT", L"Faces", L""},
      {L"BOLT@Faces@", L"BOLT", L"faces", L""},
      {L"BOLT@Faces@>Z", L"BOLT", L"faces", L">Z"},
      {L"BOLT@@>z", L"BOLT", L"", L">z"},
      // A further "@" belongs to the selector; blanks inside stay.
      {L"Bolt M6 @edges@ >A@Z", L"Bolt M6 ", L"edges", L" >A@Z"},
      {L"BOLT@", L"BOLT", L"", L""},
  };
  for (const auto& [text, occurrence, kind, selector] : cases) {
    const auto reference = ParseIrRef(text);
    ASSERT_TRUE(reference) << testing::PrintToString(std::wstring(text));
    EXPECT_EQ(reference->occurrence, occurrence);
    EXPECT_EQ(reference->kind, kind);
    EXPECT_EQ(reference->selector, selector);
  }
}

TEST(IrReferences, WithoutAnOccurrenceATextIsNone) {
  for (const wchar_t* text : {L"", L"  ", L"@", L"@faces", L" @faces@>Z", L"@@"})
    EXPECT_FALSE(ParseIrRef(text)) << testing::PrintToString(std::wstring(text));
}

TEST(IrReferences, AnglesTurnAboutXThenYThenZ) {
  // Where the axes X, Y and Z go; each is a column of the rotation.
  const struct {
    std::array<double, 3> angles_deg;
    std::array<double, 3> x, y, z;
  } cases[] = {
      {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
      {{90, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
      {{0, 90, 0}, {0, 0, -1}, {0, 1, 0}, {1, 0, 0}},
      {{0, 0, 90}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}},
      // About X: Y to Z, Z to -Y. About Y then: Z to X. About Z at last: X to Y, Y to -X.
      // X: X, -Z, -Z. Y: Z, X, Y. Z: -Y, -Y, X.
      {{90, 90, 90}, {0, 0, -1}, {0, 1, 0}, {1, 0, 0}},
      // X with a turn of 30 about Y and of 90 about Z: (cos 30, 0, -sin 30), then (0, cos 30, -sin 30).
      {{0, 30, 90}, {0, 0.8660254037844386, -0.5}, {-1, 0, 0}, {0, 0.5, 0.8660254037844386}},
  };
  for (const auto& [angles, x, y, z] : cases) {
    const Rotation rotation = EulerRotation(angles);
    for (int row = 0; row < 3; ++row) {
      EXPECT_NEAR(rotation[row][0], x[row], 1e-12) << angles[0] << " " << angles[1] << " " << angles[2];
      EXPECT_NEAR(rotation[row][1], y[row], 1e-12) << angles[0] << " " << angles[1] << " " << angles[2];
      EXPECT_NEAR(rotation[row][2], z[row], 1e-12) << angles[0] << " " << angles[1] << " " << angles[2];
    }
  }
}

}  // namespace
}  // namespace vek::assembly
