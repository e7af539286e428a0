#include "addin/ops/assembly/component_files.h"

#include "addin/host/text_buffer.h"
#include "addin/ops/assembly/occurrence_names.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/common/model_paths.h"
#include "addin/ops/common/working_directory.h"
#include "addin/platform/files.h"
#include "addin/text/format.h"

namespace vek::assembly {
namespace {

std::wstring DirectoryOf(ProMdl model) {
  ProPath directory{};
  return ProMdlDirectoryPathGet(model, directory) == PRO_TK_NO_ERROR ? BufferText(directory) : std::wstring();
}

std::wstring ComposedPath(ProMdl model, int type, const std::wstring& directory) {
  const std::wstring name = ModelName(model);
  const std::wstring extension = ModelTypeExtension(type);
  return JoinPath(directory, extension.empty() ? name : Format(L"%s.%s", name, extension));
}

}  // namespace

CreoMcpOperationResult LoadComponentModel(ProMdl assembly, const std::wstring& file_path, ProMdl& model) {
  model = FindOpenModel(file_path);
  if (model != nullptr) {
    ActivateModel(assembly);
    return MakeSuccessResult();
  }
  if (!PathExists(file_path)) return MakeFailureResult(Format(L"Component file not found: '%s'.", file_path));
  std::wstring directory, name, extension;
  if (!ParseModelFileName(file_path, directory, name, extension))
    return MakeFailureResult(L"Unable to parse file_path into a Creo model name.");
  const int type = ExtensionToModelType(extension);
  if (type != kAssemblyType && type != kPartType)
    return MakeFailureResult(L"Unsupported component type. Expected .prt or .asm.");

  const WorkingDirectoryGuard guard(directory);
  if (!directory.empty() && !guard.changed())
    return MakeFailureResult(Format(L"Failed to change working directory (status=%d).", guard.status()));
  const ProError status = RetrieveModel(name, type, model);
  ActivateModel(assembly);
  if (status != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(Format(L"Failed to retrieve component '%s' (status=%d).", file_path, status));
  return MakeSuccessResult();
}

CreoMcpOperationResult PlaceBesideAssembly(ProMdl assembly, ProMdl model, ComponentPlace& place) {
  place = ComponentPlace();
  const std::wstring assembly_directory = DirectoryOf(assembly);
  if (assembly_directory.empty())
    return MakeFailureResult(L"Save the assembly to disk first so the component can be placed next to it.");
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to read component model type.");

  place.local_path = ModelFullPath(model, type);
  const std::wstring directory = DirectoryOf(model);
  if (!directory.empty() && CanonicalDirectory(directory) == CanonicalDirectory(assembly_directory))
    return MakeSuccessResult();
  ProPath target;
  if (!CopyWhole(target, assembly_directory))
    return MakeFailureResult(L"Assembly directory path is too long.");
  const ProError status = ProMdlnameBackup(model, target);
  ActivateModel(assembly);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to place component next to assembly at '%s' (status=%d).",
                                    assembly_directory, status));
  place.copied = true;
  place.local_path = ModelFullPath(model, type);
  if (place.local_path.empty()) place.local_path = ComposedPath(model, type, assembly_directory);
  return MakeSuccessResult();
}

}  // namespace vek::assembly
