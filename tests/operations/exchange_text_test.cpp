#include <gtest/gtest.h>

#include "addin/ops/exchange/export_text.h"

namespace vek::exchange {
namespace {

TEST(ExportText, KnowsFourFormatsUnderSeveralWords) {
  const struct {
    const wchar_t* text;
    const wchar_t* name;
    const wchar_t* extension;
    int creo_type;
    int slice_type;
  } cases[] = {
      {L"", L"STEP", L"stp", 1, -1},     {L" \t", L"STEP", L"stp", 1, -1},
      {L"step", L"STEP", L"stp", 1, -1}, {L" Stp\n", L"STEP", L"stp", 1, -1},
      {L"IGES", L"IGES", L"igs", 4, -1}, {L"igs", L"IGES", L"igs", 4, -1},
      {L"sat", L"SAT", L"sat", 7, -1},   {L"stl", L"STL", L"stl", 1, 12},
  };
  for (const auto& each : cases) {
    const ExportFormat* const format = FindExportFormat(each.text);
    ASSERT_NE(format, nullptr) << each.text;
    EXPECT_STREQ(format->name, each.name);
    EXPECT_STREQ(format->extension, each.extension);
    EXPECT_EQ(format->creo_type, each.creo_type);
    EXPECT_EQ(format->slice_type, each.slice_type);
  }
  for (const wchar_t* other : {L"obj", L"STEP AP214", L".stp"}) EXPECT_EQ(FindExportFormat(other), nullptr);
}

TEST(ExportText, TakesOneSuffixOffAPath) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"C:\\a.STEP", L"C:\\a"},
      {L"a.stp", L"a"},
      {L"a.igs", L"a"},
      {L"a.Iges", L"a"},
      {L"a.sat", L"a"},
      {L"a.stl", L"a"},
      {L"a.stp.igs", L"a.stp"},
      {L"a.stp.txt", L"a.stp.txt"},
      {L".stp", L""},
      {L"astp", L"astp"},
      {L"", L""},
  };
  for (const auto& [path, cut] : cases) EXPECT_EQ(WithoutExportSuffix(path), cut);
}

TEST(ExportText, FindsTheDirectoryByTheLastSeparator) {
  EXPECT_EQ(DirectoryOf(L"C:\\a/b"), L"C:\\a");
  EXPECT_EQ(DirectoryOf(L"C:/a\\b"), L"C:/a");
  EXPECT_EQ(DirectoryOf(L"b"), L"");
}

TEST(ExportText, MakesFileNamesOfWhatAFileNameCanHold) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"BRACKET 1", L"BRACKET_1"}, {L"a-Z_09", L"a-Z_09"}, {L"a.b\\c:d\te", L"abcde"},
      {L"\u00c4\u00df", L"export"}, {L"", L"export"},       {L"  ", L"__"},
  };
  for (const auto& [text, name] : cases) EXPECT_EQ(SanitizeExportName(text), name);
}

TEST(ExportText, ReadsListsOfStringsOnly) {
  const struct {
    const wchar_t* value;
    bool is_list;
    std::vector<std::wstring> strings;
  } cases[] = {
      {L"[]", true, {}},
      {L"[ ,\t,\r\n]", true, {}},
      {LR"(["a","b"])", true, {L"a", L"b"}},
      {LR"(["a" "b",])", true, {L"a", L"b"}},
      {LR"(["a\"]\n\\"])", true, {L"a\"]n\\"}},  // an escape is the character itself
      {LR"([""])", true, {L""}},
      {L"[1]", false, {}},
      {LR"(["a",1])", false, {L"a"}},
      {LR"("a")", false, {}},
      {L"{}", false, {}},
      {L"5", false, {}},
      {L"null", false, {}},
  };
  for (const auto& each : cases) {
    std::vector<std::wstring> list = {L"before"};
    EXPECT_EQ(ReadStringList(std::wstring(L"{\"k\":") + each.value + L"}", L"k", list), each.is_list)
        << each.value;
    EXPECT_EQ(list, each.strings) << each.value;
  }
  std::vector<std::wstring> list = {L"before"};
  EXPECT_FALSE(ReadStringList(L"{}", L"k", list));
  EXPECT_TRUE(list.empty());
}

}  // namespace
}  // namespace vek::exchange
