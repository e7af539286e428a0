#include "addin/companion/replacement.h"

#include <ProAsmcomp.h>
#include <ProFeature.h>
#include <ProUtil.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "addin/companion/component_search.h"
#include "addin/companion/interface_refresh.h"
#include "addin/host/owned.h"
#include "addin/host/text_buffer.h"
#include "addin/platform/files.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"
#include "addin/text/path_text.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr int kAssembly = 1;
constexpr int kPart = 2;
constexpr int kRegenerateAgain = -56;
constexpr int kRegeneratedWithFailures = -55;

// What sets the replacement of parts apart from that of assemblies.
struct Kind {
  int type;
  const wchar_t* function;  // in the first and the last line
  const wchar_t* start;
  const wchar_t* finish;
  const wchar_t* model;       // what comes in
  const wchar_t* components;  // ahead of the word component, with its blank
  const wchar_t* step_warning;
};
constexpr Kind kParts{kPart,
                      L"HandlePartReplacement",
                      L"Starting part replacement",
                      L"Part replacement completed successfully",
                      L"part",
                      L"",
                      L"WARNING: STEP file replacement not fully implemented, using standard retrieval"};
constexpr Kind kAssemblies{
    kAssembly,
    L"HandleAssemblyInspection",
    L"Starting assembly replacement",
    L"Assembly replacement completed successfully",
    L"assembly",
    L"assembly ",
    L"WARNING: STEP file assembly replacement not fully implemented, using standard retrieval"};

// A place of the old component, which the new one takes.
struct Place {
  ProAsmcomp component{};
  ProMdl parent = nullptr;
  ProMatrix position{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

bool Fail(const std::wstring& line) {
  LogShell(line);
  return false;
}

bool CheckRequest(const Kind& kind, const FileDownloadInfo& info) {
  if (info.downloadPath.empty())
    return Fail(Format(L"ERROR: Empty file path for replacement %s", kind.model));
  if (info.placeLikeComponentTitle.empty()) return Fail(L"ERROR: Empty placeLikeComponentTitle");
  if (!PathExists(info.downloadPath))
    return Fail(Format(L"ERROR: Replacement %s file does not exist: %s", kind.model, info.downloadPath));
  return true;
}

bool ReadCurrentAssembly(ProMdl& assembly) {
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlCurrentGet(&assembly) != PRO_TK_NO_ERROR) return Fail(L"ERROR: Failed to get current model");
  if (ProMdlTypeGet(assembly, &type) != PRO_TK_NO_ERROR || type != kAssembly)
    return Fail(L"ERROR: Current model is not an assembly");
  LogShell(L"SUCCESS: Current assembly retrieved");
  return true;
}

// The component's name as its file has it.
std::wstring NameOfFile(const std::wstring& path) {
  LogShell(L"Component not found by title, trying to extract name from PlaceLikeFilePath");
  LogShell(Format(L"PlaceLikeFilePath: %s", path));
  const std::wstring_view file = NameInPath(path);
  std::wstring name = ToLower(file.substr(0, file.find(L'.')));
  LogShell(Format(L"Extracted component name from file path: %s", name));
  return name;
}

bool FindPlaces(const Kind& kind, ProMdl assembly, const FileDownloadInfo& info, std::vector<Place>& places) {
  std::vector<ProAsmcomp> components;
  std::vector<ProMdl> parents;
  const auto found = [&](const std::wstring& name) {
    return FindAllComponentsInAssemblyWithParents(assembly, name, components, parents, kind.type) == 0 &&
           !components.empty();
  };
  const std::wstring& title = info.placeLikeComponentTitle;
  if (!found(title)) {
    std::wstring name;
    bool found_by_name = false;
    if (!info.placeLikeFilePath.empty()) {
      name = NameOfFile(info.placeLikeFilePath);
      found_by_name = found(name);
    }
    if (!found_by_name)
      return Fail(Format(L"ERROR: Component not found in assembly (tried: '%s' and '%s')", title, name));
    LogShell(L"SUCCESS: Components found using name extracted from PlaceLikeFilePath");
  }
  if (components.size() != parents.size())
    return Fail(Format(L"ERROR: Mismatch between components (%d) and parent assemblies (%d)",
                       static_cast<int>(components.size()), static_cast<int>(parents.size())));
  LogShell(Format(L"SUCCESS: Found %d component(s) to replace", static_cast<int>(components.size())));
  for (std::size_t i = 0; i < components.size(); ++i) places.push_back({components[i], parents[i]});
  return true;
}

void TakePositions(std::vector<Place>& places) {
  LogShell(L"Collecting transformation matrices for all components before deletion");
  const int count = static_cast<int>(places.size());
  for (int i = 0; i < count; ++i) {
    LogShell(Format(L"Getting transformation for component %d of %d", i + 1, count));
    Place& place = places[static_cast<std::size_t>(i)];
    ProMatrix read{};
    if (GetComponentTransform(place.component, read) == 0)
      std::ranges::copy(std::span(&read[0][0], 16), &place.position[0][0]);
    else
      LogShell(L"WARNING: Could not get component transformation, using identity matrix");
    LogShell(Format(L"Stored transformation and feature ID %d for component %d (parent assembly: %p)",
                    place.component.id, i + 1, place.parent));
  }
}

bool LoadNewModel(const Kind& kind, const std::wstring& path, ProMdl& model) {
  LogShell(Format(L"Loading new %s model for replacement", kind.model));
  ProPath buffer;
  if (!CopyWhole(buffer, path)) return Fail(L"ERROR: File path too long");
  const std::wstring name(WithoutExtension(NameInPath(path)));
  const std::wstring upper = ToUpper(path);
  const bool is_step =
      upper.find(L".STEP") != std::wstring::npos || upper.find(L".STP") != std::wstring::npos;
  ProMdlfileType type = static_cast<ProMdlfileType>(kind.type);
  if (!is_step) {
    ProMdlsubtype subtype = PROMDLSTYPE_NONE;
    if (const ProError status = ProFileSubtypeGet(buffer, &type, &subtype); status != PRO_TK_NO_ERROR)
      return Fail(Format(L"ERROR: ProFileSubtypeGet failed: %d", status));
  }
  if (std::wstring directory(DirectoryInPath(path)); !directory.empty())
    if (ProDirectoryChange(directory.data()) != PRO_TK_NO_ERROR)
      return Fail(L"ERROR: Failed to change directory");
  if (is_step) LogShell(kind.step_warning);
  ProMdlName model_name;
  CopyCut(model_name, name);
  if (const ProError status = ProMdlnameRetrieve(model_name, type, &model); status != PRO_TK_NO_ERROR)
    return Fail(Format(L"ERROR: Failed to retrieve new %s model: %d", kind.model, status));
  LogShell(Format(L"SUCCESS: New %s model retrieved", kind.model));
  if (kind.type != kAssembly) return true;
  ProMdlType retrieved = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &retrieved) != PRO_TK_NO_ERROR || retrieved != kAssembly)
    return Fail(L"ERROR: Retrieved model is not an assembly");
  return true;
}

ProError DeleteComponent(const Place& place) {
  constexpr int kClip = 1;  // with what depends on it
  OwnedArray<int> ids, options;
  if (!ids.HoldOne(place.component.id) || !options.HoldOne(kClip)) return PRO_TK_OUT_OF_MEMORY;
  return ProFeatureWithoptionsDelete(static_cast<ProSolid>(place.parent), ids.get(),
                                     options.As<ProFeatureDeleteOptions>(), 0);
}

void DeleteOld(const Kind& kind, const std::vector<Place>& places) {
  LogShell(Format(L"=== Deleting old %scomponents (ReplaceExisting=true) ===", kind.components));
  const int count = static_cast<int>(places.size());
  for (int i = 1; i <= count; ++i) {
    LogShell(Format(L"Deleting old %scomponent %d of %d", kind.components, i, count));
    const ProError status = DeleteComponent(places[static_cast<std::size_t>(i - 1)]);
    if (status == PRO_TK_NO_ERROR)
      LogShell(Format(L"SUCCESS: Old %scomponent %d deleted", kind.components, i));
    else
      LogShell(Format(L"WARNING: Failed to delete old %scomponent %d: %d (continuing anyway)",
                      kind.components, i, status));
  }
  LogShell(Format(L"=== Old %scomponents deletion completed ===", kind.components));
}

void AddNew(const Kind& kind, std::vector<Place>& places, ProMdl model) {
  LogShell(Format(L"Adding all new %scomponents to their parent assemblies", kind.components));
  const int count = static_cast<int>(places.size());
  for (int i = 1; i <= count; ++i) {
    LogShell(Format(L"Adding new %scomponent %d of %d to parent assembly", kind.components, i, count));
    Place& place = places[static_cast<std::size_t>(i - 1)];
    ProAsmcomp component{};
    const ProError status = ProAsmcompAssemble(static_cast<ProSolid>(place.parent),
                                               static_cast<ProSolid>(model), place.position, &component);
    if (status == PRO_TK_NO_ERROR)
      LogShell(
          Format(L"SUCCESS: New %scomponent %d added successfully to parent assembly", kind.components, i));
    else
      LogShell(Format(L"ERROR: Failed to add new %scomponent %d to parent assembly: %d", kind.components, i,
                      status));
  }
}

void RegenerateParents(const Kind& kind, const std::vector<Place>& places) {
  LogShell(
      Format(L"Regenerating all affected assemblies after adding all new %scomponents (final regeneration)",
             kind.components));
  std::vector<ProMdl> parents;
  for (const Place& place : places)
    if (std::ranges::find(parents, place.parent) == parents.end()) parents.push_back(place.parent);
  const int count = static_cast<int>(parents.size());
  for (int i = 1; i <= count; ++i) {
    LogShell(Format(L"Final regeneration of parent assembly %d of %d", i, count));
    const auto parent = static_cast<ProSolid>(parents[static_cast<std::size_t>(i - 1)]);
    int status = ProSolidRegenerate(parent, 0);
    if (status == kRegenerateAgain) {
      LogShell(L"Regeneration returned PRO_TK_REGEN_AGAIN, regenerating again");
      status = ProSolidRegenerate(parent, 0);
    }
    if (status == PRO_TK_NO_ERROR || status == kRegenerateAgain || status == kRegeneratedWithFailures)
      LogShell(Format(L"SUCCESS: Parent assembly %d final regeneration completed", i));
    else
      LogShell(Format(L"WARNING: Final assembly regeneration returned status: %d", status));
  }
}

void Replace(const Kind& kind, const FileDownloadInfo& info) {
  LogShell(Format(L"=== %s: %s ===", kind.function, kind.start));
  ProMdl assembly = nullptr, model = nullptr;
  std::vector<Place> places;
  if (!CheckRequest(kind, info) || !ReadCurrentAssembly(assembly) ||
      !FindPlaces(kind, assembly, info, places))
    return;
  TakePositions(places);
  if (!LoadNewModel(kind, info.downloadPath, model)) return;
  if (info.replaceExisting)
    DeleteOld(kind, places);
  else
    LogShell(
        Format(L"=== Skipping deletion (ReplaceExisting=false) - Adding new %scomponents alongside existing "
               L"ones ===",
               kind.components));
  AddNew(kind, places, model);
  RegenerateParents(kind, places);
  RefreshInterface(assembly);
  LogShell(Format(L"=== %s: %s ===", kind.function, kind.finish));
}

}  // namespace

void HandlePartReplacement(const FileDownloadInfo& info) {
  Replace(kParts, info);
}

void HandleAssemblyInspection(const FileDownloadInfo& info) {
  Replace(kAssemblies, info);
}

}  // namespace vek
