#include <ProUtil.h>
#include <gmock/gmock.h>

#include "bench/host/text.h"
#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

class FileNamesTest : public support::BenchTest {
 protected:
  ProError Parse(const std::wstring& text) {
    support::Buffer<300> path(text);
    return ProFileMdlnameParse(path, directory, name, extension, &version);
  }
  support::PathBuffer directory;
  support::MdlNameBuffer name;
  support::Buffer<PRO_EXTENSION_SIZE> extension;
  int version = 0;
};

TEST_F(FileNamesTest, PathsAreTakenApart) {
  const struct {
    const wchar_t* path;
    const wchar_t* directory;
    const wchar_t* name;
    const wchar_t* extension;
    int version;
  } cases[] = {
      {L"bolt.prt", L"", L"bolt", L"prt", -1},
      {L"bolt.PRT.12", L"", L"bolt", L"PRT", 12},
      {L"bolt.prt.3.5", L"", L"bolt", L"prt", 5},
      {L"bolt.7", L"", L"bolt", L"", 7},
      {L"a.b.asm.1", L"", L"a.b", L"asm", 1},
      {L"C:\\parts\\bolt.prt", L"C:\\parts", L"bolt", L"prt", -1},
      {L"C:/parts/sub/bolt.prt.2", L"C:/parts/sub", L"bolt", L"prt", 2},
      {L"D:\\bolt.prt", L"D:\\", L"bolt", L"prt", -1},
      {L"\\bolt.prt", L"\\", L"bolt", L"prt", -1},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(ToUtf8(each.path));
    ASSERT_EQ(Parse(each.path), PRO_TK_NO_ERROR);
    EXPECT_EQ(directory.text(), each.directory);
    EXPECT_EQ(name.text(), each.name);
    EXPECT_EQ(extension.text(), each.extension);
    EXPECT_EQ(version, each.version);
  }
}

TEST_F(FileNamesTest, PathsWithoutANameOrWithoutRoomAreRefused) {
  const struct {
    std::wstring path;
    ProError status;
  } cases[] = {{L"", PRO_TK_INVALID_NAME},
               {L"C:\\parts\\", PRO_TK_INVALID_NAME},
               {L".prt", PRO_TK_INVALID_NAME},
               {L"bolt.prt.12345678901", PRO_TK_INVALID_NAME},
               {std::wstring(180, L'a') + L".prt", PRO_TK_LINE_TOO_LONG},
               {L"a." + std::wstring(32, L'e'), PRO_TK_LINE_TOO_LONG},
               {std::wstring(260, L'a'), PRO_TK_LINE_TOO_LONG}};
  for (const auto& each : cases) EXPECT_EQ(Parse(each.path), each.status) << ToUtf8(each.path);
}

}  // namespace
}  // namespace bench
