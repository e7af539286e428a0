#include "addin/ops/macros/macros.h"

#include <ProMacro.h>

#include <algorithm>
#include <vector>

#include "addin/ops/common/model_access.h"
#include "addin/ops/common/model_paths.h"
#include "addin/ops/macros/macro_text.h"
#include "addin/platform/files.h"
#include "addin/platform/log.h"
#include "addin/platform/text_encoding.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::macros {
namespace {

constexpr const wchar_t* kExtension = L".txt";
constexpr const wchar_t* kType = L"mapkey";

constexpr const wchar_t* kNameMissing = L"'name' argument is required.";
constexpr const wchar_t* kCodeMissing = L"'code' argument is required.";

struct MacroRecord {
  std::wstring name;  // the file's, without its extension
  std::wstring type = kType;
  std::wstring path;
  bool embedded = false;
  bool editable = true;
};

const wchar_t* JsonWord(bool value) {
  return value ? L"true" : L"false";
}

// ---- the folder
// --------------------------------------------------------------------------------------------

// Empty when the user's profile can't be found.
std::wstring MacroDirectory() {
  const std::wstring profile = LocalApplicationData();
  if (profile.empty()) return {};
  return JoinPath(JoinPath(JoinPath(profile, L"VekAI"), L"Creo"), L"Macros");
}

// The same, made if it isn't there yet.
std::wstring EnsuredMacroDirectory() {
  const std::wstring directory = MacroDirectory();
  if (!directory.empty()) EnsureDirectory(directory);
  return directory;
}

bool PathIsInside(const std::wstring& path, const std::wstring& directory) {
  std::wstring full_path, full_directory;
  return FullPath(path, full_path) && FullPath(directory, full_directory) &&
         LiesBelow(full_path, full_directory);
}

// The path of the macro that a client's name stands for; empty when there is no such file in the folder.
std::wstring ResolveMacroPath(const std::wstring& name) {
  if (name.empty()) return {};
  const std::wstring directory = EnsuredMacroDirectory();
  if (directory.empty()) return {};
  std::wstring safe, error;
  if (!SanitizeMacroName(name, safe, error)) return {};
  std::wstring path;
  if (!FullPath(JoinPath(directory, safe + kExtension), path)) return {};
  return PathIsInside(path, directory) && FileExists(path) ? path : std::wstring();
}

// The name under which a macro is kept, or the client's own when that is none.
std::wstring ShownName(const std::wstring& name) {
  std::wstring safe, error;
  return SanitizeMacroName(name, safe, error) ? safe : name;
}

std::vector<MacroRecord> ListMacros() {
  const std::wstring directory = EnsuredMacroDirectory();
  if (directory.empty()) return {};
  std::vector<std::wstring> files;
  FilesMatching(JoinPath(directory, std::wstring(L"*") + kExtension), files);
  std::vector<MacroRecord> macros;
  for (const std::wstring& file : files) {
    MacroRecord macro;
    macro.name = WithoutExtension(file);
    macro.path = JoinPath(directory, file);
    macros.push_back(std::move(macro));
  }
  std::stable_sort(macros.begin(), macros.end(), [](const MacroRecord& a, const MacroRecord& b) {
    return ToLower(a.name) < ToLower(b.name);
  });
  return macros;
}

// ---- files and runs
// ----------------------------------------------------------------------------------------

// The lines of the file, joined without anything between them.
bool ReadMacroFile(const std::wstring& path, std::wstring& code, std::wstring& error) {
  std::string bytes;
  if (!ReadWholeFile(path, bytes)) {
    error = Format(L"Failed to read macro file '%s'.", path);
    return false;
  }
  std::string joined;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool line_end =
        bytes[i] == '\n' || (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n');
    if (!line_end) joined += bytes[i];
  }
  code = DecodeAnsi(joined);
  return true;
}

bool WriteMacroFile(const std::wstring& path, const std::wstring& code, std::wstring& error) {
  std::wstring directory, name, extension;
  if (!ParseModelFileName(path, directory, name, extension))
    directory = path.substr(0, std::min(path.find_last_of(L"/\\"), path.size()));
  if (!directory.empty() && !EnsureDirectory(directory)) {
    error = Format(L"Failed to create macro directory '%s'.", directory);
    return false;
  }
  // What the code page can't say would come back as something else.
  const std::string bytes = EncodeAnsi(code);
  if (DecodeAnsi(bytes) == code && ReplaceWholeFile(path, bytes)) return true;
  error = Format(L"Failed to write macro file '%s'.", path);
  return false;
}

CreoMcpOperationResult ActivateDocumentForMacro(const std::wstring& arguments) {
  const std::wstring document = JsonReadStringArgument(arguments, L"document_name");
  if (document.empty()) return MakeSuccessResult();
  const ProMdl model = FindOpenModel(document);
  if (model == nullptr) return MakeFailureResult(Format(L"No open document matches '%s'.", document));
  return ActivateModel(model);
}

CreoMcpOperationResult RunMacroCode(const std::wstring& code) {
  std::wstring normal, error;
  if (!NormalizeMacroCode(code, normal, error)) return MakeFailureResult(error);
  if (const ProError status = ProMacroLoad(normal.data()); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"ProMacroLoad failed (status=%d).", status));
  if (const ProError status = ProMacroExecute(); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"ProMacroExecute failed (status=%d).", status));
  return MakeSuccessResult();
}

CreoMcpOperationResult Done(const std::wstring& message, std::wstring data = L"null") {
  LogOperation(Format(L"CreoMcpMacro: %s", message));
  return MakeSuccessResult(message, std::move(data));
}

// ---- operations
// --------------------------------------------------------------------------------------------

CreoMcpOperationResult MacroList(const std::wstring& arguments) {
  if (!IsMacroType(JsonReadStringArgument(arguments, L"macro_type")))
    return Done(L"No macros matched the requested macro_type filter.", L"[]");
  const std::vector<MacroRecord> macros = ListMacros();
  std::wstring rows;
  for (const MacroRecord& macro : macros)
    rows += (rows.empty() ? L"" : L",") +
            Format(LR"({"name":"%s","type":"%s","embedded":%s,"editable":%s,"path":"%s"})",
                   JsonEscape(macro.name), JsonEscape(macro.type), JsonWord(macro.embedded),
                   JsonWord(macro.editable), JsonEscape(macro.path));
  return Done(Format(L"%d macro(s) found.", static_cast<int>(macros.size())), L"[" + rows + L"]");
}

CreoMcpOperationResult MacroRun(const std::wstring& arguments) {
  const std::wstring name = JsonReadStringArgument(arguments, L"name");
  if (name.empty()) return MakeFailureResult(kNameMissing);
  if (auto activated = ActivateDocumentForMacro(arguments); !activated.success) return activated;
  const std::wstring path = ResolveMacroPath(name);
  if (path.empty())
    return MakeFailureResult(Format(L"Macro '%s' not found under '%s'.", name, MacroDirectory()));
  std::wstring code, error;
  if (!ReadMacroFile(path, code, error)) return MakeFailureResult(error);
  if (auto run = RunMacroCode(code); !run.success)
    return MakeFailureResult(Format(L"Macro '%s' failed: %s", name, run.message));
  return Done(Format(L"Macro '%s' ran successfully.", name));
}

CreoMcpOperationResult MacroCreate(const std::wstring& arguments) {
  const std::wstring name = JsonReadStringArgument(arguments, L"name");
  if (name.empty()) return MakeFailureResult(kNameMissing);
  const std::wstring code = JsonReadStringArgument(arguments, L"code");
  if (code.empty()) return MakeFailureResult(kCodeMissing);
  if (auto activated = ActivateDocumentForMacro(arguments); !activated.success) return activated;

  std::wstring safe, normal, error;
  if (!SanitizeMacroName(name, safe, error) || !NormalizeMacroCode(code, normal, error))
    return MakeFailureResult(error);
  const std::wstring folder = EnsuredMacroDirectory();
  if (folder.empty()) return MakeFailureResult(Format(L"Failed to create macro directory '%s'.", folder));
  const std::wstring path = JoinPath(folder, safe + kExtension);
  const bool exists = FileExists(path);
  if (exists && !JsonReadBool(arguments, L"overwrite", false))
    return MakeFailureResult(
        Format(LR"(Macro '%s' already exists. Pass "overwrite": true to replace it.)", safe));
  if (!WriteMacroFile(path, normal, error)) return MakeFailureResult(error);

  const std::wstring action = exists ? L"overwritten" : L"created";
  return Done(Format(L"Mapkey macro '%s' %s.", safe, action),
              Format(LR"({"name":"%s","path":"%s","action":"%s","macro_type":"%s"})", JsonEscape(safe),
                     JsonEscape(path), JsonEscape(action), JsonEscape(kType)));
}

CreoMcpOperationResult MacroGetCode(const std::wstring& arguments) {
  const std::wstring name = JsonReadStringArgument(arguments, L"name");
  if (name.empty()) return MakeFailureResult(kNameMissing);
  const std::wstring path = ResolveMacroPath(name);
  if (path.empty()) return MakeFailureResult(Format(L"Macro '%s' not found.", name));
  std::wstring code, error;
  if (!ReadMacroFile(path, code, error)) return MakeFailureResult(error);
  const std::wstring shown = ShownName(name);
  return Done(Format(L"Code for macro '%s' retrieved.", shown),
              Format(LR"({"name":"%s","macro_type":"%s","path":"%s","code":"%s"})", JsonEscape(shown),
                     JsonEscape(kType), JsonEscape(path), JsonEscape(code)));
}

CreoMcpOperationResult MacroDelete(const std::wstring& arguments) {
  const std::wstring name = JsonReadStringArgument(arguments, L"name");
  if (name.empty()) return MakeFailureResult(kNameMissing);
  const std::wstring path = ResolveMacroPath(name);
  if (path.empty())
    return MakeFailureResult(
        Format(L"Macro '%s' not found in '%s'. Only macros created by Vek can be deleted via this API.", name,
               MacroDirectory()));
  const std::wstring shown = ShownName(name);
  if (const unsigned long error = DeleteFileAt(path); error != 0)
    return MakeFailureResult(Format(L"Failed to delete macro '%s' (win32=%lu).", shown, error));
  return Done(Format(L"Macro '%s' deleted.", shown));
}

}  // namespace

void RegisterMacroOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_macro_list", MacroList);
  provider.RegisterOperation(L"api_macro_run", MacroRun);
  provider.RegisterOperation(L"api_macro_create", MacroCreate);
  provider.RegisterOperation(L"api_macro_get_code", MacroGetCode);
  provider.RegisterOperation(L"api_macro_delete", MacroDelete);
}

}  // namespace vek::macros
