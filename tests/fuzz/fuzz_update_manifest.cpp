// Whatever a manifest that is taken tells, its files stay in the folder and keep apart, also put aside, and
// its version is read back from its text.
#include "addin/text/utf8.h"
#include "addin/text/wide_text.h"
#include "deploy/helper/file_names.h"
#include "deploy/helper/manifest.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace helper = vek::helper;
  helper::Manifest manifest;
  std::wstring problem;
  if (!helper::ReadManifest(vek::fuzz::Bytes(data, size), manifest, problem)) {
    Require(!problem.empty());
    return 0;
  }
  Require(helper::ReadVersion(vek::EncodeUtf8(helper::VersionText(manifest.version))) == manifest.version);
  bool helper_listed = false;
  for (std::size_t i = 0; i < manifest.files.size(); ++i) {
    const helper::ManifestFile& file = manifest.files[i];
    Require(helper::IsUpdateFileName(file.name) && file.sha256.size() == 64);
    Require(file.name.find_first_of(L"\\/:") == std::wstring::npos && file.name != L"..");
    const auto aside = helper::ReadAsideName(helper::AsideName(file.name, 12));
    Require(aside && aside->name == file.name && aside->number == 12);
    for (std::size_t j = 0; j < i; ++j) Require(!vek::EqualsIgnoreCase(file.name, manifest.files[j].name));
    helper_listed = helper_listed || vek::EqualsIgnoreCase(file.name, helper::kHelperFile);
  }
  Require(helper_listed);
  return 0;
}
