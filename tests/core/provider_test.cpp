#include "addin/server/provider.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/captured_log.h"

namespace vek {
namespace {

using support::CapturedLog;
using support::LogSide;

class Provider : public testing::Test {
 protected:
  void SetUp() override { support::ClearCapturedLog(); }

  // An operation that leaves its name in `ran_` and answers `result`.
  void Register(const std::wstring& name, CreoMcpOperationResult result) {
    provider_.RegisterOperation(name, [this, name, result](const std::wstring&) {
      ran_.push_back(name);
      return result;
    });
  }

  CreoMcpProvider provider_;
  std::vector<std::wstring> ran_;
};

void ExpectFailure(const CreoMcpOperationResult& result, const std::wstring& message) {
  EXPECT_FALSE(result.success);
  EXPECT_EQ(result.message, message);
  EXPECT_EQ(result.dataJson, L"null");
}

TEST_F(Provider, FillsMissingNamesAndKeepsTheOthers) {
  Register(L"api_macro_run", MakeSuccessResult(L"mine"));
  provider_.FillMissingOperations();

  const auto names = provider_.ListOperations();
  ASSERT_EQ(names.size(), 81u);  // none comes twice
  EXPECT_EQ(provider_.Dispatch(L"api_macro_run", L"{}").message, L"mine");
  ExpectFailure(provider_.Dispatch(L"api_macro_list", L"{}"),
                L"Operation 'api_macro_list' is not implemented by the Creo provider yet.");
  ExpectFailure(provider_.Dispatch(L"API_MACRO_LIST", L"{}"),
                L"Operation 'API_MACRO_LIST' is not implemented by this provider.");
}

TEST_F(Provider, TurnsExceptionsIntoFailures) {
  provider_.RegisterOperation(
      L"std", [](const std::wstring&) -> CreoMcpOperationResult { throw std::runtime_error("out of wax"); });
  provider_.RegisterOperation(L"odd", [](const std::wstring&) -> CreoMcpOperationResult { throw 5; });
  provider_.RegisterOperation(L"empty", nullptr);
  ExpectFailure(provider_.Dispatch(L"std", L"{}"), L"Operation 'std' threw: out of wax");
  ExpectFailure(provider_.Dispatch(L"odd", L"{}"), L"Operation 'odd' threw an unknown exception.");
  const auto empty = provider_.Dispatch(L"empty", L"{}");
  EXPECT_TRUE(empty.message.starts_with(L"Operation 'empty' threw: ")) << empty.message;
  // Each has its end line all the same.
  const auto lines = CapturedLog();
  ASSERT_EQ(lines.size(), 6u);
  EXPECT_EQ(lines[1].text,
            L"MCP Dispatch END   op='std' success=false message=Operation 'std' threw: out of wax data=null");
}

TEST_F(Provider, LogsEachDispatchWithItsTextsCut) {
  const std::wstring marker = L"... <truncated>";
  const std::wstring fits(400, L'm');
  Register(L"a", MakeSuccessResult(fits, std::wstring(401, L'1')));
  provider_.Dispatch(L"a", std::wstring(800, L'x'));
  provider_.Dispatch(L"a", std::wstring(801, L'x'));

  const auto lines = CapturedLog();
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0].text, L"MCP Dispatch BEGIN op='a' args=" + std::wstring(800, L'x'));
  EXPECT_EQ(lines[1].text, L"MCP Dispatch END   op='a' success=true message=" + fits + L" data=" +
                               std::wstring(400, L'1') + marker);
  EXPECT_EQ(lines[2].text, L"MCP Dispatch BEGIN op='a' args=" + std::wstring(800, L'x') + marker);
  for (const auto& line : lines) EXPECT_EQ(line.side, LogSide::kOperation);
}

TEST_F(Provider, RunsABatchInItsOrderPastFailures) {
  Register(L"api_document_close", MakeFailureResult(L"unsaved"));
  Register(L"a", MakeSuccessResult(L"yes"));
  const auto results =
      provider_.ExecuteBatch({{L"api_document_close", L"{}"}, {L"unknown", L"{}"}, {L"a", L"{}"}});
  EXPECT_EQ(ran_, (std::vector<std::wstring>{L"api_document_close", L"a"}));
  ASSERT_EQ(results.size(), 3u);
  EXPECT_EQ(results.at(L"api_document_close").message, L"unsaved");
  EXPECT_TRUE(results.at(L"a").success);
  EXPECT_EQ(CapturedLog().front().text, L"MCP Batch BEGIN count=3");
  EXPECT_EQ(CapturedLog().back().text, L"MCP Batch END");
}

TEST_F(Provider, ReportsTheLastResultOfANameAndSkipsWhatFollowsASuccessfulClose) {
  int calls = 0;
  provider_.RegisterOperation(L"twice", [&calls](const std::wstring&) {
    return MakeSuccessResult(++calls == 1 ? L"first" : L"second");
  });
  Register(L"api_document_close", MakeSuccessResult(L"closed"));
  Register(L"a", MakeSuccessResult());
  const auto results = provider_.ExecuteBatch({{L"twice", L""},
                                               {L"twice", L""},
                                               {L"a", L""},
                                               {L"api_document_close", L""},
                                               {L"a", L""},
                                               {L"b", L""}});
  EXPECT_EQ(ran_, (std::vector<std::wstring>{L"a", L"api_document_close"}));
  EXPECT_EQ(results.at(L"twice").message, L"second");
  const std::wstring skipped = L"Skipped: api_document_close must be the last operation in a batch.";
  ExpectFailure(results.at(L"a"), skipped);
  ExpectFailure(results.at(L"b"), skipped);
  // Four dispatches with two lines each, and the two lines of the batch.
  EXPECT_EQ(CapturedLog().size(), 10u);
}

}  // namespace
}  // namespace vek
