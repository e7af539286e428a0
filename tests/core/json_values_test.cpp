// Reading values out of an arguments text.
#include <gtest/gtest.h>

#include "addin/server/json_reader.h"

namespace vek {
namespace {

TEST(JsonValues, UnescapesStrings) {
  const std::pair<std::wstring, std::wstring> cases[] = {{LR"("\"\/\\\b\f\n\r\t")", L"\"/\\\b\f\n\r\t"},
                                                         {LR"("\u0041\q")", L"u0041q"},
                                                         {LR"("open\)", L"open\\"},
                                                         {LR"("a"b")", L"a"},
                                                         {LR"("")", L""},
                                                         {L"", L""},
                                                         {L"\"\x00FC\x4E2D\"", L"\x00FC\x4E2D"}};
  for (const auto& [text, value] : cases) EXPECT_EQ(JsonReadString(text, 0), value) << text;
  EXPECT_EQ(JsonReadString(LR"("a")", -1), L"");
  EXPECT_EQ(JsonReadString(LR"({"k":"v"})", 5), L"v");
}

TEST(JsonValues, TakesAnythingButAStringForAMissingText) {
  EXPECT_EQ(JsonReadStringArgument(LR"({"k":"v"})", L"k"), L"v");
  EXPECT_EQ(JsonReadStringArgument(LR"({"k":null})", L"k"), L"");
  EXPECT_EQ(JsonReadStringArgument(LR"({"x":{"k":"v"}})", L"k"), L"");
  EXPECT_EQ(JsonReadStringArgument(L"5", L"k"), L"");
}

TEST(JsonValues, ReadsNumbersBareAndQuoted) {
  const std::pair<const wchar_t*, double> cases[] = {
      {LR"({"x":1.5e3})", 1500}, {LR"({"x":12abc})", 12}, {LR"({"x":"2.5"})", 2.5}, {LR"({"x":" 7 mm"})", 7},
      {LR"({"x":"0"})", 0},      {LR"({"x":-3})", -3},    {LR"({"x":1,"x":2})", 1}, {LR"({"x":4 ,"y":5})", 4},
      {LR"({"x":6)", 6},         {LR"({"x":0x10})", 16},  {LR"({"x":+1})", 1},      {LR"({"x":8])", 8}};
  for (const auto& [object, expected] : cases) {
    double number = 99;
    EXPECT_TRUE(JsonReadNumber(object, L"x", number)) << object;
    EXPECT_EQ(number, expected) << object;
  }
}

TEST(JsonValues, LeavesTheDefaultWhereThereIsNoNumber) {
  for (const wchar_t* const object :
       {LR"({"x":null})", LR"({"x":""})", LR"({"x":"mm 5"})", LR"({"x":true})", LR"({"x":[1]})", LR"({"x":,)",
        LR"({"y":1})", LR"({"X":1})", L"5", L""}) {
    double number = 99;
    EXPECT_FALSE(JsonReadNumber(object, L"x", number)) << object;
    EXPECT_EQ(number, 99) << object;
  }
  double number = 99;
  EXPECT_FALSE(JsonReadNumber(LR"({"":1})", L"", number));
}

TEST(JsonValues, ReadsBareBooleans) {
  const struct {
    const wchar_t* object;
    bool with_default_true;
    bool with_default_false;
  } cases[] = {
      {LR"({"x":true})", true, true}, {LR"({"x": TRUE })", true, true},   {LR"({"x":false})", false, false},
      {LR"({"x":0})", false, false},  {LR"({"x":"false"})", true, false}, {LR"({"x":null})", true, false},
      {LR"({"x":2})", true, false},   {LR"({"y":0})", true, false},       {L"", true, false}};
  for (const auto& [object, with_default_true, with_default_false] : cases) {
    EXPECT_EQ(JsonReadBool(object, L"x", true), with_default_true) << object;
    EXPECT_EQ(JsonReadBool(object, L"x", false), with_default_false) << object;
  }
}

TEST(JsonValues, GivesRawValuesAsTheyStand) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {{LR"({"x": {"y":[1,2]} })", LR"({"y":[1,2]})"},
                                                             {LR"({"x":"a,\"b"})", LR"("a,\"b")"},
                                                             {LR"({"x":"open)", LR"("open)"},
                                                             {LR"({"x": null })", L"null"},
                                                             {LR"({"x": 1 2 ]})", L"1 2"},
                                                             {LR"({"x":[1,2})", L""},
                                                             {L"", L""}};
  for (const auto& [object, raw] : cases) EXPECT_EQ(JsonReadRaw(object, L"x"), raw) << object;
}

TEST(JsonValues, ReadsArraysOfTexts) {
  using Texts = std::vector<std::wstring>;
  const struct {
    const wchar_t* object;
    bool found;
    Texts list;
  } cases[] = {{LR"({"x":["a\n",2,{"b":1}]})", true, {L"a\n", L"2", LR"({"b":1})"}},
               {LR"({"x":[]})", true, {}},
               {LR"({"x":"a"})", false, {}},
               {LR"({"x":["a")", false, {}}};
  for (const auto& [object, found, expected] : cases) {
    Texts list = {L"stale"};
    EXPECT_EQ(JsonReadStringArray(object, L"x", list), found) << object;
    EXPECT_EQ(list, expected) << object;
  }
}

TEST(JsonValues, ReadsArraysOfNumbersAndLeavesOutTheRest) {
  using Numbers = std::vector<double>;
  const struct {
    const wchar_t* object;
    bool found;
    Numbers numbers;
  } cases[] = {{LR"({"x":[1,"2",x,3]})", true, {1, 2, 3}},
               {LR"({"x":[" 1.5 ","",null,[4],-2e1mm]})", true, {1.5, -20}},
               {LR"({"x":[]})", true, {}},
               {LR"({"x":5})", false, {}}};
  for (const auto& [object, found, expected] : cases) {
    Numbers numbers = {99};
    EXPECT_EQ(JsonReadNumberArray(object, L"x", numbers), found) << object;
    EXPECT_EQ(numbers, expected) << object;
  }
}

}  // namespace
}  // namespace vek
