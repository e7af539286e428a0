// What is done with the names and the code of macros before anything touches the disk or the host. All is
// pure.
#pragma once

#include <string>
#include <string_view>

namespace vek::macros {

// The file name, without extension, that a client's name stands for: its last part, without what follows its
// last dot and without what a file name can't hold. False with the reason in `error` when nothing is left.
bool SanitizeMacroName(std::wstring_view name, std::wstring& safe, std::wstring& error);

// The body that the host's macro engine takes: one line, and of a mapkey line from a configuration file only
// what stands behind its key and label. False with the reason in `error`.
bool NormalizeMacroCode(std::wstring_view code, std::wstring& normal, std::wstring& error);

// Whether `type` asks for macros of the one kind that there is.
bool IsMacroType(std::wstring_view type);

// A file's name up to its last dot; a dot at the very start is no end.
std::wstring_view WithoutExtension(std::wstring_view file);

// Whether a full path lies below a directory's full path, case aside.
bool LiesBelow(std::wstring_view full_path, std::wstring_view full_directory);

}  // namespace vek::macros
