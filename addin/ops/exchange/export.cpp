#include "addin/ops/exchange/export.h"

#include <ProIntf.h>

#include "addin/host/text_buffer.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/common/model_paths.h"
#include "addin/ops/exchange/active_solid.h"
#include "addin/ops/exchange/export_text.h"
#include "addin/platform/files.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::exchange {
namespace {

constexpr const wchar_t* kUnsupportedFormat = L"Unsupported export format. Expected STEP, IGES, SAT, or STL.";

CreoMcpOperationResult RequireExportableModel(ProMdl& model) {
  int type = -1;
  return RequireActiveSolid(L"Export is currently supported for active parts and assemblies only.", model,
                            type);
}

// The directory and the extension that a path names; the text itself tells where it is no file name of the
// host.
void SplitOutputPath(const std::wstring& path, std::wstring& directory, std::wstring& extension) {
  std::wstring name;
  if (ParseModelFileName(path, directory, name, extension)) return;
  directory = DirectoryOf(path);
  extension.clear();
}

// Completes the path, makes its directory and refuses what is taken already. `error` tells why not.
bool PrepareOutputPath(const std::wstring& output_path, const ExportFormat& format, std::wstring& resolved,
                       std::wstring& error) {
  resolved = output_path;
  if (resolved.empty()) {
    error = L"'output_path' argument is required.";
    return false;
  }
  std::wstring directory, extension;
  SplitOutputPath(resolved, directory, extension);
  if (!extension.empty() && !EqualsIgnoreCase(extension, format.extension) &&
      !EqualsIgnoreCase(extension, format.alternate_extension)) {
    error = Format(L"output_path extension '.%s' does not match requested export format '%s'.", extension,
                   format.name);
    return false;
  }
  if (extension.empty()) resolved = Format(L"%s.%s", resolved, format.extension);

  // Once more: the path has changed, and with it what the host makes of it.
  SplitOutputPath(resolved, directory, extension);
  if (!directory.empty() && !EnsureDirectory(directory)) {
    error = Format(L"Failed to create destination directory '%s'.", directory);
    return false;
  }
  if (FileExists(resolved)) {
    error = AlreadyExists(resolved);
    return false;
  }
  return true;
}

ProError WriteSlices(ProMdl model, const ExportFormat& format, const std::wstring& path) {
  ProPath buffer;
  if (!CopyWhole(buffer, path)) return PRO_TK_BAD_INPUTS;
  double quality[2] = {-1.0, -1.0};
  ProMatrix identity = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
  return ProIntfSliceFileExport(static_cast<ProSolid>(model), buffer,
                                static_cast<ProIntfSliceFileType>(format.slice_type), quality, identity, 0);
}

ProError WriteSolid(ProMdl model, const ExportFormat& format, const std::wstring& path) {
  ProPath buffer;
  if (!CopyWhole(buffer, WithoutExportSuffix(path))) return PRO_TK_BAD_INPUTS;
  return ProIntf3DFileWriteWithDefaultProfile(static_cast<ProSolid>(model),
                                              static_cast<ProIntf3DFileType>(format.creo_type), buffer);
}

ProError WriteExportFile(ProMdl model, const ExportFormat& format, const std::wstring& path) {
  return format.writer == ExportWriter::kSlice ? WriteSlices(model, format, path)
                                               : WriteSolid(model, format, path);
}

// The configurations that a client may name elsewhere: here there is one model, and the list must be empty.
CreoMcpOperationResult CheckNoConfigurations(const std::wstring& arguments) {
  if (JsonReadRaw(arguments, L"configuration_names").empty()) return MakeSuccessResult();
  std::vector<std::wstring> names;
  if (!ReadStringList(arguments, L"configuration_names", names))
    return MakeFailureResult(L"'configuration_names' must be a JSON array of strings.");
  if (!names.empty())
    return MakeFailureResult(
        L"'configuration_names' is not supported for Creo yet. Omit it to export the active model once.");
  return MakeSuccessResult();
}

// ---- operations
// ----------------------------------------------------------------------------------------------

CreoMcpOperationResult ExportFile(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireExportableModel(model); !active.success) return active;
  const ExportFormat* const format = FindExportFormat(JsonReadStringArgument(arguments, L"format"));
  if (format == nullptr) return MakeFailureResult(kUnsupportedFormat);
  std::wstring path, error;
  if (!PrepareOutputPath(JsonReadStringArgument(arguments, L"output_path"), *format, path, error))
    return MakeFailureResult(error);

  if (const ProError status = WriteExportFile(model, *format, path); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Failed to export active model as %s (status=%d).", format->name, status));
  return MakeSuccessResult(
      Format(L"Exported active model as %s to '%s'.", format->name, path),
      Format(LR"({"output_path":"%s","format":"%s"})", JsonEscape(path), JsonEscape(format->name)));
}

CreoMcpOperationResult ExportBatch(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireExportableModel(model); !active.success) return active;
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to read active document type.");
  if (type != kPartType) return MakeFailureResult(L"Batch export currently supports part documents only.");

  const std::wstring output_dir = JsonReadStringArgument(arguments, L"output_dir");
  if (output_dir.empty()) return MakeFailureResult(L"'output_dir' argument is required.");
  if (!EnsureDirectory(output_dir))
    return MakeFailureResult(Format(L"Failed to create output directory '%s'.", output_dir));
  const ExportFormat* const format = FindExportFormat(JsonReadStringArgument(arguments, L"format"));
  if (format == nullptr) return MakeFailureResult(kUnsupportedFormat);
  if (auto none = CheckNoConfigurations(arguments); !none.success) return none;

  const std::wstring file_name = Format(L"%s.%s", SanitizeExportName(ModelName(model)), format->extension);
  const std::wstring path = JoinPath(output_dir, file_name);
  if (FileExists(path)) return MakeFailureResult(AlreadyExists(path));
  if (const ProError status = WriteExportFile(model, *format, path); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Batch export failed (status=%d).", status));
  const std::wstring files = Format(LR"(["%s"])", JsonEscape(path));
  return MakeSuccessResult(Format(L"Exported 1 file to '%s'.", output_dir),
                           Format(LR"({"exported_count":1,"files":%s})", files));
}

}  // namespace

void RegisterExportOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_export_file", ExportFile);
  provider.RegisterOperation(L"api_export_batch", ExportBatch);
}

}  // namespace vek::exchange
