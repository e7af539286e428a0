#include "addin/ops/assembly/constraint_words.h"

#include <gtest/gtest.h>

#include <limits>

namespace vek::assembly {
namespace {

TEST(ConstraintWords, AWordMeansATypeAndTheFacesThatItTakes) {
  const struct {
    const wchar_t* word;
    int creo_type, surface_type;
    bool takes_offset, is_angle;
  } cases[] = {
      {L"mate", 0, 34, false, false},     {L"coincident", 0, 34, false, false},
      {L"flush", 2, 34, false, false},    {L"distance", 1, 34, true, false},
      {L"parallel", 5, 34, false, false}, {L"perpendicular", 34, 34, false, false},
      {L"angle", 31, 34, true, true},     {L"tangent", 7, 36, false, false},
      {L"insert", 4, 36, false, false},   {L"concentric", 4, 36, false, false},
      {L"fixed", 13, 34, false, false},   {L"ground", 13, 34, false, false},
      {L" \tMaTe ", 0, 34, false, false},
  };
  for (const auto& [word, creo_type, surface_type, takes_offset, is_angle] : cases) {
    const auto type = FindConstraintType(word);
    ASSERT_TRUE(type) << testing::PrintToString(std::wstring(word));
    EXPECT_EQ(type->creo_type, creo_type);
    EXPECT_EQ(type->surface_type, surface_type);
    EXPECT_EQ(type->takes_offset, takes_offset);
    EXPECT_EQ(type->is_angle, is_angle);
  }
}

TEST(ConstraintWords, OtherWordsMeanNone) {
  for (const wchar_t* word : {L"", L" ", L"mates", L"mat", L"unground", L"float", L"align"})
    EXPECT_FALSE(FindConstraintType(word)) << testing::PrintToString(std::wstring(word));
}

TEST(ConstraintWords, OnlyMateAndAlignBecomeOthersAtADistance) {
  const struct {
    int from, to;
  } cases[] = {{0, 1}, {2, 3}, {1, 1}, {3, 3}, {4, 4}, {5, 5}, {7, 7}, {13, 13}, {34, 34}};
  for (const auto& [from, to] : cases) EXPECT_EQ(WithDistance(from), to) << from;
}

TEST(ConstraintWords, AnOffsetCountsAboveItsThresholdOnly) {
  for (const double offset : {2e-12, -2e-12, 5.0, -5.0}) EXPECT_TRUE(IsSignificantOffset(offset)) << offset;
  for (const double offset : {0.0, 1e-12, -1e-12, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_FALSE(IsSignificantOffset(offset)) << offset;
}

TEST(ConstraintWords, EveryTypeReadsAsAWord) {
  const struct {
    int type;
    const wchar_t* word;
  } cases[] = {
      {0, L"mate"},         {1, L"distance"}, {2, L"flush"},
      {3, L"align_offset"}, {4, L"insert"},   {5, L"parallel"},
      {6, L"csys"},         {7, L"tangent"},  {8, L"point_on_surface"},
      {9, L"type_9"},       {10, L"default"}, {12, L"point_on_line"},
      {13, L"ground"},      {15, L"angle"},   {16, L"angle"},
      {30, L"angle"},       {31, L"angle"},   {34, L"perpendicular"},
      {-1, L"type_-1"},
  };
  for (const auto& [type, word] : cases) EXPECT_EQ(ConstraintTypeWord(type), word) << type;
}

}  // namespace
}  // namespace vek::assembly
