#include "deploy/helper/pending_install.h"

#include <algorithm>
#include <string>
#include <vector>

#include "addin/platform/files.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"
#include "deploy/helper/file_names.h"
#include "deploy/helper/leftovers.h"
#include "deploy/helper/manifest.h"
#include "deploy/helper/moves.h"
#include "deploy/helper/run_lock.h"
#include "deploy/helper/staging.h"
#include "deploy/helper/update_decision.h"
#include "deploy/helper/verification.h"

namespace vek::helper {
namespace {

Outcome Refuse(const Installation& installation, const std::wstring& why) {
  ClearStaged(installation);
  return {ExitCode::kRefused, L"the staged update is refused: " + why};
}

// The helper tells by its version what is installed. Were it the new one before all is in place, a run that
// was cut off in the middle would never be finished.
std::vector<ManifestFile> HelperLast(std::vector<ManifestFile> files) {
  std::ranges::stable_partition(
      files, [](const ManifestFile& file) { return !EqualsIgnoreCase(file.name, kHelperFile); });
  return files;
}

// Adds the moves that put one file in place: none when it is there already. False when that can't be done.
bool PlanFile(const Installation& installation, const ManifestFile& file, std::vector<Move>& moves) {
  const auto place = installation.File(file.name);
  if (ReadVerified(place, file)) return true;
  const auto staged = installation.Staged(file.name);
  if (!ReadVerified(staged, file)) return false;
  if (PathExists(place)) {
    if (!FileExists(place)) return false;
    moves.push_back({place, FreeAsidePath(installation, file.name)});
  }
  moves.push_back({staged, place});
  return true;
}

Outcome Told(const MoveFailure& failure) {
  const std::wstring refusal = Format(L"%s can't be moved (error %lu), ", failure.path, failure.error);
  if (!failure.taken_back)
    return {ExitCode::kNotTakenBack,
            refusal + L"and not all could be put back; the next run goes on from there"};
  return {ExitCode::kFailed, refusal + L"and all is as it was"};
}

Outcome Install(const Installation& installation, const Manifest& manifest) {
  std::vector<Move> moves;
  for (const ManifestFile& file : HelperLast(manifest.files))
    if (!PlanFile(installation, file, moves)) return Refuse(installation, file.name);
  if (const auto failure = MoveAll(moves)) return Told(*failure);
  ClearStaged(installation);
  TidyLeftovers(installation);
  return {ExitCode::kDone, Format(L"version %s is installed", VersionText(manifest.version))};
}

}  // namespace

Outcome InstallPending(const Installation& installation, const Version& installed) {
  const RunLock lock(installation);
  if (!lock) return lock.Refusal();
  TidyLeftovers(installation);
  const std::string bytes = StagedManifest(installation);
  if (bytes.empty()) return {ExitCode::kDone, L"nothing is staged"};
  Manifest manifest;
  std::wstring problem;
  if (!ReadManifest(bytes, manifest, problem)) return Refuse(installation, problem);
  if (!IsWorthInstalling(installed, manifest.version)) {
    ClearStaged(installation);
    return {ExitCode::kDone, Format(L"the staged version %s is not above %s and was removed",
                                    VersionText(manifest.version), VersionText(installed))};
  }
  return Install(installation, manifest);
}

}  // namespace vek::helper
