#include "deploy/helper/staging.h"

#include "addin/platform/files.h"
#include "addin/text/format.h"
#include "deploy/helper/file_names.h"
#include "deploy/helper/verification.h"

namespace vek::helper {
namespace {

// Under another name first: a marker of which only a part were written would be a manifest of fewer files.
bool WriteMarker(const Installation& installation, std::string_view bytes) {
  const std::wstring made = installation.Staged(kMarkerInTheMaking);
  return WriteWholeFile(made, std::string(bytes)) && MoveFileTo(made, installation.Staged(kMarkerFile)) == 0;
}

Outcome CopyAll(const Installation& installation, const std::wstring& source, const Manifest& manifest,
                std::string_view manifest_bytes) {
  if (!EnsureDirectory(installation.StagingFolder()))
    return {ExitCode::kFailed, L"the folder for the update can't be made"};
  for (const ManifestFile& file : manifest.files) {
    const auto bytes = ReadVerified(FileIn(source, file.name), file);
    if (!bytes) return {ExitCode::kRefused, Format(L"%s is not the file that the manifest tells", file.name)};
    if (!WriteWholeFile(installation.Staged(file.name), *bytes))
      return {ExitCode::kFailed, Format(L"%s can't be copied", file.name)};
  }
  if (!WriteMarker(installation, manifest_bytes)) return {ExitCode::kFailed, L"the marker can't be written"};
  return {ExitCode::kDone, Format(L"version %s is staged, %u files", VersionText(manifest.version),
                                  static_cast<unsigned>(manifest.files.size()))};
}

}  // namespace

std::string StagedManifest(const Installation& installation) {
  return ReadManifestBytes(installation.Staged(kMarkerFile));
}

Outcome Stage(const Installation& installation, const std::wstring& source, const Manifest& manifest,
              std::string_view manifest_bytes) {
  if (!ClearStaged(installation)) return {ExitCode::kFailed, L"the update staged before can't be removed"};
  Outcome outcome = CopyAll(installation, source, manifest, manifest_bytes);
  if (outcome.code != ExitCode::kDone) ClearStaged(installation);
  return outcome;
}

bool ClearStaged(const Installation& installation) {
  const std::wstring marker = installation.Staged(kMarkerFile);
  DeleteFileAt(marker);
  if (PathExists(marker)) return false;
  // What of the rest can't be removed is no update without its marker.
  RemoveFolder(installation.StagingFolder());
  return true;
}

}  // namespace vek::helper
