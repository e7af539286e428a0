#include "addin/server/json_writer.h"

#include <gtest/gtest.h>

namespace vek {
namespace {

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
