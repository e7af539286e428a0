// The console of the bench.

#include <algorithm>
#include <chrono>

#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {
namespace {

class Console : public BenchTest {
 protected:
  // What the console calls an error, or an empty text.
  std::string Error(const std::string& line) {
    try {
      Bench().Console(line);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return {};
  }
};

bool AnyHolds(const std::vector<std::string>& lines, const std::string& text) {
  return std::any_of(lines.begin(), lines.end(),
                     [&](const std::string& line) { return line.find(text) != std::string::npos; });
}

TEST_F(Console, HelpListsEachCommand) {
  const auto help = Bench().Console("help");
  for (const char* command : {"help", "models", "tree", "journal", "faces", "units", "fault", "delay",
                              "ledger", "pause", "resume", "quit"})
    EXPECT_TRUE(AnyHolds(help, command)) << command;
}

TEST_F(Console, WhatIsNoCommandIsNamed) {
  EXPECT_NE(Error("flault ProMdlSave -1").find("flault"), std::string::npos);
  EXPECT_NE(Error("fault ProNothing -1").find("ProNothing"), std::string::npos);
  EXPECT_NE(Error("fault ProMdlSave"), "");
  EXPECT_NE(Error("units yard"), "");
  EXPECT_NE(Error("journal many"), "");
}

TEST_F(Console, TheTreeShowsTheStartTemplate) {
  Execute(R"({"api_document_new_part":{}})");
  const auto tree = Bench().Console("tree");
  ASSERT_EQ(tree.size(), 4u);
  EXPECT_NE(tree[0].find("RIGHT"), std::string::npos);
  EXPECT_NE(tree[1].find("TOP"), std::string::npos);
  EXPECT_NE(tree[2].find("FRONT"), std::string::npos);
  EXPECT_NE(tree[3].find("type 979"), std::string::npos);
}

TEST_F(Console, AFaultReachesTheNthCall) {
  Execute(R"({"api_document_new_part":{}})");
  Bench().Console("fault ProMdlTypeGet -8 2");
  // The first call of the batch is the first type, asked for by the rebuild; the second is the sketch's.
  const Answer answer =
      Execute(R"({"api_document_rebuild":{},"api_sketch_create":{"plane":"XY"},"api_sketch_list":{}})");
  EXPECT_NE(answer.body.find(R"("api_document_rebuild":{"success":true)"), std::string::npos) << answer.body;
  EXPECT_NE(answer.body.find(
                R"("api_sketch_create":{"success":false,"message":"Failed to read active document type.")"),
            std::string::npos)
      << answer.body;
  EXPECT_NE(answer.body.find(R"("api_sketch_list":{"success":true)"), std::string::npos) << answer.body;
  const auto journal = Bench().Console("journal 60");
  EXPECT_TRUE(AnyHolds(journal, "ProMdlTypeGet"));
}

TEST_F(Console, ADelayLengthensTheCall) {
  Bench().Console("delay ProMdlCurrentGet 700");
  const auto begin = std::chrono::steady_clock::now();
  Execute(R"({"api_document_info":{}})");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(700));
}

}  // namespace
}  // namespace vek::endtoend
