// An installation and a place where updates for it are offered, in a scratch folder.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "addin/platform/files.h"
#include "addin/platform/processes.h"
#include "deploy/helper/file_names.h"
#include "deploy/helper/installation.h"
#include "deploy/helper/pending_install.h"
#include "deploy/helper/sha256.h"
#include "deploy/helper/update_check.h"
#include "tests/support/scratch_folder.h"

namespace vek::helper {

class UpdateFixture : public ::testing::Test {
 protected:
  using Files = std::map<std::wstring, std::string>;  // name and bytes

  UpdateFixture() {
    std::filesystem::create_directories(installation_.folder());
    std::filesystem::create_directories(offered_);
    Write(installation_.Source(), "..\\offered\r\n");
  }

  static void Write(const std::filesystem::path& path, const std::string& bytes) {
    ASSERT_TRUE(WriteWholeFile(path.wstring(), bytes)) << path;
  }
  static std::string Read(const std::filesystem::path& path) {
    std::string bytes;
    return ReadWholeFile(path.wstring(), bytes) ? bytes : "no file";
  }
  std::string Installed(const std::wstring& name) const { return Read(installation_.File(name)); }
  bool Staged() const { return PathExists(installation_.Staged(kMarkerFile)); }
  bool PutAside(const std::wstring& name, unsigned number = 1) const {
    return PathExists(installation_.File(AsideName(name, number)));
  }

  static std::string ManifestOf(const std::string& version, const Files& files) {
    std::string manifest = "version " + version + "\n";
    for (const auto& [name, bytes] : files)
      manifest += "file " + std::string(name.begin(), name.end()) + " " + std::to_string(bytes.size()) + " " +
                  Sha256(bytes) + "\n";
    return manifest;
  }
  // A file that was built to lie beside the tests.
  static std::filesystem::path BuiltBeside(const std::wstring& name) {
    static const int anchor = 0;
    return std::filesystem::path(ModuleDirectory(&anchor)) / name;
  }
  // Puts files with their manifest into the place of offers.
  void Offer(const std::string& version, const Files& files) const {
    for (const auto& [name, bytes] : files) Write(offered_ / name, bytes);
    Write(offered_ / L"manifest.txt", ManifestOf(version, files));
  }

  Outcome Check() const { return CheckForUpdate(installation_, kHere); }
  Outcome Install() const { return InstallPending(installation_, kHere); }

  static constexpr Version kHere{{1, 0, 0, 0}};
  const support::ScratchFolder scratch_;
  const Installation installation_{scratch_ / L"installed"};
  const std::filesystem::path offered_{scratch_ / L"offered"};
};

}  // namespace vek::helper
