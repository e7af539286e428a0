#include "deploy/helper/update_check.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "addin/platform/files.h"
#include "addin/text/format.h"
#include "addin/text/path_text.h"
#include "addin/text/utf8.h"
#include "addin/text/wide_text.h"
#include "deploy/helper/manifest.h"
#include "deploy/helper/run_lock.h"
#include "deploy/helper/staging.h"
#include "deploy/helper/update_decision.h"
#include "deploy/helper/verification.h"

namespace vek::helper {
namespace {

bool IsSeparator(wchar_t c) {
  return c == L'\\' || c == L'/';
}

// Whether a path begins with a server or a drive.
bool IsWhole(std::wstring_view path) {
  return path.size() > 1 && ((IsSeparator(path[0]) && IsSeparator(path[1])) || path[1] == L':');
}

// The path of the manifest in the place that is named; none when none is.
std::optional<std::wstring> OfferedManifest(const Installation& installation) {
  constexpr wchar_t kByteOrderMark = 0xFEFF;
  std::string bytes;
  if (!ReadWholeFile(installation.Source(), bytes)) return std::nullopt;
  const std::wstring decoded = DecodeUtf8(std::string_view(bytes).substr(0, bytes.find('\n')));
  std::wstring_view line = decoded;
  if (line.starts_with(kByteOrderMark)) line.remove_prefix(1);
  line = Trim(line);
  if (line.empty()) return std::nullopt;
  std::wstring place = IsWhole(line) ? std::wstring(line) : installation.File(std::wstring(line));
  std::ranges::replace(place, L'/', L'\\');
  while (place.ends_with(L'\\')) place.pop_back();
  return PathExists(place) && !FileExists(place) ? FileIn(place, L"manifest.txt") : place;
}

Outcome Withdraw(const Installation& installation) {
  if (!ClearStaged(installation)) return {ExitCode::kFailed, L"the withdrawn update can't be removed"};
  return {ExitCode::kDone, L"the staged update is no longer offered and was removed"};
}

Outcome Follow(const Installation& installation, const Version& installed, const std::wstring& source,
               const Manifest& manifest, std::string_view bytes) {
  const std::wstring offered = VersionText(manifest.version);
  switch (DecideOnOffer(installed, manifest.version, bytes, StagedManifest(installation))) {
    case Decision::kNothing:
      return {ExitCode::kDone, Format(L"version %s is offered, %s is here", offered, VersionText(installed))};
    case Decision::kWithdraw:
      return Withdraw(installation);
    case Decision::kKeep:
      return {ExitCode::kDone, Format(L"version %s is staged already", offered)};
    case Decision::kStage:
      break;
  }
  return Stage(installation, source, manifest, bytes);
}

}  // namespace

Outcome CheckForUpdate(const Installation& installation, const Version& installed) {
  const auto path = OfferedManifest(installation);
  if (!path) return {ExitCode::kDone, L"no place for updates is named"};
  const std::string bytes = ReadManifestBytes(*path);
  if (bytes.empty()) return {ExitCode::kDone, Format(L"nothing is offered at %s", *path)};
  Manifest manifest;
  std::wstring problem;
  if (!ReadManifest(bytes, manifest, problem)) return {ExitCode::kRefused, problem};
  const RunLock lock(installation);
  if (!lock) return lock.Refusal();
  return Follow(installation, installed, std::wstring(DirectoryInPath(*path)), manifest, bytes);
}

}  // namespace vek::helper
