// The folder that the helper, the add-in and their updates share, and what stands where in it.
#pragma once

#include <string>
#include <utility>

#include "deploy/helper/disk.h"

namespace vek::helper {

class Installation {
 public:
  // Without a separator at its end.
  explicit Installation(std::wstring folder) : folder_(std::move(folder)) {}

  const std::wstring& folder() const { return folder_; }
  std::wstring File(const std::wstring& name) const { return FileIn(folder_, name); }
  std::wstring Log() const { return File(L"helper.log"); }
  std::wstring Lock() const { return File(L"helper.lock"); }
  // Written by the administrator: its first line names the place where updates are offered.
  std::wstring Source() const { return File(L"update-source.txt"); }
  std::wstring StagingFolder() const { return File(L"pending"); }
  std::wstring Staged(const std::wstring& name) const { return FileIn(StagingFolder(), name); }

 private:
  std::wstring folder_;
};

}  // namespace vek::helper
