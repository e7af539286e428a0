// What the name under which a file came tells of it: pure.
#pragma once

#include <string>
#include <string_view>

namespace vek::exchange {

// What is left of its last "." in `filename`; all of it when there is nothing.
std::wstring ImportBaseName(std::wstring_view filename);

// `filename` from its last "." on, ".step" when it has none. False when that holds a path's separator.
bool ImportExtension(std::wstring_view filename, std::wstring& extension);

}  // namespace vek::exchange
