// The installation of a staged update, with real files, some of them in use.
#include <windows.h>

#include <memory>

#include "addin/platform/owned_handle.h"
#include "tests/helper/update_fixture.h"

namespace vek::helper {
namespace {

constexpr wchar_t kAddin[] = L"VekCreoAddin.dll";
constexpr wchar_t kPage[] = L"welcome.html";

class PendingInstall : public UpdateFixture {
 protected:
  PendingInstall() {
    Write(installation_.File(kHelperFile), "old helper");
    Write(installation_.File(kAddin), "old add-in");
    Offer("1.1.0", {{kHelperFile, "new helper"}, {kAddin, "new add-in"}, {kPage, "new page"}});
    EXPECT_EQ(Check().code, ExitCode::kDone);
  }
  void ExpectOldFiles() const {
    EXPECT_EQ(Installed(kHelperFile), "old helper");
    EXPECT_EQ(Installed(kAddin), "old add-in");
    EXPECT_FALSE(PathExists(installation_.File(kPage)));
    EXPECT_FALSE(PutAside(kHelperFile));
    EXPECT_FALSE(PutAside(kAddin));
  }
  void ExpectNewFiles() const {
    EXPECT_EQ(Installed(kHelperFile), "new helper");
    EXPECT_EQ(Installed(kAddin), "new add-in");
    EXPECT_EQ(Installed(kPage), "new page");
    EXPECT_FALSE(PathExists(installation_.StagingFolder()));
  }
  // Keeps a file from being renamed and deleted.
  static std::unique_ptr<OwnedHandle> Hold(const std::wstring& path) {
    auto held = std::make_unique<OwnedHandle>(
        ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(*held);
    return held;
  }
};

TEST_F(PendingInstall, PutsAllFilesInPlaceAndLeavesNothingBehind) {
  EXPECT_EQ(Install().line, L"version 1.1.0 is installed");
  ExpectNewFiles();
  EXPECT_FALSE(PutAside(kHelperFile));
  EXPECT_FALSE(PutAside(kAddin));
  EXPECT_EQ(Install().line, L"nothing is staged");
}

TEST_F(PendingInstall, ReplacesALibraryThatIsLoaded) {
  std::filesystem::copy_file(BuiltBeside(L"loadable_library.dll"), installation_.File(kAddin),
                             std::filesystem::copy_options::overwrite_existing);
  const HMODULE loaded = ::LoadLibraryW(installation_.File(kAddin).c_str());
  ASSERT_NE(loaded, nullptr);
  EXPECT_EQ(Install().code, ExitCode::kDone);
  ExpectNewFiles();
  EXPECT_TRUE(PutAside(kAddin)) << "it can't be deleted yet";
  EXPECT_EQ(Install().code, ExitCode::kDone);
  EXPECT_TRUE(PutAside(kAddin));
  ::FreeLibrary(loaded);
  EXPECT_EQ(Install().code, ExitCode::kDone);
  EXPECT_FALSE(PutAside(kAddin)) << "nobody uses it any more";
}

TEST_F(PendingInstall, PutsEverythingBackWhenAFileCannotBeMoved) {
  for (const auto& path :
       {installation_.File(kHelperFile), installation_.Staged(kAddin), installation_.Staged(kPage)}) {
    // The helper is the last to be moved, the rest goes in the manifest's order.
    const auto held = Hold(path), last = Hold(installation_.File(kHelperFile));
    const Outcome outcome = Install();
    EXPECT_EQ(outcome.code, ExitCode::kFailed);
    EXPECT_TRUE(outcome.line.starts_with(path + L" can't be moved (error ")) << outcome.line;
    EXPECT_TRUE(outcome.line.ends_with(L"), and all is as it was")) << outcome.line;
    ExpectOldFiles();
  }
  EXPECT_EQ(Install().code, ExitCode::kDone) << "the next run finds all that it needs";
  ExpectNewFiles();
}

TEST_F(PendingInstall, RefusesAStagedFileThatChanged) {
  Write(installation_.Staged(kPage), "odd page");
  const Outcome outcome = Install();
  EXPECT_EQ(outcome.code, ExitCode::kRefused);
  EXPECT_EQ(outcome.line, L"the staged update is refused: welcome.html");
  ExpectOldFiles();
  EXPECT_FALSE(Staged()) << "the next check stages it afresh";
}

TEST_F(PendingInstall, InstallsNothingWithoutAWholeMarker) {
  const std::string manifest = Read(installation_.Staged(kMarkerFile));
  Write(installation_.Staged(kMarkerFile), manifest.substr(0, manifest.size() - 2));
  EXPECT_EQ(Install().code, ExitCode::kRefused);
  ExpectOldFiles();
  ASSERT_EQ(Check().code, ExitCode::kDone);
  std::filesystem::remove(installation_.Staged(kMarkerFile));
  EXPECT_EQ(Install().line, L"nothing is staged");
  ExpectOldFiles();
}

TEST_F(PendingInstall, RefusesToReplaceAFolder) {
  std::filesystem::create_directory(installation_.File(kPage));
  EXPECT_EQ(Install().code, ExitCode::kRefused);
  EXPECT_EQ(Installed(kAddin), "old add-in");
}

TEST_F(PendingInstall, DropsAnUpdateThatAnotherWayHasOvertaken) {
  EXPECT_EQ(InstallPending(installation_, Version{{1, 1, 0, 0}}).line,
            L"the staged version 1.1.0 is not above 1.1.0 and was removed");
  ExpectOldFiles();
  EXPECT_FALSE(Staged());
}

TEST_F(PendingInstall, GoesOnWhereARunEndedInTheMiddle) {
  // That run had placed the new page, and had only put the old add-in aside.
  std::filesystem::rename(installation_.Staged(kPage), installation_.File(kPage));
  std::filesystem::rename(installation_.File(kAddin), installation_.File(AsideName(kAddin, 2)));
  Write(installation_.File(AsideName(kAddin, 1)), "older add-in");
  {
    const auto held = Hold(installation_.Staged(kAddin));
    EXPECT_EQ(Install().code, ExitCode::kFailed);
    EXPECT_EQ(Installed(kAddin), "old add-in") << "the newest has its name back, whatever comes after";
  }
  EXPECT_EQ(Install().code, ExitCode::kDone);
  ExpectNewFiles();
}

}  // namespace
}  // namespace vek::helper
