#include "addin/platform/processes.h"

#include <windows.h>

#include <shellapi.h>
#include <tlhelp32.h>

#include "addin/platform/owned_handle.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr DWORD kDetachedWithoutWindow = CREATE_NO_WINDOW | DETACHED_PROCESS;
static_assert(kDetachedWithoutWindow == 0x08000008);

bool Start(const ProgramCall& call, DWORD creation_flags, PROCESS_INFORMATION& process) {
  // The system writes into the command line that it is given.
  std::wstring command_line = Format(L"\"%s\" %s", call.program, call.arguments);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  return ::CreateProcessW(call.program.c_str(), command_line.data(), nullptr, nullptr, FALSE, creation_flags,
                          nullptr, call.directory.c_str(), &startup, &process) != 0;
}

bool Open(const std::wstring& path, const wchar_t* parameters, int show) {
  SHELLEXECUTEINFOW execution{};
  execution.cbSize = sizeof execution;
  // A dialog of the system would block the host; what the user is told is the caller's business.
  execution.fMask = SEE_MASK_FLAG_NO_UI;
  execution.lpVerb = L"open";
  execution.lpFile = path.c_str();
  execution.lpParameters = parameters;
  execution.nShow = show;
  return ::ShellExecuteExW(&execution) != 0;
}

std::wstring_view UpToFirstDot(std::wstring_view name) {
  return name.substr(0, name.find(L'.'));
}

}  // namespace

std::wstring ModuleDirectory(const void* address) {
  HMODULE module = nullptr;
  if (!::GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          static_cast<LPCWSTR>(address), &module)) {
    return {};
  }
  wchar_t path[MAX_PATH];
  const DWORD length = ::GetModuleFileNameW(module, path, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return {};
  const std::wstring whole(path, length);
  return whole.substr(0, whole.rfind(L'\\'));
}

bool RunAndWait(const ProgramCall& call) {
  PROCESS_INFORMATION started{};
  if (!Start(call, 0, started)) return false;
  const OwnedHandle process(started.hProcess);
  const OwnedHandle thread(started.hThread);
  ::WaitForSingleObject(process.get(), INFINITE);
  return true;
}

bool RunDetached(const ProgramCall& call) {
  PROCESS_INFORMATION started{};
  if (!Start(call, kDetachedWithoutWindow, started)) return false;
  const OwnedHandle process(started.hProcess);
  const OwnedHandle thread(started.hThread);
  return true;
}

bool IsProgramRunning(std::wstring_view name) {
  const OwnedHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return false;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = ::Process32FirstW(snapshot.get(), &entry); more;
       more = ::Process32NextW(snapshot.get(), &entry)) {
    if (EqualsIgnoreCase(UpToFirstDot(entry.szExeFile), name)) return true;
  }
  return false;
}

bool OpenProgram(const std::wstring& path) {
  return Open(path, nullptr, SW_SHOWNORMAL);
}

bool OpenProgram(const std::wstring& path, const std::wstring& parameters) {
  return Open(path, parameters.c_str(), SW_SHOW);
}

}  // namespace vek
