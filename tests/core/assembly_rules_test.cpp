// What the assembly operations decide without the host: poses, words of constraints, references, names.
#include <gtest/gtest.h>

#include <limits>

#include "addin/ops/assembly/constraint_words.h"
#include "addin/ops/assembly/ir_references.h"
#include "addin/ops/assembly/occurrence_names.h"
#include "addin/ops/assembly/pose_arithmetic.h"
#include "addin/ops/assembly/pose_text.h"

namespace vek::assembly {
namespace {

void ExpectTranslation(const Translation& at, double x, double y, double z) {
  EXPECT_EQ(at.x, x);
  EXPECT_EQ(at.y, y);
  EXPECT_EQ(at.z, z);
}

TEST(PoseTranslation, IsReadFromTheRowOnlyWhenTheColumnIsZero) {
  ExpectTranslation(PoseTranslation(Pose()), 0, 0, 0);
  ExpectTranslation(PoseTranslation(TranslationInColumn({1, -2, 3})), 1, -2, 3);
  ExpectTranslation(PoseTranslation(TranslationInRow({1, -2, 3})), 1, -2, 3);

  Pose both = TranslationInColumn({0, 0, 7});
  both.matrix[3][0] = 5;
  ExpectTranslation(PoseTranslation(both), 0, 0, 7);
  // Sizes add up: twice 0.4e-12 is below 1e-12, thrice is not.
  Pose tiny = TranslationInRow({5, 0, 0});
  tiny.matrix[0][3] = tiny.matrix[1][3] = 0.4e-12;
  ExpectTranslation(PoseTranslation(tiny), 5, 0, 0);
  tiny.matrix[2][3] = -0.4e-12;
  ExpectTranslation(PoseTranslation(tiny), 0.4e-12, 0.4e-12, -0.4e-12);
  ExpectTranslation(PoseTranslation(TranslationInRow({1e-13, 0, 0})), 0, 0, 0);
}

TEST(PoseMatches, ComparesEachComponentOfTheTranslation) {
  const Pose pose = TranslationInColumn({1, 2, 3});
  const struct {
    Translation target;
    bool matches;
  } cases[] = {
      {{1, 2, 3}, true},       {{1.0009, 1.9991, 3.0009}, true},
      {{1.0011, 2, 3}, false}, {{1, 1.9989, 3}, false},
      {{1, 2, 3.0011}, false}, {{1, 2, std::numeric_limits<double>::quiet_NaN()}, false},
  };
  for (const auto& [target, matches] : cases) EXPECT_EQ(PoseMatches(pose, target), matches) << target.x;
  EXPECT_TRUE(PoseMatches(pose, {1.4, 2, 3}, 0.5));
}

TEST(ColumnForm, KeepsTheRotationAndMovesTheTranslation) {
  Pose pose = TranslationInRow({4, 5, 6});
  pose.matrix[0][0] = pose.matrix[1][1] = 0;
  pose.matrix[0][1] = -1;
  pose.matrix[1][0] = 1;
  const double expected[4][4] = {{0, -1, 0, 4}, {1, 0, 0, 5}, {0, 0, 1, 6}, {0, 0, 0, 1}};
  const Pose form = ColumnForm(pose);
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      EXPECT_EQ(form.matrix[row][column], expected[row][column]) << row << "," << column;
}

TEST(ReadNextNumber, TakesTheWholeRunAndReadsItsHead) {
  const struct {
    const wchar_t* text;
    double value;
    std::size_t end;
  } cases[] = {
      {L"1", 1, 1},        {L" ,\t\r\n,-2.5]", -2.5, 10},
      {L"+3e2,4", 300, 4}, {L"1-2 3", 1, 3},
      {L".5", 0.5, 2},     {L"e5", 0, 2},
      {L"7x", 7, 1},       {L"--1", 0, 3},
  };
  for (const auto& [text, value, end] : cases) {
    std::size_t index = 0;
    double read = -99;
    EXPECT_TRUE(ReadNextNumber(text, index, read)) << testing::PrintToString(std::wstring(text));
    EXPECT_EQ(read, value) << testing::PrintToString(std::wstring(text));
    EXPECT_EQ(index, end) << testing::PrintToString(std::wstring(text));
  }
  for (const wchar_t* text : {L"", L" , ", L"-", L"+.e", L"x1", L"[1", L"\"1\""}) {
    std::size_t index = 0;
    double read = -99;
    EXPECT_FALSE(ReadNextNumber(text, index, read)) << testing::PrintToString(std::wstring(text));
    EXPECT_EQ(read, -99);
  }
}

TEST(ReadTransformRows, WantsFourRowsOfFourNumbersInBrackets) {
  EXPECT_TRUE(ReadTransformRows(L" [[1,0,0,10],[0, 1, 0, -20, 99],[0 0 1 3e1],[5,6,7,8]] "));
  for (const wchar_t* text :
       {L"", L" ", L"null", L"\"[[1]]\"", L"[[1,0,0,0],[0,1,0,0],[0,0,1,0]]",
        L"[1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1]", L"[[1,0,0],[0,1,0,0],[0,0,1,0],[0,0,0,1]]",
        L"[[1,0,0,\"a\"],[0,1,0,0],[0,0,1,0],[0,0,0,1]]", L"[[1,0,0,0],[0,1,0,0],[0,0,1,0],[0,0,0,1"})
    EXPECT_FALSE(ReadTransformRows(text)) << testing::PrintToString(std::wstring(text));
}

TEST(ConstraintWords, AnOffsetCountsAboveItsThresholdOnly) {
  for (const double offset : {2e-12, -2e-12, 5.0, -5.0}) EXPECT_TRUE(IsSignificantOffset(offset)) << offset;
  for (const double offset : {0.0, 1e-12, -1e-12, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_FALSE(IsSignificantOffset(offset)) << offset;
}

TEST(ConstraintWords, EveryTypeReadsAsAWord) {
  std::wstring words;
  for (const int type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 15, 16, 30, 31, 34, -1})
    words += ConstraintTypeWord(type) + std::wstring(L" ");
  EXPECT_EQ(words,
            L"mate distance flush align_offset insert parallel csys tangent point_on_surface type_9 default "
            L"point_on_line ground angle angle angle angle perpendicular type_-1 ");
}

TEST(IrReferences, ATextFallsIntoThreeFields) {
  const struct {
    const wchar_t *text, *occurrence, *kind, *selector;
  } cases[] = {
      // A kind is lowered only when a selector follows, be it an empty one.
      {L"BOLT@Faces", L"BOLT", L"Faces", L""},
      {L"BOLT@Faces@>Z", L"BOLT", L"faces", L">Z"},
      {L"BOLT@@>z", L"BOLT", L"", L">z"},
      // A further "@" belongs to the selector; blanks inside stay.
      {L"Bolt M6 @edges@ >A@Z", L"Bolt M6 ", L"edges", L" >A@Z"},
  };
  for (const auto& [text, occurrence, kind, selector] : cases) {
    const auto reference = ParseIrRef(text);
    ASSERT_TRUE(reference) << testing::PrintToString(std::wstring(text));
    EXPECT_EQ(reference->occurrence, occurrence);
    EXPECT_EQ(reference->kind, kind);
    EXPECT_EQ(reference->selector, selector);
  }
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

struct Case {
  const wchar_t *text, *expected;
};

TEST(StripModelExtension, TakesAtMostTwoSuffixesOfAModelFile) {
  const Case cases[] = {
      {L"", L""},           {L" Bolt ", L"Bolt"},   {L"BOLT.PRT.12", L"BOLT"}, {L"Bolt.prt", L"Bolt"},
      {L"a.AsM", L"a"},     {L"a.drw", L"a"},       {L"A.PRT.1.2", L"A.PRT"},  {L"a.1.2.3", L"a.1"},
      {L"A.", L"A"},        {L"A..", L"A"},         {L".prt", L".prt"},        {L"V1.BRACKET", L"V1.BRACKET"},
      {L"V1.2b", L"V1.2b"}, {L"a.stp.3", L"a.stp"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(StripModelExtension(text), expected);
}

TEST(NormalizeOccurrenceName, MakesTheSpellingsOfOneNameEqual) {
  const Case cases[] = {
      {L"C:\\lib/x\\Bolt-M6.prt.3", L"BOLT_M6"},
      {L" bolt:m6 ", L"BOLT_M6"},
      {L"bolt .prt", L"BOLT"},
      {L"v1.bracket", L"V1.BRACKET"},
      {L"  \t ", L""},
      {L"folder/", L""},
      {L"größe 2", L"GRÖßE_2"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(NormalizeOccurrenceName(text), expected);
}

TEST(CanonicalDirectory, KeepsARootsSeparator) {
  const Case cases[] = {
      {L"", L""},        {L"C:/Parts//", L"c:\\parts"}, {L" C:\\PARTS ", L"c:\\parts"},
      {L"C:/", L"c:\\"}, {L"C:\\\\\\", L"c:\\"},        {L"\\\\\\", L"\\\\\\"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(CanonicalDirectory(text), expected);
}

}  // namespace
}  // namespace vek::assembly
