// What kind of model file a path names.
#pragma once

#include <string_view>

namespace vek {

enum class FileKind { kNative, kStep, kParasolid };

// The kind by its marks, which count wherever in the path they stand: a folder's too.
FileKind FileKindOf(std::wstring_view path);

}  // namespace vek
