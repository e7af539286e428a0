// The calls of ProUtil.h.
#include <ProUtil.h>
#include <windows.h>

#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/storage/model_json.h"
#include "bench/host/text.h"

using namespace bench;

ProError ProDirectoryCurrentGet(ProPath directory) {
  HOST_CALL() {
    if (!directory) return PRO_TK_BAD_INPUTS;
    return CopyOut(WorkingDirectory(), *reinterpret_cast<ProPath*>(directory)) ? PRO_TK_NO_ERROR
                                                                               : PRO_TK_LINE_TOO_LONG;
  };
}

ProError ProDirectoryChange(wchar_t* directory) {
  HOST_CALL(static_cast<const wchar_t*>(directory)) {
    if (!directory || !*directory) return PRO_TK_BAD_INPUTS;
    const std::wstring wanted(Bounded(directory, PRO_PATH_SIZE));
    if (wanted.size() == PRO_PATH_SIZE) return PRO_TK_LINE_TOO_LONG;
    // The process's own directory moves along: file calls of the add-in with relative paths depend on it.
    return SetCurrentDirectoryW(wanted.c_str()) ? PRO_TK_NO_ERROR : PRO_TK_INVALID_DIR;
  };
}

ProError ProFileMdlnameParse(wchar_t* path, ProPath directory, ProMdlName name, ProMdlExtension extension,
                             int* version) {
  HOST_CALL(static_cast<const wchar_t*>(path)) {
    if (!path || !directory || !name || !extension || !version) return PRO_TK_BAD_INPUTS;
    const std::wstring_view text = Bounded(path, PRO_PATH_SIZE);
    if (text.size() == PRO_PATH_SIZE) return PRO_TK_LINE_TOO_LONG;
    const auto parts = ParseFileName(text);
    if (!parts) return PRO_TK_INVALID_NAME;
    const bool fits = CopyOut(parts->directory, *reinterpret_cast<ProPath*>(directory)) &&
                      CopyOut(parts->name, *reinterpret_cast<ProMdlName*>(name)) &&
                      CopyOut(parts->extension, *reinterpret_cast<ProMdlExtension*>(extension));
    if (!fits) return PRO_TK_LINE_TOO_LONG;
    *version = parts->version;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProFileSubtypeGet(wchar_t* path, ProMdlfileType* type, ProMdlsubtype* subtype) {
  HOST_CALL(static_cast<const wchar_t*>(path)) {
    if (!path || !type || !subtype) return PRO_TK_BAD_INPUTS;
    const std::wstring wanted(Bounded(path, PRO_PATH_SIZE));
    if (wanted.size() == PRO_PATH_SIZE) return PRO_TK_LINE_TOO_LONG;
    if (!FileExists(wanted)) return PRO_TK_E_NOT_FOUND;
    const auto text = ReadWholeFile(wanted);
    if (!text) return PRO_TK_CANT_OPEN;
    std::optional<ProMdlType> known = TypeInText(*text);
    if (!known)
      if (const auto parts = ParseFileName(wanted)) known = TypeOfExtension(parts->extension);
    if (!known) return PRO_TK_GENERAL_ERROR;
    *type = static_cast<ProMdlfileType>(*known);
    *subtype = PROMDLSTYPE_NONE;
    return PRO_TK_NO_ERROR;
  };
}
