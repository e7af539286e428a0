#include "addin/ops/document/documents.h"

#include <ProSolid.h>
#include <ProUtil.h>
#include <ProWindows.h>

#include <algorithm>

#include "addin/host/text_buffer.h"
#include "addin/ops/common/history.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/common/model_paths.h"
#include "addin/ops/common/working_directory.h"
#include "addin/ops/document/history_listing.h"
#include "addin/platform/files.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::document {
namespace {

constexpr unsigned kNameAttempts = 25;

// What a name may have at most in a new model.
constexpr std::size_t kNewNameLength = PRO_NAME_SIZE - 1;

// Erasing what is not there, or no longer there, leaves the session as a close should: the host says so in
// several ways.
constexpr ProError kErased[] = {PRO_TK_NO_ERROR, PRO_TK_E_NOT_FOUND, PRO_TK_BAD_CONTEXT, PRO_TK_INVALID_PTR};

struct DocumentDescription {
  std::wstring name;
  std::wstring full_path;
  std::wstring type_word;
  bool modified = false;
};

// False for a model whose type or name the host doesn't tell.
bool Describe(ProMdl model, DocumentDescription& description) {
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR) return false;
  description.name = ModelName(model);
  if (description.name.empty()) return false;
  description.full_path = ModelFullPath(model, type);
  description.type_word = ModelTypeWord(type);
  ProBoolean modified = PRO_B_FALSE;
  description.modified =
      ProMdlModificationVerify(model, &modified) == PRO_TK_NO_ERROR && modified == PRO_B_TRUE;
  return true;
}

const wchar_t* Word(bool flag) {
  return flag ? L"true" : L"false";
}

// The row of a model in the list of open documents; empty for one that can't be described.
std::wstring ListRow(ProMdl model, bool active) {
  DocumentDescription row;
  if (!Describe(model, row)) return {};
  return Format(LR"({"name":"%s","full_path":"%s","document_type":"%s","is_active":%s,"is_modified":%s})",
                JsonEscape(row.name), JsonEscape(row.full_path), JsonEscape(row.type_word), Word(active),
                Word(row.modified));
}

CreoMcpOperationResult NoOpenDocument(const std::wstring& name_or_path) {
  return MakeFailureResult(Format(
      L"No open document matches '%s'. Use api_document_list_open to see open documents.", name_or_path));
}

// The check that the borrowed directory is there to be worked in.
CreoMcpOperationResult CheckDirectoryEntered(const std::wstring& directory,
                                             const WorkingDirectoryGuard& guard) {
  if (directory.empty() || guard.changed()) return MakeSuccessResult();
  return MakeFailureResult(Format(L"Failed to change working directory (status=%d).", guard.status()));
}

CreoMcpOperationResult ActivateOpenDocument(ProMdl model) {
  CreoMcpOperationResult activated = ActivateModel(model);
  if (!activated.success) return activated;
  ClearHistory();
  activated.message = Format(L"Document '%s' was already open and is now active.", ModelName(model));
  return activated;
}

// The model type that a file holds, by its extension or, for others, by what the host makes of it; -1 for
// none.
int FileModelType(const std::wstring& path, const std::wstring& extension) {
  if (const int type = ExtensionToModelType(extension); type != -1) return type;
  ProPath buffer;
  if (!CopyWhole(buffer, path)) return -1;
  ProMdlfileType type = PRO_MDLFILE_UNUSED;
  ProMdlsubtype subtype = PROMDLSTYPE_NONE;
  return ProFileSubtypeGet(buffer, &type, &subtype) == PRO_TK_NO_ERROR ? type : -1;
}

ProError Retrieve(const std::wstring& name, int type, ProMdl& model) {
  ProMdlName buffer;
  if (!CopyWhole(buffer, name)) return PRO_TK_BAD_INPUTS;
  return ProMdlnameRetrieve(buffer, static_cast<ProMdlfileType>(type), &model);
}

ProError Rename(ProMdl model, const std::wstring& name) {
  ProMdlName buffer;
  if (!CopyWhole(buffer, name)) return PRO_TK_BAD_INPUTS;
  return ProMdlnameRename(model, buffer);
}

// A drawing is displayed first: the host doesn't save one that it has never shown.
ProError Save(ProMdl model) {
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) == PRO_TK_NO_ERROR && type == kDrawingType) {
    if (const ProError status = ProMdlDisplay(model); status != PRO_TK_NO_ERROR) return status;
  }
  return ProMdlSave(model);
}

// Creates a model under a name made of the clock. The clock moves in steps that are longer than a creation,
// so a taken name is tried again a little further on.
CreoMcpOperationResult CreateUniqueModel(int type, const wchar_t* word, std::wstring& name, ProMdl& model) {
  const wchar_t* const prefix = type == kAssemblyType ? L"VEK_ASM" : L"VEK_PRT";
  for (unsigned attempt = 0; attempt < kNameAttempts; ++attempt) {
    name = Format(L"%s_%u", prefix, TickCount() + attempt).substr(0, kNewNameLength);
    ProMdlName buffer;
    CopyCut(buffer, name);
    ProSolid solid = nullptr;
    const ProError status = ProSolidMdlnameCreate(buffer, static_cast<ProMdlfileType>(type), &solid);
    if (status == PRO_TK_E_FOUND) continue;
    if (status != PRO_TK_NO_ERROR || solid == nullptr)
      return MakeFailureResult(Format(L"Failed to create new %s document (status=%d).", word, status));
    model = solid;
    return MakeSuccessResult();
  }
  return MakeFailureResult(Format(L"Failed to create a unique new %s document name.", word));
}

CreoMcpOperationResult NewDocument(int type, const wchar_t* word) {
  std::wstring name;
  ProMdl model = nullptr;
  if (auto created = CreateUniqueModel(type, word, name, model); !created.success) return created;
  if (auto activated = ActivateModel(model); !activated.success) return activated;
  ClearHistory();
  return MakeSuccessResult(
      Format(L"New %s document '%s' created.", word, name),
      Format(LR"({"name":"%s","full_path":"%s"})", JsonEscape(name), JsonEscape(ModelFullPath(model, type))));
}

// ---- operations
// ----------------------------------------------------------------------------------------------

CreoMcpOperationResult Info(const std::wstring&) {
  ProMdl model = nullptr;
  if (ProMdlCurrentGet(&model) != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(L"No active document.");
  DocumentDescription row;
  if (!Describe(model, row)) return MakeFailureResult(L"Failed to read active document metadata.");
  return MakeSuccessResult(
      Format(L"Active document: %s.", row.name),
      Format(LR"({"name":"%s","full_path":"%s","document_type":"%s","is_modified":%s})", JsonEscape(row.name),
             JsonEscape(row.full_path), JsonEscape(row.type_word), Word(row.modified)));
}

CreoMcpOperationResult ListOpen(const std::wstring&) {
  // A session without a current model is an empty list or one without an active row, and no failure.
  ProMdl current = nullptr;
  ProMdlCurrentGet(&current);

  int count = 0;
  std::wstring rows;
  for (const ProMdl model : SessionModels()) {
    const bool active = model == current;
    int window = -1;
    if (!active && ProMdlWindowGet(model, &window) != PRO_TK_NO_ERROR) continue;
    const std::wstring row = ListRow(model, active);
    if (row.empty()) continue;
    if (count > 0) rows += L',';
    rows += row;
    ++count;
  }
  return MakeSuccessResult(Format(L"%d open document(s).", count), L"[" + rows + L"]");
}

CreoMcpOperationResult Activate(const std::wstring& arguments) {
  const std::wstring name_or_path = JsonReadStringArgument(arguments, L"name_or_path");
  if (name_or_path.empty()) return MakeFailureResult(L"'name_or_path' argument is required.");
  const ProMdl model = FindOpenModel(name_or_path);
  if (model == nullptr) return NoOpenDocument(name_or_path);
  CreoMcpOperationResult activated = ActivateModel(model);
  if (activated.success) ClearHistory();
  return activated;
}

CreoMcpOperationResult Open(const std::wstring& arguments) {
  const std::wstring file_path = JsonReadStringArgument(arguments, L"file_path");
  if (file_path.empty()) return MakeFailureResult(L"'file_path' argument is required.");
  // Before the disk is looked at: the name of a model in session needs no file.
  if (const ProMdl open = FindOpenModel(file_path)) return ActivateOpenDocument(open);

  if (!PathExists(file_path)) return MakeFailureResult(Format(L"File not found: '%s'.", file_path));
  std::wstring directory, name, extension;
  if (!ParseModelFileName(file_path, directory, name, extension))
    return MakeFailureResult(L"Unable to parse file_path into a Creo model name.");
  const int type = FileModelType(file_path, extension);
  if (type == -1) return MakeFailureResult(L"Unsupported Creo file type. Expected .prt, .asm, or .drw.");
  if (directory.size() >= PRO_PATH_SIZE) return MakeFailureResult(L"Directory path is too long.");

  const WorkingDirectoryGuard guard(directory);
  if (auto entered = CheckDirectoryEntered(directory, guard); !entered.success) return entered;
  ProMdl model = nullptr;
  const ProError status = Retrieve(name, type, model);
  if (status != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(Format(L"Failed to open '%s' (status=%d).", file_path, status));
  CreoMcpOperationResult activated = ActivateModel(model);
  if (!activated.success) return activated;
  ClearHistory();
  activated.message = Format(L"Document '%s' opened and activated.", ModelName(model));
  return activated;
}

CreoMcpOperationResult Close(const std::wstring& arguments) {
  const std::wstring name_or_path = JsonReadStringArgument(arguments, L"name_or_path");
  if (name_or_path.empty()) return MakeFailureResult(L"'name_or_path' argument is required.");
  const ProMdl model = FindOpenModel(name_or_path);
  if (model == nullptr) return NoOpenDocument(name_or_path);
  const std::wstring name = ModelName(model);

  if (JsonReadBool(arguments, L"save_changes", false)) {
    if (const ProError status = Save(model); status != PRO_TK_NO_ERROR)
      return MakeFailureResult(Format(L"Failed to save '%s' before close (status=%d).", name, status));
  }

  int window = -1;
  if (ProMdlWindowGet(model, &window) == PRO_TK_NO_ERROR) ProWindowDelete(window);
  const ProError status = ProMdlErase(model);
  if (std::find(std::begin(kErased), std::end(kErased), status) == std::end(kErased))
    return MakeFailureResult(Format(L"Failed to close '%s' (status=%d).", name, status));
  ClearHistory();
  return MakeSuccessResult(Format(L"Document '%s' closed.", name));
}

CreoMcpOperationResult Rebuild(const std::wstring&) {
  ProMdl model = nullptr;
  if (ProMdlCurrentGet(&model) != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(L"No active document.");
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to read active document type.");
  if (type != kAssemblyType && type != kPartType)
    return MakeFailureResult(L"api_document_rebuild is only supported for parts and assemblies.");
  if (const ProError status = ProSolidRegenerate(static_cast<ProSolid>(model), 0); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Rebuild failed (status=%d).", status));
  ProWindowRepaint(-1);
  return MakeSuccessResult(L"Rebuild completed.", LR"({"computed":true})");
}

CreoMcpOperationResult NewPart(const std::wstring&) {
  return NewDocument(kPartType, L"part");
}

CreoMcpOperationResult NewAssembly(const std::wstring&) {
  return NewDocument(kAssemblyType, L"assembly");
}

// Where and under which name the active document is to be saved.
struct SaveTarget {
  std::wstring directory;
  std::wstring name;
  int type = -1;
};

// Reads the target out of `file_path`, holds it against the type of the model and makes its directory.
CreoMcpOperationResult PrepareSaveTarget(const std::wstring& file_path, ProMdl model, SaveTarget& target) {
  std::wstring extension;
  if (!ParseModelFileName(file_path, target.directory, target.name, extension))
    return MakeFailureResult(L"Unable to parse file_path for save-as.");
  if (extension.empty())
    return MakeFailureResult(L"'file_path' must include a .prt, .asm, or .drw extension.");
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to read active document type.");
  target.type = type;
  const std::wstring expected = ModelTypeExtension(type);
  if (expected.empty()) return MakeFailureResult(L"Unsupported active document type for save-as.");
  if (!EqualsIgnoreCase(extension, expected))
    return MakeFailureResult(
        Format(L"file_path extension '.%s' does not match active document type '%s' (expected '.%s').",
               extension, ModelTypeWord(type), expected));

  if (!target.directory.empty() && !EnsureDirectory(target.directory))
    return MakeFailureResult(Format(L"Failed to create destination directory '%s'.", target.directory));
  if (target.directory.size() >= PRO_PATH_SIZE) return MakeFailureResult(L"Directory path is too long.");
  return MakeSuccessResult();
}

// The document is renamed in session, so that no second model comes into being.
CreoMcpOperationResult SaveAs(const std::wstring& arguments) {
  const std::wstring file_path = JsonReadStringArgument(arguments, L"file_path");
  if (file_path.empty()) return MakeFailureResult(L"'file_path' argument is required.");
  ProMdl model = nullptr;
  if (ProMdlCurrentGet(&model) != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(L"No active document to save.");
  SaveTarget target;
  if (auto prepared = PrepareSaveTarget(file_path, model, target); !prepared.success) return prepared;

  const WorkingDirectoryGuard guard(target.directory);
  if (auto entered = CheckDirectoryEntered(target.directory, guard); !entered.success) return entered;
  if (!EqualsIgnoreCase(ModelName(model), target.name)) {
    if (const ProError status = Rename(model, target.name); status != PRO_TK_NO_ERROR)
      return MakeFailureResult(
          Format(L"Failed to rename active document to '%s' (status=%d).", target.name, status));
  }
  if (const ProError status = Save(model); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"SaveAs failed for '%s' (status=%d).", file_path, status));

  std::wstring saved_path = ModelFullPath(model, target.type);
  if (saved_path.empty()) saved_path = file_path;
  return MakeSuccessResult(Format(L"Document saved as '%s'.", file_path),
                           Format(LR"({"file_path":"%s"})", JsonEscape(saved_path)));
}

}  // namespace

void RegisterDocumentOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_document_info", Info);
  provider.RegisterOperation(L"api_document_list_open", ListOpen);
  provider.RegisterOperation(L"api_document_activate", Activate);
  provider.RegisterOperation(L"api_document_open", Open);
  provider.RegisterOperation(L"api_document_close", Close);
  provider.RegisterOperation(L"api_document_rebuild", Rebuild);
  provider.RegisterOperation(L"api_document_new_part", NewPart);
  provider.RegisterOperation(L"api_document_new_assembly", NewAssembly);
  provider.RegisterOperation(L"api_document_save_as", SaveAs);
  provider.RegisterOperation(L"api_document_get_history", GetHistory);
}

}  // namespace vek::document
