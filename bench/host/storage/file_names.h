// Names of model files: DIRECTORY\name.extension.version.
#pragma once

#include <ProMdl.h>

#include <optional>
#include <string>
#include <string_view>

namespace bench {

struct FileNameParts {
  std::wstring directory;  // without its last separator, but for a drive's root
  std::wstring name;
  std::wstring extension;  // as it was written
  int version = -1;        // -1: none
};

// Takes a path apart; slashes and backslashes both separate. Of several numbers at the end the last is the
// version and the others are dropped. Nothing for a path without a name, or with a version that no integer
// holds.
std::optional<FileNameParts> ParseFileName(std::wstring_view path);

// "prt", "asm" or "drw".
const wchar_t* ExtensionOf(ProMdlType type);
// By its extension, without regard to case.
std::optional<ProMdlType> TypeOfExtension(std::wstring_view extension);
// "part", "assembly" or "drawing".
const char* Word(ProMdlType type);

// Whether a model can bear that name: 1 to 31 characters, none that a file name or a path can't have, no dot.
// The status says what is wrong with it.
ProError CheckModelName(std::wstring_view name);

// `name` without the extension of `type`, if it carries it.
std::wstring_view WithoutExtension(std::wstring_view name, ProMdlType type);

}  // namespace bench
