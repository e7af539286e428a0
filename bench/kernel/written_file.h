// What the toolkit's writers need that know nothing but files, and how they sign.
#pragma once

#include <TCollection_HAsciiString.hxx>
#include <filesystem>
#include <string>

namespace bench::kernel {

inline constexpr char kWriterName[] = "creokernel";

inline Handle(TCollection_HAsciiString) Ascii(const std::string& text) {
  return new TCollection_HAsciiString(text.c_str());
}

// A folder that goes with everything in it. Throws Refusal when there is no room for one.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::filesystem::path File(const char* name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

std::string BytesOf(const std::filesystem::path& file);

}  // namespace bench::kernel
