#include "addin/shell/file_kind.h"

#include <initializer_list>
#include <string>

#include "addin/text/wide_text.h"

namespace vek {

FileKind FileKindOf(std::wstring_view path) {
  const std::wstring upper = ToUpper(path);
  const auto holds = [&](std::initializer_list<const wchar_t*> marks) {
    for (const wchar_t* mark : marks)
      if (upper.find(mark) != std::wstring::npos) return true;
    return false;
  };
  if (holds({L".STEP", L".STP"})) return FileKind::kStep;
  if (holds({L".X_T", L".XMT_TXT", L".X_B", L".XMT_BIN", L".X_N", L".XMT_NEU"})) return FileKind::kParasolid;
  return FileKind::kNative;
}

}  // namespace vek
