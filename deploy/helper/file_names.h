// The names of the files that updates bring, and of those that they put aside.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vek::helper {

// The helper's own file. Every update brings it, because it carries the version.
inline constexpr wchar_t kHelperFile[] = L"VekAI.Creo.AddinHelper.exe";

// In the folder of a staged update: there once the update is complete, and what it is on the way there.
inline constexpr wchar_t kMarkerFile[] = L"complete.txt";
inline constexpr wchar_t kMarkerInTheMaking[] = L"complete.part";

// Whether an update may bring a file of that name. It may not lead out of the folder, nor mean anything but
// itself to the system (a device, a wildcard, a dot or a blank at the end, which the system drops), nor be a
// name that the helper gives files itself.
bool IsUpdateFileName(std::wstring_view name);

// The name under which the file `name` is put aside for the `number`th time: "NAME.old-N".
std::wstring AsideName(std::wstring_view name, unsigned number);

// What such a name says; none for any other.
struct Aside {
  std::wstring name;
  unsigned number = 0;
};
std::optional<Aside> ReadAsideName(std::wstring_view file);

}  // namespace vek::helper
