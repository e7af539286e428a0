#include <gtest/gtest.h>

#include <tuple>

#include "addin/ops/exchange/export_text.h"

namespace vek::exchange {
namespace {

// What the writers are handed for each format is seen where they are called.
TEST(ExportText, KnowsFourFormatsUnderSeveralWords) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L" \t", L"STEP"}, {L"step", L"STEP"}, {L" Stp\n", L"STEP"}, {L"IGES", L"IGES"},
      {L"igs", L"IGES"}, {L"sat", L"SAT"},   {L"stl", L"STL"},
  };
  for (const auto& [text, name] : cases) {
    const ExportFormat* const format = FindExportFormat(text);
    ASSERT_NE(format, nullptr) << text;
    EXPECT_STREQ(format->name, name);
  }
  for (const wchar_t* other : {L"obj", L"STEP AP214", L".stp"}) EXPECT_EQ(FindExportFormat(other), nullptr);
}

TEST(ExportText, TakesOneSuffixOffAPath) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"C:\\a.STEP", L"C:\\a"}, {L"a.stp.igs", L"a.stp"},     {L"a.Iges", L"a"}, {L"a.sat", L"a"},
      {L"a.stl", L"a"},          {L"a.stp.txt", L"a.stp.txt"}, {L".stp", L""},    {L"astp", L"astp"},
  };
  for (const auto& [path, cut] : cases) EXPECT_EQ(WithoutExportSuffix(path), cut);
}

TEST(ExportText, MakesFileNamesOfWhatAFileNameCanHold) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"BRACKET 1", L"BRACKET_1"}, {L"a-Z_09", L"a-Z_09"}, {L"a.b\\c:d\te", L"abcde"},
      {L"\u00c4\u00df", L"export"}, {L"", L"export"},       {L"  ", L"__"},
  };
  for (const auto& [text, name] : cases) EXPECT_EQ(SanitizeExportName(text), name);
}

TEST(ExportText, ReadsListsOfStringsOnly) {
  const std::tuple<const wchar_t*, bool, std::vector<std::wstring>> cases[] = {
      {L"[]", true, {}},
      {LR"(["a" "b",])", true, {L"a", L"b"}},
      {LR"(["a\"]\n\\"])", true, {L"a\"]n\\"}},  // an escape is the character itself
      {LR"([""])", true, {L""}},
      {LR"(["a",1])", false, {L"a"}},
      {LR"("a")", false, {}},
      {L"null", false, {}},
  };
  for (const auto& [value, is_list, strings] : cases) {
    std::vector<std::wstring> list = {L"before"};
    EXPECT_EQ(ReadStringList(std::wstring(L"{\"k\":") + value + L"}", L"k", list), is_list) << value;
    EXPECT_EQ(list, strings) << value;
  }
  std::vector<std::wstring> list = {L"before"};
  EXPECT_FALSE(ReadStringList(L"{}", L"k", list));
  EXPECT_TRUE(list.empty());
}

}  // namespace
}  // namespace vek::exchange
