// The file of the model that the user has selected. Main thread.
#pragma once

#include <string>
#include <string_view>

namespace vek {

// What stands in the place of a path.
inline constexpr const wchar_t* kNothingSelected = L"-1";
inline constexpr const wchar_t* kWrongModelType = L"-2";

// The file of that name with the lowest version from 1 to 100 that is on the disk; with the version 1 when
// none is. `extension` with its dot.
std::wstring ResolveModelFile(std::wstring_view directory, std::wstring_view name,
                              std::wstring_view extension);

// The file of the model whose face, or of the component that, is selected; or one of the two words above.
std::wstring GetSelectedModelPath();

// The same; with nothing selected the user is asked for a face, which must be of a part.
std::wstring GetSelectedPartPath();

}  // namespace vek
