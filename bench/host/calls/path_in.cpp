#include "bench/host/calls/path_in.h"

#include "bench/host/storage/model_file.h"
#include "bench/host/text.h"

namespace bench {
namespace {

// The directory that a path names; empty when it names none.
std::wstring DirectoryOf(const std::wstring& path) {
  const auto end = path.find_last_of(L"\\/");
  if (end == std::wstring::npos) return {};
  // The root of a drive is one with its separator.
  return path.substr(0, end == 0 || path[end - 1] == L':' ? end + 1 : end);
}

}  // namespace

std::optional<std::wstring> ReadPath(const wchar_t* text) {
  if (!text || !*text) return std::nullopt;
  const std::wstring_view path = Bounded(text, PRO_PATH_SIZE);
  if (path.size() == PRO_PATH_SIZE) return std::nullopt;
  return std::wstring(path);
}

ProError CheckTarget(const std::wstring& path) {
  const std::wstring directory = DirectoryOf(path);
  if (!directory.empty() && !DirectoryExists(directory)) return PRO_TK_INVALID_DIR;
  return DirectoryExists(path) ? PRO_TK_CANT_WRITE : PRO_TK_NO_ERROR;
}

}  // namespace bench
