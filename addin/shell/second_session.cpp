#include "addin/shell/second_session.h"

#include <ProUtil.h>

#include "addin/host/text_buffer.h"
#include "addin/platform/files.h"
#include "addin/platform/processes.h"
#include "addin/shell/file_kind.h"
#include "addin/shell/opening_status.h"

namespace vek {
namespace {

// The host's program, from the folder in which it keeps its texts.
std::wstring HostProgram(const std::wstring& text_path) {
  const auto mark = text_path.find(L"\\text");
  if (mark == std::wstring::npos) return L"parametric.exe";
  return text_path.substr(0, mark) + L"\\bin\\parametric.exe";
}

}  // namespace

int OpenFileInCreoNewWindow(const std::wstring& path) {
  if (path.empty()) return kBadPath;
  if (!PathExists(path)) return kFileNotFound;
  ProPath file;
  if (!CopyWhole(file, path)) return kBadPath;
  if (FileKindOf(path) == FileKind::kNative) {
    ProMdlfileType type = PRO_MDLFILE_UNUSED;
    ProMdlsubtype subtype = PROMDLSTYPE_NONE;
    if (const ProError status = ProFileSubtypeGet(file, &type, &subtype); status != PRO_TK_NO_ERROR)
      return status;
  }
  ProPath text_path{};
  if (ProToolkitApplTextPathGet(text_path) != PRO_TK_NO_ERROR) return kLaunchFailed;
  return OpenProgram(HostProgram(BufferText(text_path)), path) ? 0 : kLaunchFailed;
}

}  // namespace vek
