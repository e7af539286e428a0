// Files in the directory for temporary ones.
#pragma once

#include <string>

namespace vek {

// The directory, with a separator behind it. False when the system names none.
bool TemporaryDirectory(std::wstring& directory);

// A path in that directory that the system has just made up, without its extension; nothing stands there.
// False when it couldn't.
bool NewTemporaryPath(std::wstring& path_without_extension);

// The file at a path, if there will be one: removed in the end.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::wstring path);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::wstring& path() const { return path_; }

 private:
  std::wstring path_;
};

}  // namespace vek
