// Poses: where their translation is read, when they match, and how a request's text tells one.
#include <gtest/gtest.h>

#include <limits>

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
  const auto rows = ReadTransformRows(L" [[1,0,0,10],[0, 1, 0, -20, 99],[0 0 1 3e1],[5,6,7,8]] ");
  ASSERT_TRUE(rows);
  const TransformRows expected = {{{1, 0, 0, 10}, {0, 1, 0, -20}, {0, 0, 1, 30}, {5, 6, 7, 8}}};
  EXPECT_EQ(*rows, expected);
  for (const wchar_t* text :
       {L"", L" ", L"null", L"\"[[1]]\"", L"[[1,0,0,0],[0,1,0,0],[0,0,1,0]]",
        L"[1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1]", L"[[1,0,0],[0,1,0,0],[0,0,1,0],[0,0,0,1]]",
        L"[[1,0,0,\"a\"],[0,1,0,0],[0,0,1,0],[0,0,0,1]]", L"[[1,0,0,0],[0,1,0,0],[0,0,1,0],[0,0,0,1"})
    EXPECT_FALSE(ReadTransformRows(text)) << testing::PrintToString(std::wstring(text));
}

}  // namespace
}  // namespace vek::assembly
