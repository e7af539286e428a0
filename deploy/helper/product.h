// What is known of the product that the helper belongs to.
#pragma once

#include <string>

#include "deploy/helper/version.h"

namespace vek::helper {

inline constexpr wchar_t kProductName[] = L"VekCreoAddin";

// The version that this program was built as.
Version InstalledVersion();

// The licence, in lines as an edit control has them; from the program's resources.
std::wstring LicenceText();

}  // namespace vek::helper
