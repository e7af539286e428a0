#include "addin/ops/common/model_paths.h"

#include <gtest/gtest.h>

#include <utility>

namespace vek {
namespace {

TEST(ModelPaths, AreJoinedWithOneSeparator) {
  const struct {
    const wchar_t* directory;
    const wchar_t* file;
    const wchar_t* joined;
  } cases[] = {
      {L"C:\\parts", L"a.prt", L"C:\\parts\\a.prt"},
      {L"C:\\parts\\", L"a.prt", L"C:\\parts\\a.prt"},
      {L"C:\\parts\\//\\", L"a.prt", L"C:\\parts\\a.prt"},
      {L"\\/", L"a.prt", L"\\a.prt"},
      {L"", L"a.prt", L"a.prt"},
      {L"C:\\parts\\/", L"", L"C:\\parts\\/"},
      {L"", L"", L""},
  };
  for (const auto& each : cases) EXPECT_EQ(JoinPath(each.directory, each.file), each.joined);
}

TEST(ModelPaths, AreCutDownToABaseName) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"a", L"a"},
      {L"a.prt.prt.5", L"a"},
      {L"a.5.DRW.6", L"a"},
      {L"a.txt", L"a.txt"},
      {L"a.txt.prt.1", L"a.txt"},
      {L"a.", L"a."},
      {L"C:\\parts/sub\\a.asm", L"a"},
      {L"C:\\parts\\sub/a.asm", L"a"},
      {L"C:\\parts\\", L""},
  };
  for (const auto& [text, base] : cases) EXPECT_EQ(BaseModelName(text), base);
}

}  // namespace
}  // namespace vek
