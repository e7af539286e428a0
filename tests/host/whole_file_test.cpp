#include "bench/host/whole_file.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using testing::ElementsAre;

class WholeFileTest : public support::BenchTest {
 protected:
  std::string Bytes(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(PathOf(file)), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
};

TEST_F(WholeFileTest, HoldsEveryByteAndReplacesWhatStoodThere) {
  const std::string bytes("first\r\n\0\x1A", 9);
  EXPECT_TRUE(WriteWholeFile(PathOf(L"file"), bytes));
  EXPECT_EQ(Bytes(L"file"), bytes);
  EXPECT_TRUE(WriteWholeFile(PathOf(L"file"), "2"));
  EXPECT_EQ(Bytes(L"file"), "2");
  EXPECT_THAT(FilesHere(), ElementsAre(L"file"));
}

TEST_F(WholeFileTest, FailureLeavesWhatStoodThereAndNothingElse) {
  std::filesystem::create_directory(PathOf(L"taken"));
  EXPECT_FALSE(WriteWholeFile(PathOf(L"taken"), "bytes"));
  EXPECT_FALSE(WriteWholeFile(PathOf(L"nowhere\\file"), "bytes"));
  EXPECT_TRUE(Complained("can't be written"));
  EXPECT_THAT(FilesHere(), ElementsAre(L"taken"));
}

}  // namespace
}  // namespace bench
