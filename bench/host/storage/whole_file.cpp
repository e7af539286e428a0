#include "bench/host/storage/whole_file.h"

#include <windows.h>

#include <algorithm>

#include "bench/host/host.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr std::size_t kMostAtOnce = 1 << 20;

bool WriteAll(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    if (!WriteFile(file, bytes.data(), wanted, &written, nullptr) || written == 0) return false;
    bytes.remove_prefix(written);
  }
  return FlushFileBuffers(file) != 0;
}

// The error of the step that failed; 0 when all went well.
DWORD WriteAndMove(const std::wstring& unfinished, const std::wstring& path, std::string_view bytes) {
  const HANDLE file = CreateFileW(unfinished.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  const DWORD error = WriteAll(file, bytes) ? 0 : GetLastError();
  CloseHandle(file);
  if (error) return error;
  constexpr DWORD how = MOVEFILE_WRITE_THROUGH | MOVEFILE_REPLACE_EXISTING;
  return MoveFileExW(unfinished.c_str(), path.c_str(), how) ? 0 : GetLastError();
}

}  // namespace

bool WriteWholeFile(const std::wstring& path, std::string_view bytes) {
  const std::wstring unfinished = path + L".unfinished";
  const DWORD error = WriteAndMove(unfinished, path, bytes);
  if (!error) return true;
  DeleteFileW(unfinished.c_str());
  Complain("the file " + ToUtf8(path) + " can't be written (Windows error " + std::to_string(error) + ")");
  return false;
}

}  // namespace bench
