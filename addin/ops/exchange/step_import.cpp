#include "addin/ops/exchange/step_import.h"

#include "addin/ops/common/model_access.h"
#include "addin/ops/common/neutral_import.h"
#include "addin/ops/exchange/import_file_name.h"
#include "addin/platform/files.h"
#include "addin/platform/temporary_file.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/base64.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"

namespace vek::exchange {
namespace {

bool DecodePayload(const std::wstring& text, std::string& bytes) {
  const std::string narrow = EncodeUtf8(text);
  bytes.resize(narrow.size());
  std::size_t size = bytes.size();
  if (!DecodeBase64(narrow, reinterpret_cast<unsigned char*>(bytes.data()), size)) return false;
  bytes.resize(size);
  return true;
}

// A path of its own, with the client's own extension. On failure, `error` may tell why.
bool MakeTemporaryStepPath(const std::wstring& filename, std::wstring& path, std::wstring& error) {
  if (!NewTemporaryPath(path)) {
    error = L"Failed to allocate temporary STEP import path.";
    return false;
  }
  std::wstring extension;
  if (!ImportExtension(filename, extension)) {
    error = L"'filename' extension must not contain path separators.";
    return false;
  }
  path += extension;
  if (path.size() < PRO_PATH_SIZE) return true;
  error = L"Temporary STEP import path is too long.";
  return false;
}

// Puts the bytes where the host can read them, for as long as it does.
CreoMcpOperationResult ImportBytes(const std::string& bytes, const std::wstring& filename, ProMdl& model) {
  std::wstring path, error;
  if (!MakeTemporaryStepPath(filename, path, error))
    return MakeFailureResult(error.empty() ? L"Failed to build temporary STEP import path." : error);
  const TemporaryFile file(path);
  if (!WriteWholeFile(path, bytes)) return MakeFailureResult(L"Failed to write temporary STEP file.");
  const std::wstring name = ImportName(ImportBaseName(filename));
  const ProError status = ImportUnderFreeName(path, name, model);
  if (status != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(Format(L"STEP import failed (status=%d).", status));
  return MakeSuccessResult();
}

CreoMcpOperationResult ImportStep(const std::wstring& arguments) {
  const std::wstring text = JsonReadStringArgument(arguments, L"data_base64");
  if (text.empty()) return MakeFailureResult(L"'data_base64' argument is required.");
  std::wstring filename = JsonReadStringArgument(arguments, L"filename");
  if (filename.empty()) filename = L"import.step";
  std::string bytes;
  if (!DecodePayload(text, bytes)) return MakeFailureResult(L"Failed to decode STEP base64 payload.");

  ProMdl model = nullptr;
  if (auto imported = ImportBytes(bytes, filename, model); !imported.success) return imported;
  if (auto activated = ActivateModel(model); !activated.success) return activated;
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR) type = PRO_MDL_UNUSED;
  const std::wstring name = ModelName(model);
  return MakeSuccessResult(
      Format(L"Imported STEP data from '%s' as '%s'.", filename, name),
      Format(LR"({"feature_name":"%s","filename":"%s","full_path":"%s","document_type":"%s"})",
             JsonEscape(name), JsonEscape(filename), JsonEscape(ModelFullPath(model, type)),
             JsonEscape(ModelTypeWord(type))));
}

}  // namespace

void RegisterStepImportOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_import_step_base64", ImportStep);
}

}  // namespace vek::exchange
