// Scanning: finding values, cutting operations and arrays.
#include "addin/server/json_reader.h"

#include <gtest/gtest.h>

namespace vek {
namespace {

using Texts = std::vector<std::wstring>;

TEST(JsonScanning, SkipsTheFourBlanks) {
  EXPECT_EQ(JsonSkipBlanks(L" \t\r\nx", 0), 4);
  EXPECT_EQ(JsonSkipBlanks(L"x ", 0), 0);
  EXPECT_EQ(JsonSkipBlanks(L"x  ", 1), 3);
  EXPECT_EQ(JsonSkipBlanks(L"\fx", 0), 0);
  EXPECT_EQ(JsonSkipBlanks(L"", 0), 0);
}

TEST(JsonScanning, MatchesBracketsOfOneKindOutsideStrings) {
  const struct {
    const wchar_t* text;
    std::int32_t index;
    std::int32_t match;
  } cases[] = {
      {L"{}", 0, 1},        {L"{{}}", 0, 3},         {L"{{}}", 1, 2},
      {L"{[}]", 0, 2},      {LR"({"a":"}"})", 0, 8}, {LR"({"a":"\"}"})", 0, 10},
      {LR"({"\\"})", 0, 5}, {L"{", 0, -1},           {L"{{}", 0, -1},
      {LR"({"a)", 0, -1},   {LR"({"a\)", 0, -1},     {L"x{}", 0, -1},
      {L"{}", -1, -1},      {L"{}", 2, -1},
  };
  for (const auto& [text, index, match] : cases)
    EXPECT_EQ(JsonMatchBracket(text, index, L'{', L'}'), match) << text;
}

// Long texts are walked in blocks; wherever their borders fall, the match is the last character.
TEST(JsonScanning, MatchesBracketsAcrossTheBordersOfBlocks) {
  for (std::size_t shift = 0; shift < 40; ++shift) {
    const std::wstring padding(shift, L'x');
    const std::wstring nested = LR"({"a":[{},"{"],"b":{"c":"}\\"}})";
    const std::wstring escaped = LR"(,"d":"\"}","e":"\\","f":{"g":"[{"}})";
    const std::wstring text = LR"({"p":")" + padding + LR"(","n":)" + nested + escaped;
    EXPECT_EQ(JsonMatchBracket(text + L"}}]", 0, L'{', L'}'), static_cast<std::int32_t>(text.size()) - 1)
        << shift;
    EXPECT_EQ(JsonMatchBracket(text.substr(0, text.size() - 1), 0, L'{', L'}'), -1) << shift;
  }
}

// Each of these characters has the low byte of a quote, a brace or a backslash.
TEST(JsonScanning, TakesNoOtherCharacterForAMark) {
  const std::wstring lookalikes = L"\x0122\x017B\x017D\x015C\x7B22\x7D7B\xFF22\xFF7D\x805C";
  const std::wstring text = L"{" + lookalikes + lookalikes + lookalikes + L"}";
  EXPECT_EQ(JsonMatchBracket(text, 0, L'{', L'}'), static_cast<std::int32_t>(text.size()) - 1);
}

TEST(JsonScanning, FindsAKeyAnywhere) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {LR"({"operations":{"a":{}}})", LR"({"a":{}})"},
      {LR"({"x":{"operations" : {} }})", L"{}"},
      {LR"({"operations":[1,{"b":2}]})", LR"([1,{"b":2}])"},
      {LR"({"operations": 12 ,"b":1})", L"12"},
      {LR"({"operations":"a,b"})", LR"("a)"},
      {LR"({"note":"\"operations\"","operations":{}})", L"{}"},
      {LR"({"note":"operations","operations":{}})", L""},
      {LR"({"operations":{})", L"{}"},
      {LR"({"operations":{"a":{})", L""},
      {LR"({"operations"})", L""},
      {LR"({"Operations":{}})", L""},
      {L"", L""},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(JsonFindAnywhere(text, L"operations"), value) << text;
}

TEST(JsonScanning, CutsOperationsInTheirOrder) {
  const std::pair<const wchar_t*, std::vector<std::pair<std::wstring, std::wstring>>> cases[] = {
      {LR"({"b":{"x":1},"a":{}})", {{L"b", LR"({"x":1})"}, {L"a", L"{}"}}},
      {LR"({"a":{},"a":{}})", {{L"a", L"{}"}, {L"a", L"{}"}}},
      {LR"({ "a" : {"k":"}"} , })", {{L"a", LR"({"k":"}"})"}}},
      {LR"({"a":{} "b":{}})", {{L"a", L"{}"}, {L"b", L"{}"}}},
      {LR"({"a": null ,"b":"x"})", {{L"a", L"null"}, {L"b", LR"("x")"}}},
      {LR"({"a\"\n":{}})", {{LR"(a\"\n)", L"{}"}}},
      {LR"({"a":})", {{L"a", L""}}},
      {LR"({"a":{})", {{L"a", L"{}"}}},
      {LR"({"a":{}} "b":{}})", {{L"a", L"{}"}}},
  };
  for (const auto& [text, calls] : cases) {
    OperationList operations;
    std::wstring error = L"stale";
    EXPECT_TRUE(ParseOperationsObject(text, operations, error)) << text;
    EXPECT_EQ(error, L"") << text;
    ASSERT_EQ(operations.size(), calls.size()) << text;
    for (std::size_t i = 0; i < calls.size(); ++i) {
      EXPECT_EQ(operations[i].name, calls[i].first) << text;
      EXPECT_EQ(operations[i].arguments, calls[i].second) << text;
    }
  }
}

TEST(JsonScanning, NamesWhatIsWrongWithOperations) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"", L"Invalid operations object."},
      {L"[]", L"Invalid operations object."},
      {L" {}", L"Invalid operations object."},
      {L"{}", L""},
      {L"{", L""},
      {L"{,", L"Malformed operations object."},
      {LR"({"a":{},,"b":{}})", L"Malformed operations object."},
      {LR"({"a":"x,y"})", L"Malformed operations object."},
      {LR"({"a)", L"Unterminated operation name."},
      {LR"({"a\"})", L"Unterminated operation name."},
      {LR"({"a")", L"Malformed operations object."},
      {LR"({"a":  )", L"Missing operation arguments."},
      {LR"({"a":{)", L"Unterminated operation arguments."},
  };
  for (const auto& [text, expected] : cases) {
    OperationList operations;
    std::wstring error = L"stale";
    EXPECT_FALSE(ParseOperationsObject(text, operations, error)) << text;
    EXPECT_EQ(error, expected) << text;
  }
}

TEST(JsonScanning, FindsAKeyOnTheTopLevelOnly) {
  const std::pair<const wchar_t*, std::int32_t> cases[] = {
      {LR"({"a":1})", 5},
      {LR"({"b":{"a":1},"a":2})", 17},
      {LR"({"b":"\"a\":1","a":2})", 19},
      {LR"({"b":[1,{"a":1}] "a":2})", 21},
      {LR"({"b":{"a":1}})", -1},
      {LR"({"A":1})", -1},
      {LR"({"a\u":1})", -1},
      {LR"({"a": )", -1},
      {LR"({"b":{,"a":1})", -1},
      {LR"({"b":"x)", -1},
      {LR"({"b" 1,"a":2})", -1},
      {LR"({"b":1,,"a":2})", -1},
      {LR"( {"a":1})", -1},
      {L"{  ", -1},
      {L"", -1},
  };
  for (const auto& [object, index] : cases) {
    std::int32_t found = 99;
    EXPECT_EQ(JsonFindKey(object, L"a", found), index >= 0) << object;
    EXPECT_EQ(found, index) << object;
  }
}

TEST(JsonScanning, SplitsArraysIntoTheirElements) {
  const std::pair<const wchar_t*, Texts> cases[] = {
      {L"[]", {}},
      {L"[ 1 , 2.5,x y ]", {L"1", L"2.5", L"x y"}},
      {LR"(["a,]", "b\"", [1,2], {"c":[3]}])", {LR"("a,]")", LR"("b\"")", L"[1,2]", LR"({"c":[3]})"}},
      {L"[,1,,2]", {L"1", L"2"}},
      {LR"(["a" "b"])", {LR"("a")", LR"("b")"}},
      {L"[1,2", {L"1", L"2"}},
      {L"[1,[2,3", {L"1"}},
      {LR"(["a","b)", {LR"("a")", LR"("b)"}},
      {L"{1}", {}},
      {L"", {}},
  };
  for (const auto& [array, elements] : cases) {
    Texts found = {L"stale"};
    JsonSplitArray(array, found);
    EXPECT_EQ(found, elements) << array;
  }
}

}  // namespace
}  // namespace vek
