// The update check, with real files.
#include <windows.h>

#include "addin/platform/owned_handle.h"
#include "addin/text/utf8.h"
#include "deploy/helper/staging.h"
#include "tests/helper/update_fixture.h"

namespace vek::helper {
namespace {

class UpdateCheck : public UpdateFixture {
 protected:
  const Files files_{{kHelperFile, "new helper"}, {L"VekCreoAddin.dll", "new add-in"}};
};

TEST_F(UpdateCheck, KnowsTheDigestOfAKnownText) {
  EXPECT_EQ(Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST_F(UpdateCheck, StagesANewerVersionWithTheMarkerBesideIt) {
  Offer("1.0.1", files_);
  const Outcome outcome = Check();
  EXPECT_EQ(outcome.line, L"version 1.0.1 is staged, 2 files");
  EXPECT_EQ(Read(installation_.Staged(kHelperFile)), "new helper");
  EXPECT_EQ(Read(installation_.Staged(L"VekCreoAddin.dll")), "new add-in");
  EXPECT_EQ(Read(installation_.Staged(kMarkerFile)), ManifestOf("1.0.1", files_));
  EXPECT_FALSE(PathExists(installation_.Staged(kMarkerInTheMaking)));
  EXPECT_FALSE(PathExists(installation_.Lock()));
  EXPECT_EQ(Check().line, L"version 1.0.1 is staged already");
}

TEST_F(UpdateCheck, FindsTheOffersWhereverTheyAre) {
  const std::wstring whole = offered_.wstring();
  for (const std::wstring& place : {whole, whole + L"\\", L"\\\\?\\" + whole, std::wstring(L"../offered/"),
                                    L"\uFEFF" + whole + L"\\manifest.txt\r\nnext line"}) {
    Offer("1.0.1", files_);
    Write(installation_.Source(), EncodeUtf8(place));
    EXPECT_EQ(Check().line, L"version 1.0.1 is staged, 2 files") << place;
    ClearStaged(installation_);
  }
}

TEST_F(UpdateCheck, LeavesEverythingWhereNothingNewerIsOffered) {
  EXPECT_EQ(Check().line, L"nothing is offered at " + installation_.File(L"..\\offered\\manifest.txt"));
  Offer("1.0.0", files_);
  EXPECT_EQ(Check().line, L"version 1.0.0 is offered, 1.0.0 is here");
  for (const char* source : {"", "\r\n\\\\server\\share", "\xff\xfe"}) {
    Write(installation_.Source(), source);
    EXPECT_EQ(Check().line, L"no place for updates is named");
  }
  std::filesystem::remove(installation_.Source());
  EXPECT_EQ(Check().code, ExitCode::kDone);
  EXPECT_FALSE(PathExists(installation_.StagingFolder()));
}

TEST_F(UpdateCheck, StagesNothingOfAnUpdateThatIsNotWhatItSays) {
  const std::pair<std::wstring, std::string> damages[] = {
      {L"VekCreoAddin.dll", "new addxin"}, {L"VekCreoAddin.dll", "new add-in and more"}, {kHelperFile, ""}};
  for (const auto& [name, bytes] : damages) {
    Offer("1.0.1", files_);
    ASSERT_EQ(Check().code, ExitCode::kDone);
    Offer("1.0.2", files_);
    Write(offered_ / name, bytes);
    const Outcome outcome = Check();
    EXPECT_EQ(outcome.code, ExitCode::kRefused);
    EXPECT_EQ(outcome.line, name + L" is not the file that the manifest tells");
    EXPECT_FALSE(PathExists(installation_.StagingFolder())) << "the former update is gone as well";
  }
  Write(offered_ / L"manifest.txt", "version 3\nfile ..\\creo.exe 1 a");
  EXPECT_EQ(Check().code, ExitCode::kRefused);
}

TEST_F(UpdateCheck, TakesBackWhatIsNoLongerOffered) {
  Offer("1.0.1", files_);
  Check();
  std::filesystem::rename(offered_, scratch_ / L"away");
  Check();
  EXPECT_TRUE(Staged()) << "the place being away is no word against the update";
  std::filesystem::rename(scratch_ / L"away", offered_);
  Offer("1.0.0", files_);
  EXPECT_EQ(Check().line, L"the staged update is no longer offered and was removed");
  EXPECT_FALSE(Staged());
}

TEST_F(UpdateCheck, LeavesTheFolderToAnotherHelper) {
  Offer("1.0.1", files_);
  const OwnedHandle other(::CreateFileW(installation_.Lock().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  ASSERT_TRUE(other);
  EXPECT_EQ(Check().code, ExitCode::kBusy);
  EXPECT_EQ(Install().code, ExitCode::kBusy);
  EXPECT_FALSE(Staged());
}

}  // namespace
}  // namespace vek::helper
