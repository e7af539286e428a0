#include "addin/companion/selected_model.h"

#include <ProAsmcomp.h>
#include <ProMdl.h>

#include "addin/companion/face_measurement.h"
#include "addin/companion/picking.h"
#include "addin/host/text_buffer.h"
#include "addin/platform/files.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr int kAssembly = 1;
constexpr int kPart = 2;
constexpr int kVersionsTried = 100;

// The model of the first selection that is made through a component.
ProMdl SelectedComponentModel(const OwnedSelections& selections, int count) {
  for (int i = 0; i < count; ++i) {
    ProAsmcomppath path{};
    if (ProSelectionAsmcomppathGet(selections.get()[i], &path) != PRO_TK_NO_ERROR) continue;
    LogShell(L"Successfully retrieved assembly component path");
    ProMdl model = nullptr;
    if (ProAsmcomppathMdlGet(&path, &model) != PRO_TK_NO_ERROR) continue;
    LogShell(L"Successfully retrieved model from assembly component path");
    return model;
  }
  return nullptr;
}

std::wstring FileIn(const ProPath& directory, const ProMdlName& name, std::wstring_view extension) {
  std::wstring path = ResolveModelFile(BufferText(directory), BufferText(name), extension);
  LogShell(Format(L"Selected part path: %s", path));
  return path;
}

}  // namespace

std::wstring ResolveModelFile(std::wstring_view directory, std::wstring_view name,
                              std::wstring_view extension) {
  std::wstring file(directory);
  if (!file.ends_with(L'\\')) file += L'\\';
  file += ToLower(name);
  file += extension;
  for (int version = 1; version <= kVersionsTried; ++version) {
    std::wstring candidate = file + Format(L".%d", version);
    if (!PathExists(candidate)) continue;
    LogShell(Format(L"Found file on disk: %s", candidate));
    return candidate;
  }
  file += L".1";
  LogShell(Format(L"File not found on disk, using default path: %s", file));
  return file;
}

std::wstring GetSelectedModelPath() {
  ProMdl current = nullptr;
  if (ProMdlCurrentGet(&current) != PRO_TK_NO_ERROR) return kNothingSelected;
  OwnedSelections selections;
  int count = 0;
  if (SelectionsInBuffer(selections, count) != PRO_TK_NO_ERROR || count == 0) return kNothingSelected;
  ProModelitem item{};
  const ProMdl model =
      FirstFace(selections, count, item) ? item.owner : SelectedComponentModel(selections, count);
  if (!model) return kNothingSelected;

  ProMdlName name{};
  ProMdlType type = PRO_MDL_UNUSED;
  ProPath directory{};
  ProMdlMdlnameGet(model, name);
  ProMdlTypeGet(model, &type);
  ProMdlDirectoryPathGet(model, directory);
  if (type != kAssembly && type != kPart) return kWrongModelType;
  return FileIn(directory, name, type == kAssembly ? L".asm" : L".prt");
}

std::wstring GetSelectedPartPath() {
  if (std::wstring path = GetSelectedModelPath(); path != kNothingSelected) return path;
  LogShell(L"No current face selection found, prompting user to select face");
  ProMdl current = nullptr;
  if (ProMdlCurrentGet(&current) != PRO_TK_NO_ERROR) return kNothingSelected;
  LogShell(Format(L"Detected unit type: %s", DetectModelUnit(current)));
  OwnedSelections selections;
  int count = 0;
  if (AskForFace(selections, count) != PRO_TK_NO_ERROR || count < 1) return kNothingSelected;
  ProModelitem item{};
  if (ProSelectionModelitemGet(selections.get()[0], &item) != PRO_TK_NO_ERROR) return kNothingSelected;
  ProMdlType type = PRO_MDL_UNUSED;
  ProMdlTypeGet(item.owner, &type);
  if (type != kPart) return kWrongModelType;
  ProMdlName name{};
  ProPath directory{};
  ProMdlMdlnameGet(item.owner, name);
  ProMdlDirectoryPathGet(item.owner, directory);
  return FileIn(directory, name, L".prt");
}

}  // namespace vek
