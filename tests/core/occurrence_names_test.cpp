// The forms in which names of occurrences and directories are compared.
#include "addin/ops/assembly/occurrence_names.h"

#include <gtest/gtest.h>

namespace vek::assembly {
namespace {

struct Case {
  const wchar_t* text;
  const wchar_t* expected;
};

TEST(StripModelExtension, TakesAtMostTwoSuffixesOfAModelFile) {
  const Case cases[] = {
      {L"", L""},           {L" Bolt ", L"Bolt"},   {L"BOLT.PRT.12", L"BOLT"}, {L"Bolt.prt", L"Bolt"},
      {L"a.AsM", L"a"},     {L"a.drw", L"a"},       {L"A.PRT.1.2", L"A.PRT"},  {L"a.1.2.3", L"a.1"},
      {L"A.", L"A"},        {L"A..", L"A"},         {L".prt", L".prt"},        {L"V1.BRACKET", L"V1.BRACKET"},
      {L"V1.2b", L"V1.2b"}, {L"a.stp.3", L"a.stp"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(StripModelExtension(text), expected);
}

TEST(NormalizeOccurrenceName, MakesTheSpellingsOfOneNameEqual) {
  const Case cases[] = {
      {L"C:\\lib/x\\Bolt-M6.prt.3", L"BOLT_M6"},
      {L"c:\\lib\\x/bolt m6", L"BOLT_M6"},
      {L" bolt:m6 ", L"BOLT_M6"},
      {L"BOLT_M6", L"BOLT_M6"},
      {L"bolt .prt", L"BOLT"},
      {L"v1.bracket", L"V1.BRACKET"},
      {L"  \t ", L""},
      {L"folder/", L""},
      {L"größe 2", L"GRÖßE_2"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(NormalizeOccurrenceName(text), expected);
}

TEST(CanonicalDirectory, KeepsARootsSeparator) {
  const Case cases[] = {
      {L"", L""},        {L"C:/Parts//", L"c:\\parts"}, {L" C:\\PARTS ", L"c:\\parts"},
      {L"C:/", L"c:\\"}, {L"C:\\\\\\", L"c:\\"},        {L"\\\\\\", L"\\\\\\"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(CanonicalDirectory(text), expected);
}

}  // namespace
}  // namespace vek::assembly
