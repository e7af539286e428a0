// What readers make of texts that are no JSON, or mean something else there than by the standard, and how
// answers are written. Where a text is JSON, the fuzzer holds them against a strict parser.
#include <gtest/gtest.h>

#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"

namespace vek {
namespace {

using Texts = std::vector<std::wstring>;

TEST(JsonScanning, FindsAKeyAnywhere) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
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
      {LR"({"a":{},"a":{}})", {{L"a", L"{}"}, {L"a", L"{}"}}},
      {LR"({ "a" : {"k":"}"} , })", {{L"a", LR"({"k":"}"})"}}},
      {LR"({"a":{} "b":{}})", {{L"a", L"{}"}, {L"b", L"{}"}}},
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
      {L"{,", L"Malformed operations object."},
      {LR"({"a":"x,y"})", L"Malformed operations object."},
      {LR"({"a)", L"Unterminated operation name."},
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
      {LR"({"b":{"a":1},"a":2})", 17},
      {LR"({"b":[1,{"a":1}] "a":2})", 21},
      {LR"({"b":{"a":1}})", -1},
      {LR"({"A":1})", -1},
      {LR"({"a": )", -1},
      {LR"({"b":{,"a":1})", -1},
      {LR"({"b":"x)", -1},
      {LR"( {"a":1})", -1},
      {L"{  ", -1},
  };
  for (const auto& [object, index] : cases) {
    std::int32_t found = 99;
    EXPECT_EQ(JsonFindKey(object, L"a", found), index >= 0) << object;
    EXPECT_EQ(found, index) << object;
  }
}

TEST(JsonScanning, SplitsArraysIntoTheirElements) {
  const std::pair<const wchar_t*, Texts> cases[] = {
      {L"[ 1 , 2.5,x y ]", {L"1", L"2.5", L"x y"}},
      {L"[,1,,2]", {L"1", L"2"}},
      {LR"(["a" "b"])", {LR"("a")", LR"("b")"}},
      {L"[1,2", {L"1", L"2"}},
      {L"[1,[2,3", {L"1"}},
      {L"{1}", {}},
  };
  for (const auto& [array, elements] : cases) {
    Texts found = {L"stale"};
    JsonSplitArray(array, found);
    EXPECT_EQ(found, elements) << array;
  }
}

TEST(JsonValues, TakesTheCharacterBehindABackslashAsItIs) {
  EXPECT_EQ(JsonReadString(LR"("\u0041\q")", 0), L"u0041q");
  EXPECT_EQ(JsonReadString(LR"("open\)", 0), L"open\\");
  EXPECT_EQ(JsonReadString(LR"("a"b")", 0), L"a");
  EXPECT_EQ(JsonReadString(L"", 0), L"");
  EXPECT_EQ(JsonReadString(LR"("a")", -1), L"");
}

TEST(JsonValues, ReadsANumberAsFarAsItGoes) {
  const std::pair<const wchar_t*, double> cases[] = {{LR"({"x":12abc})", 12}, {LR"({"x":1,"x":2})", 1},
                                                     {LR"({"x":6)", 6},       {LR"({"x":0x10})", 16},
                                                     {LR"({"x":+1})", 1},     {LR"({"x":8])", 8}};
  for (const auto& [object, expected] : cases) {
    double number = 99;
    EXPECT_TRUE(JsonReadNumber(object, L"x", number)) << object;
    EXPECT_EQ(number, expected) << object;
  }
  for (const wchar_t* const object : {LR"({"x":,)", LR"({"y":1})", LR"({"X":1})", L"5", L""}) {
    double number = 99;
    EXPECT_FALSE(JsonReadNumber(object, L"x", number)) << object;
    EXPECT_EQ(number, 99) << object;
  }
}

TEST(JsonValues, ReadsBareBooleansInAnyCase) {
  EXPECT_TRUE(JsonReadBool(LR"({"x": TRUE })", L"x", false));
  for (const wchar_t* const object : {LR"({"x":2})", LR"({"y":0})", L""})
    for (const bool otherwise : {false, true})
      EXPECT_EQ(JsonReadBool(object, L"x", otherwise), otherwise) << object;
}

TEST(JsonValues, GivesRawValuesAsTheyStand) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {LR"({"x":"open)", LR"("open)"}, {LR"({"x": 1 2 ]})", L"1 2"}, {LR"({"x":[1,2})", L""}, {L"", L""}};
  for (const auto& [object, raw] : cases) EXPECT_EQ(JsonReadRaw(object, L"x"), raw) << object;
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

}  // namespace
}  // namespace vek
