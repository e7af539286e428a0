// What the helper makes of the texts of an update, before it touches a file.
#include <gtest/gtest.h>

#include <string>

#include "addin/text/utf8.h"
#include "deploy/helper/file_names.h"
#include "deploy/helper/manifest.h"
#include "deploy/helper/update_decision.h"

namespace vek::helper {
namespace {

TEST(UpdateVersion, ComparesByNumbersFromTheLeft) {
  const std::pair<const char*, const char*> rising[] = {
      {"1.2.3", "1.2.4"}, {"1.9", "1.10"}, {"1.0.0", "1.0.0.1"}, {"0.9.9.9", "1"}};
  for (const auto& [below, above] : rising) {
    EXPECT_LT(ReadVersion(below), ReadVersion(above)) << below << " " << above;
  }
  EXPECT_EQ(ReadVersion("1.2"), ReadVersion("01.2.0.0"));
  EXPECT_EQ(VersionText(*ReadVersion("1.2")), L"1.2.0");
  EXPECT_EQ(VersionText(*ReadVersion("1.2.3.4")), L"1.2.3.4");
  for (const char* text : {"", ".", "1.", ".1", "1..2", "1.2.3.4.5", "1.x", "-1", "+1", "1 .2", "1234567890"})
    EXPECT_FALSE(ReadVersion(text)) << text;
}

TEST(UpdateFileName, MeansAFileInTheFolderAndNothingElse) {
  for (const wchar_t* name : {L"VekCreoAddin.dll", L"read me.txt", L"a..b", L".hidden", L"COM.dll", L"x.old",
                              L"x.old-", L"x.old-1a", L"\u00fcber.txt"})
    EXPECT_TRUE(IsUpdateFileName(name)) << EncodeUtf8(name);
  for (const wchar_t* name :
       {L"", L".", L"..", L"..\\x", L"a/b", L"C:x", L"x.dll:s", L"x.", L"x ", L"a*", L"a?", L"a\tb", L"NUL",
        L"con.txt", L"Lpt1.x", L"complete.txt", L"COMPLETE.part", L"x.old-1", L"x.OLD-22"})
    EXPECT_FALSE(IsUpdateFileName(name)) << EncodeUtf8(name);
}

TEST(UpdateFileName, PutAsideTellsItsNameAndNumber) {
  const auto aside = ReadAsideName(AsideName(L"a.old-3", 12));
  ASSERT_TRUE(aside);
  EXPECT_EQ(aside->name, L"a.old-3");
  EXPECT_EQ(aside->number, 12u);
  EXPECT_FALSE(ReadAsideName(L".old-1"));
}

const std::string kDigest(64, 'a');
const std::string kHelperLine = "file VekAI.Creo.AddinHelper.exe 10 " + kDigest + "\n";

TEST(UpdateManifest, TellsVersionAndFiles) {
  Manifest manifest;
  std::wstring problem;
  ASSERT_TRUE(
      ReadManifest("\xEF\xBB\xBF"
                   "version 2.0\r\n\r\nfile  read me.txt\t0 " +
                       std::string(64, 'F') + " \r\n" + kHelperLine,
                   manifest, problem));
  EXPECT_EQ(manifest.version, (Version{{2, 0, 0, 0}}));
  ASSERT_EQ(manifest.files.size(), 2u);
  EXPECT_EQ(manifest.files[0].name, L"read me.txt");
  EXPECT_EQ(manifest.files[0].size, 0u);
  EXPECT_EQ(manifest.files[0].sha256, std::string(64, 'f'));
  EXPECT_EQ(manifest.files[1].size, 10u);
}

TEST(UpdateManifest, IsRefusedWithTheLineThatIsWrong) {
  const std::string good = "version 2.0\n" + kHelperLine;
  const std::pair<std::string, const wchar_t*> cases[] = {
      {"", L"the manifest tells no version"},
      {"version 2.0\nfile a 1 " + kDigest, L"the manifest lists no VekAI.Creo.AddinHelper.exe"},
      {"version two\n" + kHelperLine, L"line 1 of the manifest is wrong"},
      {good + "version 2.1", L"line 3 of the manifest is wrong"},
      {good + "file a " + kDigest, L"line 3 of the manifest is wrong"},
      {good + "file a -1 " + kDigest, L"line 3 of the manifest is wrong"},
      {good + "file a 99999999999999999999 " + kDigest, L"line 3 of the manifest is wrong"},
      {good + "file a 1 " + std::string(64, 'g'), L"line 3 of the manifest is wrong"},
      {good + "file ..\\a 1 " + kDigest, L"line 3 of the manifest is wrong"},
      {good + "file \xff 1 " + kDigest, L"line 3 of the manifest is wrong"},
      {good + "file VEKAI.creo.addinhelper.EXE 1 " + kDigest, L"line 3 of the manifest is wrong"}};
  for (const auto& [bytes, message] : cases) {
    Manifest manifest;
    std::wstring problem;
    EXPECT_FALSE(ReadManifest(bytes, manifest, problem)) << bytes;
    EXPECT_EQ(problem, message) << bytes;
  }
}

TEST(UpdateDecision, FollowsWhatIsOffered) {
  const Version here{{1, 1, 0, 0}};
  struct Case {
    Version offered;
    const char *offer, *staged;
    Decision decision;
  };
  const Version same = here, older{{1, 0, 9, 0}}, newer{{1, 2, 0, 0}};
  for (const Case& c : {Case{same, "m", "", Decision::kNothing}, Case{older, "m", "", Decision::kNothing},
                        Case{older, "m", "n", Decision::kWithdraw}, Case{newer, "m", "", Decision::kStage},
                        Case{newer, "m", "m", Decision::kKeep}, Case{newer, "m", "n", Decision::kStage}})
    EXPECT_EQ(DecideOnOffer(here, c.offered, c.offer, c.staged), c.decision) << c.offer << c.staged;
  EXPECT_TRUE(IsWorthInstalling(here, newer));
  EXPECT_FALSE(IsWorthInstalling(here, same));
}

}  // namespace
}  // namespace vek::helper
