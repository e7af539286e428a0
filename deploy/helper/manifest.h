// What an update consists of, as its manifest tells: a text in UTF-8 with one line for the version and one
// for each file, blank lines aside.
//
//   version 1.2.3
//   file VekCreoAddin.dll 1843200 9f86d081884c7d659a2feaa0c55ad015a3bf4f1b2b0b822cd15d6c15b0f00a08
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "deploy/helper/version.h"

namespace vek::helper {

struct ManifestFile {
  std::wstring name;
  std::uint64_t size = 0;  // bytes
  std::string sha256;      // 64 hexadecimal digits, lower case
};

struct Manifest {
  Version version;
  std::vector<ManifestFile> files;
};

// Reads a manifest. False, with what is wrong in `problem`, for anything but one version, and files of
// different names that an update may bring, the helper itself among them.
bool ReadManifest(std::string_view bytes, Manifest& manifest, std::wstring& problem);

}  // namespace vek::helper
