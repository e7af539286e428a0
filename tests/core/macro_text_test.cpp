// Names and code of macros before anything touches the disk.
#include "addin/ops/macros/macro_text.h"

#include <gtest/gtest.h>

namespace vek::macros {
namespace {

TEST(MacroText, NamesComeDownToAFileName) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"  size.txt ", L"size"},
      {L"size.tar.gz", L"size.tar"},
      {L"a:b<c>d\"e|f?g*h", L"a_b_c_d_e_f_g_h"},
      {L"a\tb\x01", L"a_b_"},
      {L".hidden", L"hidden"},
      {L"size...", L"size"},
      {L"a ..", L"a "},  // blanks go before dots, once
      {L"gr\u00f6\u00dfe", L"gr\u00f6\u00dfe"},
  };
  for (const auto& [name, expected] : cases) {
    std::wstring safe, error;
    EXPECT_TRUE(SanitizeMacroName(name, safe, error)) << testing::PrintToString(std::wstring(name));
    EXPECT_EQ(safe, expected);
    EXPECT_EQ(error, L"");
  }
}

TEST(MacroText, ANameOfNothingIsRefused) {
  std::wstring safe = L"before", error;
  EXPECT_FALSE(SanitizeMacroName(L"..\\..", safe, error));
  EXPECT_EQ(safe, L"");
  EXPECT_EQ(error, L"'..\\..' is not a valid macro file name.");
}

TEST(MacroText, CodeIsOneLineWithoutAMapkeysHead) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L" ~ Command; \r\n~ Next\n;\r", L"~ Command; ~ Next;"},
      {L"mapkey x @LABELy;~ Command;", L"~ Command;"},
      {L"MapKey x; \n ~ Command ", L"~ Command"},
      {L"mapkey x", L"mapkey x"},
      {L"mapkeys;a", L"mapkeys;a"},
      {L"map\nkey x;a", L"a"},
  };
  for (const auto& [code, expected] : cases) {
    std::wstring normal, error;
    EXPECT_TRUE(NormalizeMacroCode(code, normal, error)) << testing::PrintToString(std::wstring(code));
    EXPECT_EQ(normal, expected);
  }
}

TEST(MacroText, OneTypeHasManyWords) {
  for (const wchar_t* type : {L"", L" All ", L"mapkey", L"CREO", L"macro", L"txt"})
    EXPECT_TRUE(IsMacroType(type));
  for (const wchar_t* type : {L"python", L"mapkeys", L"a l l"}) EXPECT_FALSE(IsMacroType(type));
}

TEST(MacroText, OnlyWhatIsInAFolderLiesBelowIt) {
  EXPECT_TRUE(LiesBelow(L"C:\\Macros\\a.txt", L"c:\\macros"));
  EXPECT_TRUE(LiesBelow(L"C:\\Macros\\a.txt", L"C:\\Macros\\/"));
  EXPECT_FALSE(LiesBelow(L"C:\\Macros2\\a.txt", L"C:\\Macros"));
  EXPECT_FALSE(LiesBelow(L"C:\\Macros", L"C:\\Macros"));
}

}  // namespace
}  // namespace vek::macros
