// Takes an installed companion application out of the way for as long as it lives, and puts it back.
#pragma once

#include <filesystem>

namespace vek::support {

class CompanionAside {
 public:
  CompanionAside() : moved_(std::filesystem::exists(kFolder)) {
    if (moved_) std::filesystem::rename(kFolder, kAside);
  }
  ~CompanionAside() {
    std::error_code ignored;
    if (moved_) std::filesystem::rename(kAside, kFolder, ignored);
  }
  CompanionAside(const CompanionAside&) = delete;
  CompanionAside& operator=(const CompanionAside&) = delete;

 private:
  static constexpr const wchar_t* kFolder = L"C:\\Program Files\\Vek";
  static constexpr const wchar_t* kAside = L"C:\\Program Files\\Vek.aside";
  bool moved_;
};

}  // namespace vek::support
