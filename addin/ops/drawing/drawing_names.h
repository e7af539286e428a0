// Names that the family gives: of new drawings, of cross-sections, and of the template that a path means.
// Pure.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vek::drawing {

using NameTaken = std::function<bool(const std::wstring& name)>;

// The first free name of a new drawing, made of the clock. After 25 tries the last one is given, taken or
// not.
std::wstring FreeDrawingName(unsigned tick, const NameTaken& taken);

// The first free of "A" to "Z", "S1" to "S174"; then one made of the clock.
std::wstring FreeSectionName(unsigned tick, const NameTaken& taken);

// The name in a path: what stands behind its last separator of either kind, and before the last dot of that
// unless it begins with it.
std::wstring TemplateNameByHand(std::wstring_view path);

}  // namespace vek::drawing
