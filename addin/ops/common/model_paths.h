// Paths and file names of models.
#pragma once

#include <string>
#include <string_view>

namespace vek {

// `directory` without its trailing separators, a backslash, `file`; either alone when the other is empty.
std::wstring JoinPath(std::wstring_view directory, std::wstring_view file);

// Takes a path apart: with the host's help, or by hand when the host can't. A version behind the extension is
// dropped. False for a path of 260 characters or more and for one without a name.
bool ParseModelFileName(std::wstring_view path, std::wstring& directory, std::wstring& name,
                        std::wstring& extension);

// The second half of the above, without the host: pure.
bool ParseModelFileNameByHand(std::wstring_view path, std::wstring& directory, std::wstring& name,
                              std::wstring& extension);

// `name_or_path` without its directory, and without every version and model extension at its end. Pure.
std::wstring BaseModelName(std::wstring_view name_or_path);

}  // namespace vek
