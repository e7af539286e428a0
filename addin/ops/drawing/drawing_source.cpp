#include "addin/ops/drawing/drawing_source.h"

#include <vector>

#include "addin/host/owned.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/common/model_paths.h"
#include "addin/ops/common/working_directory.h"
#include "addin/platform/files.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::drawing {
namespace {

CreoMcpOperationResult NotASolid() {
  return MakeFailureResult(L"model_path must point to a Creo part (.prt) or assembly (.asm).");
}

bool IsSolidType(int type) {
  return type == kAssemblyType || type == kPartType;
}

// The part or assembly that `path` means: in session, else from its file.
CreoMcpOperationResult LoadDrawingModel(const std::wstring& path, ProMdl& model) {
  model = FindOpenModel(path);
  if (model != nullptr) return SolidTypeOf(model) != -1 ? MakeSuccessResult() : NotASolid();
  if (!PathExists(path)) return MakeFailureResult(Format(L"Model file not found: '%s'.", path));
  std::wstring directory, name, extension;
  if (!ParseModelFileName(path, directory, name, extension))
    return MakeFailureResult(L"Unable to parse model_path.");
  const int type = ExtensionToModelType(extension);
  if (!IsSolidType(type)) return NotASolid();

  const WorkingDirectoryGuard guard(directory);
  if (!directory.empty() && !guard.changed())
    return MakeFailureResult(Format(L"Failed to change working directory (status=%d).", guard.status()));
  const ProError status = RetrieveModel(name, type, model);
  if (status != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(Format(L"Failed to open model '%s' (status=%d).", path, status));
  return MakeSuccessResult();
}

// Null when the drawing has none.
ProMdl FirstSolidOf(ProDrawing drawing) {
  OwnedArray<ProSolid> solids;
  if (ProDrawingSolidsCollect(drawing, solids.out()) != PRO_TK_NO_ERROR) return nullptr;
  for (int i = 0; i < solids.size(); ++i)
    if (solids[i] != nullptr) return solids[i];
  return nullptr;
}

ProMdl FirstInSession(int type) {
  const std::vector<ProMdl> models = SessionModelsOfType(type);
  return models.empty() ? nullptr : models.front();
}

ProMdl PendingSourceOf(ProDrawing drawing) {
  const PendingDrawingSource& pending = PendingSource();
  if (drawing == nullptr || pending.source == nullptr) return nullptr;
  return EqualsIgnoreCase(ModelName(drawing), pending.drawing_name) ? pending.source : nullptr;
}

}  // namespace

PendingDrawingSource& PendingSource() {
  static PendingDrawingSource pending;
  return pending;
}

int SolidTypeOf(ProMdl model) {
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR || !IsSolidType(type)) return -1;
  return type;
}

std::wstring SourcePath(ProMdl model) {
  ProMdlType type = PRO_MDL_UNUSED;
  ProMdlTypeGet(model, &type);
  const std::wstring path = ModelFullPath(model, type);
  return path.empty() ? ModelName(model) : path;
}

CreoMcpOperationResult ResolveDrawingSource(const std::wstring& model_path, ProMdl& source) {
  if (!model_path.empty()) return LoadDrawingModel(model_path, source);

  source = nullptr;
  if (ProMdlCurrentGet(&source) != PRO_TK_NO_ERROR || source == nullptr)
    return MakeFailureResult(L"No active document and no model_path supplied.");
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(source, &type) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to determine active document type.");
  if (type == kDrawingType)
    return MakeFailureResult(
        L"Active document is already a drawing. Specify model_path or activate a part/assembly.");
  if (!IsSolidType(type)) return MakeFailureResult(L"Source document must be a Creo part or assembly.");
  return MakeSuccessResult();
}

CreoMcpOperationResult ResolveBaseViewModel(ProDrawing drawing, const std::wstring& model_path,
                                            ProMdl& model) {
  if (!model_path.empty()) return LoadDrawingModel(model_path, model);

  model = PendingSourceOf(drawing);
  if (model == nullptr) model = FirstSolidOf(drawing);
  if (model == nullptr) model = FirstInSession(kAssemblyType);
  if (model == nullptr) model = FirstInSession(kPartType);
  if (model == nullptr)
    return MakeFailureResult(L"No model document found. Open a part or assembly before adding a base view.");
  return MakeSuccessResult();
}

}  // namespace vek::drawing
