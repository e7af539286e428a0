// The forms of occurrence names: pure.
#pragma once

#include <string>
#include <string_view>

namespace vek::assembly {

// `name` trimmed and without a model extension or version number at its end; two of them at most, so that a
// version behind an extension goes with it. The case stays.
std::wstring StripModelExtension(std::wstring_view name);

// The form in which names are compared: without directory and extension, upper case, blanks, colons and
// hyphens as underscores.
std::wstring NormalizeOccurrenceName(std::wstring_view name);

// A directory in the form in which directories are compared.
std::wstring CanonicalDirectory(std::wstring_view directory);

}  // namespace vek::assembly
