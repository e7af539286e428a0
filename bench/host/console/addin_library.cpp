#include "bench/host/console/addin_library.h"

#include <windows.h>

#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kExitCannotLoad = 2;
constexpr int kExitRefused = 3;
constexpr std::size_t kErrorTextSize = 80;

template <typename Function>
Function EntryPoint(HMODULE library, const char* name) {
  const auto address = GetProcAddress(library, name);
  if (!address) throw AddinFailure(std::string("the add-in has no entry point ") + name, kExitCannotLoad);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

}  // namespace

AddinLibrary::AddinLibrary(const std::wstring& path) {
  // It stays loaded to the end of the process: threads of its own may be slow to go.
  const HMODULE library = LoadLibraryW(path.c_str());
  if (!library)
    throw AddinFailure("the add-in " + ToUtf8(path) + " can't be loaded (Windows error " +
                           std::to_string(GetLastError()) + ")",
                       kExitCannotLoad);
  initialize_ = EntryPoint<Initialize>(library, "user_initialize_plus");
  terminate_ = EntryPoint<Terminate>(library, "user_terminate_plus");
}

void AddinLibrary::Start() {
  char program[] = "creobench";
  char version[] = "bench";
  char build[] = "1";
  char* arguments[] = {program, nullptr};
  wchar_t error[kErrorTextSize] = {};
  const int status = initialize_(1, arguments, version, build, error);
  if (status != 0)
    throw AddinFailure("the add-in refused to start (status " + std::to_string(status) +
                           "): " + ToUtf8(Bounded(error, kErrorTextSize)),
                       kExitRefused);
}

void AddinLibrary::Stop() {
  terminate_();
}

}  // namespace bench
