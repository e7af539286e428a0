#include "addin/shell/model_opening.h"

#include <ProMdl.h>
#include <ProUtil.h>

#include <exception>
#include <string>

#include "addin/host/show_message.h"
#include "addin/host/text_buffer.h"
#include "addin/ops/common/neutral_import.h"
#include "addin/platform/files.h"
#include "addin/platform/log.h"
#include "addin/shell/file_kind.h"
#include "addin/shell/model_placement.h"
#include "addin/shell/opening_status.h"
#include "addin/text/format.h"
#include "addin/text/path_text.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

// What the host's dialog takes for a file's name.
constexpr int kFileNameSize = 216;
constexpr std::size_t kLongestImportName = 31;

struct ImportDialog {
  const wchar_t* title;
  const wchar_t* filter;
};

ImportDialog DialogFor(FileKind kind) {
  if (kind == FileKind::kStep) return {L"Open STEP File", L"*.stp,*.step"};
  return {L"Open ParaSoild File", L"*.x_t,*.xmt_txt,*.x_b,*.xmt_bin,*.x_n,*.xmt_neu,*.xmt"};
}

// Lets the user confirm the file; the host's status.
ProError ConfirmFile(FileKind kind, const std::wstring& path, ProPath selected) {
  const ImportDialog dialog = DialogFor(kind);
  std::wstring title = dialog.title, filter = dialog.filter;
  ProPath directory;
  wchar_t name[kFileNameSize];
  CopyCut(directory, DirectoryInPath(path));
  CopyCut(name, NameInPath(path));
  LogShell(L"Before: ProFileMdlnameOpen");
  const ProError status =
      ProFileMdlnameOpen(title.data(), filter.data(), nullptr, nullptr, directory, name, selected);
  LogShell(L"After: ProFileMdlnameOpen");
  return status;
}

// Imports the file under a name that is free; 0, or what the import ended with.
int ImportFile(ProPath selected, ProMdl& model) {
  const std::wstring name =
      ImportName(WithoutExtension(NameInPath(std::wstring_view(selected))), kLongestImportName);
  const int status = ImportUnderFreeName(
      selected, name, model, [] { LogShell(L"INFO: Name clash on import; trying unique suffixed names"); });
  if (status == kNameClash) {
    LogShell(L"ERROR: Could not resolve name clash after multiple attempts");
  } else if (status != 0) {
    LogShell(Format(L"ERROR: STEP import failed (Error code: %d)", status));
  } else {
    LogShell(L"SUCCESS: STEP file imported successfully");
    LogShell(L"SUCCESS: STEP file opened and displayed in current session");
  }
  return status;
}

// What a file has become in session. Without a model the user has changed his mind.
struct OpenedModel {
  int status = 0;
  ProMdl model = nullptr;
};

OpenedModel OpenNeutral(FileKind kind, const std::wstring& path) {
  ProPath selected{};
  const ProError status = ConfirmFile(kind, path, selected);
  if (status == PRO_TK_USER_ABORT) {
    LogShell(L"User canceled STEP file dialog");
    return {};
  }
  if (status != PRO_TK_NO_ERROR) {
    LogShell(Format(L"ERROR: ProFileMdlnameOpen failed (Error code: %d)", status));
    return {status, nullptr};
  }
  LogShell(L"SUCCESS: User selected STEP file from dialog");
  OpenedModel opened;
  opened.status = ImportFile(selected, opened.model);
  return opened;
}

OpenedModel OpenNative(const std::wstring& name, ProMdlfileType type) {
  ProMdlName buffer;
  CopyCut(buffer, name);
  OpenedModel opened;
  opened.status = ProMdlnameRetrieve(buffer, type, &opened.model);
  if (opened.status != 0) LogShell(L"ERROR: Failed to retrieve model by name");
  return opened;
}

int OpenFile(const FileDownloadInfo& info) {
  const std::wstring& path = info.downloadPath;
  if (path.empty()) return kBadPath;
  if (!PathExists(path)) return kFileNotFound;
  ProPath file;
  if (!CopyWhole(file, path)) return kBadPath;

  const FileKind kind = FileKindOf(path);
  ProMdlfileType type = PRO_MDLFILE_UNUSED;
  if (kind != FileKind::kStep) {
    ProMdlsubtype subtype = PROMDLSTYPE_NONE;
    if (const ProError status = ProFileSubtypeGet(file, &type, &subtype); status != PRO_TK_NO_ERROR)
      return status;
  }
  const std::wstring name(WithoutExtension(NameInPath(path)));
  std::wstring directory(DirectoryInPath(path));
  if (directory.empty()) {
    LogShell(L"ERROR: Could not extract directory from file path");
    return kBadPath;
  }
  if (const ProError status = ProDirectoryChange(directory.data()); status != PRO_TK_NO_ERROR) {
    LogShell(L"ERROR: Failed to change directory");
    return status;
  }
  const OpenedModel opened = kind == FileKind::kNative ? OpenNative(name, type) : OpenNeutral(kind, path);
  if (opened.status != 0 || !opened.model) return opened.status;

  const int status = PlaceOrDisplayModel(opened.model, name, type, info.location, path);
  if (status != 0) return status;
  LogShell(L"SUCCESS: File opened and displayed in current session");
  LogShell(L"File opening completed successfully");
  LogShell(L"=============================");
  return 0;
}

int TellUser(const wchar_t* line, const wchar_t* message, int status) {
  LogShell(line);
  ShowMessage(message);
  return status;
}

}  // namespace

int OpenFileInCreo(const FileDownloadInfo& info) {
  constexpr int kFailed = -1;
  try {
    return OpenFile(info);
  } catch (const std::exception& thrown) {
    LogShell(Format(L"ERROR: Exception in OpenFileInCreo: %S", thrown.what()));
  } catch (...) {
    LogShell(L"ERROR: Unknown exception in OpenFileInCreo");
  }
  return kFailed;
}

int OpenWindchillModelInCreo(const FileDownloadInfo& info) {
  LogShell(L"=== OpenWindchillModelInCreo: Starting Windchill open ===");
  if (info.fileName.empty())
    return TellUser(L"ERROR: Windchill fileName is empty",
                    L"Windchill open failed: no file name was provided.", kBadPath);
  LogShell(
      Format(L"Windchill open: fileName='%s', version='%s' (workspace version will be opened), "
             L"epmDocumentId='%s'",
             info.fileName, info.version, info.epmDocumentId));
  const std::wstring upper = ToUpper(info.fileName);
  const bool is_assembly = upper.find(L".ASM") != std::wstring::npos;
  if (!is_assembly && upper.find(L".PRT") == std::wstring::npos)
    return TellUser(L"ERROR: Unsupported Windchill file type (expected .prt or .asm)",
                    L"Windchill open failed: only part (.prt) and assembly (.asm) files are supported.",
                    kBadPath);
  ProMdlName buffer;
  if (!CopyWhole(buffer, info.fileName))
    return TellUser(L"ERROR: Windchill file name too long",
                    L"Windchill open failed: the file name is too long.", kBadPath);

  const int type = is_assembly ? 1 : 2;
  const std::wstring name(WithoutExtension(info.fileName));
  CopyCut(buffer, name);
  LogShell(Format(L"Retrieving model '%s' from active Windchill workspace", name));
  ProMdl model = nullptr;
  const ProError retrieved = ProMdlnameRetrieve(buffer, static_cast<ProMdlfileType>(type), &model);
  if (retrieved != PRO_TK_NO_ERROR || !model) {
    LogShell(
        Format(L"ERROR: ProMdlnameRetrieve failed for Windchill object '%s' (status: %d)", name, retrieved));
    ShowMessage(
        L"Could not open the Windchill object.\n\nMake sure Creo is connected to the Windchill server and "
        L"the "
        L"object is in your active workspace, then try again.");
    return retrieved != PRO_TK_NO_ERROR ? retrieved : kFileNotFound;
  }
  LogShell(L"SUCCESS: Windchill model retrieved from workspace");
  const int status = PlaceOrDisplayModel(model, name, type, info.location, {});
  if (status != 0) {
    ShowMessage(L"The Windchill object was retrieved but could not be displayed.");
    return status;
  }
  LogShell(L"=== OpenWindchillModelInCreo: Windchill open completed successfully ===");
  return 0;
}

}  // namespace vek
