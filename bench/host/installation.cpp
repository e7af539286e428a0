#include "bench/host/installation.h"

#include <windows.h>

namespace bench {

std::wstring InstallationDirectory() {
  std::wstring value(GetEnvironmentVariableW(L"PRO_DIRECTORY", nullptr, 0), L'\0');
  // Without the terminator, which the first length counts.
  value.resize(GetEnvironmentVariableW(L"PRO_DIRECTORY", value.data(), static_cast<DWORD>(value.size())));
  return value;
}

std::wstring TextDirectory() {
  const std::wstring installation = InstallationDirectory();
  return installation.empty() ? installation : installation + L"\\text";
}

}  // namespace bench
