#include "addin/shell/helper_process.h"

#include "addin/platform/files.h"
#include "addin/platform/processes.h"

namespace vek {
namespace {

constexpr const wchar_t* kHelperFile = L"\\VekAI.Creo.AddinHelper.exe";

}  // namespace

std::wstring GetModuleDirectory() {
  return ModuleDirectory(reinterpret_cast<const void*>(&GetModuleDirectory));
}

bool RunHelper(const wchar_t* argument, bool wait) {
  if (!argument || argument[0] == L'\0') return false;
  const std::wstring directory = GetModuleDirectory();
  if (directory.empty()) return false;
  const ProgramCall helper{directory + kHelperFile, argument, directory};
  if (!PathExists(helper.program)) return false;
  return wait ? RunAndWait(helper) : RunDetached(helper);
}

}  // namespace vek
