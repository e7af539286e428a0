#include <gtest/gtest.h>

#include <string>

#include "addin/platform/log.h"
#include "addin/platform/text_encoding.h"
#include "tests/support/log_tail.h"

namespace vek {
namespace {

class AddinLog : public testing::Test {
 protected:
  support::LogTail tail_;
};

TEST_F(AddinLog, OperationsWriteUtf8) {
  LogOperation(L"MCP Dispatch 10 \u00b5m \u20ac");
  EXPECT_EQ(tail_.Messages(), std::vector<std::string>{"MCP Dispatch 10 \xC2\xB5m \xE2\x82\xAC"});
}

TEST_F(AddinLog, TheShellWritesTheCodePage) {
  LogShell(L"ERROR: caf\u00e9");
  EXPECT_EQ(tail_.Messages(), std::vector<std::string>{"ERROR: " + EncodeAnsi(L"caf\u00e9")});
}

TEST_F(AddinLog, BytesPassAndNullIsIgnored) {
  WriteLog("raw \xFF");
  WriteLog(nullptr);
  EXPECT_EQ(tail_.Messages(), std::vector<std::string>{"raw \xFF"});
}

}  // namespace
}  // namespace vek
