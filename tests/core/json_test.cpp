// Scanning requests, reading values out of arguments, and writing answers.
#include <gtest/gtest.h>

#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"

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

TEST(JsonWriting, EscapesWhatMayNotStandInAString) {
  EXPECT_EQ(JsonEscape(L"\\ \" \b\f\n\r\t"), LR"(\\ \" \b\f\n\r\t)");
  EXPECT_EQ(JsonEscape(std::wstring(L"\0\x01\x1F ", 4)), L"\\u0000\\u0001\\u001f ");
  EXPECT_EQ(JsonEscape(L"a/b \x00FC\x4E2D\x7F"), L"a/b \x00FC\x4E2D\x7F");
  const std::wstring pair = {wchar_t(0xD83D), wchar_t(0xDD29)};
  EXPECT_EQ(JsonEscape(pair), pair);
}

TEST(JsonWriting, ReportsABatchInTheOrderOfNames) {
  BatchResults results;
  results[L"b"] = MakeFailureResult(L"no \"b\"");
  results[L"a\n"] = MakeSuccessResult(L"", LR"({"n":1})");
  results[L"C"] = MakeSuccessResult(L"done");
  EXPECT_EQ(EncodeBatchResults(results),
            LR"({"results":{"C":{"success":true,"message":"done","data":null},)"
            LR"("a\n":{"success":true,"message":"","data":{"n":1}},)"
            LR"("b":{"success":false,"message":"no \"b\"","data":null}}})");
  EXPECT_EQ(EncodeBatchResults({}), LR"({"results":{}})");
}

TEST(JsonWriting, MakesErrorAndHealthBodies) {
  EXPECT_EQ(EncodeError(L"a \"b\""), LR"({"error":"a \"b\""})");
  EXPECT_EQ(EncodeHealth({L"z", L"a\"b"}, 4001),
            LR"({"status":"ok","addinReachable":true,"provider":"creo","server":"VekAI.CreoAddin",)"
            LR"("listenPort":4001,"registeredOperations":["z","a\"b"]})");
  EXPECT_NE(EncodeHealth({}, 4001).find(LR"("registeredOperations":[]})"), std::wstring::npos);
}

}  // namespace
}  // namespace vek
