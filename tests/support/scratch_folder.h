// A folder of a test's own in the temporary directory, gone with the test.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace vek::support {

class ScratchFolder {
 public:
  ScratchFolder() {
    static int count = 0;
    const auto name =
        L"vek_test_" + std::to_wstring(::GetCurrentProcessId()) + L"_" + std::to_wstring(++count);
    path_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // The path of `name` in the folder.
  std::wstring operator/(const std::wstring& name) const { return (path_ / name).wstring(); }
  std::wstring path() const { return path_.wstring(); }

 private:
  std::filesystem::path path_;
};

}  // namespace vek::support
