// The product's page, a file that is installed beside the add-in.
#pragma once

#include <string>
#include <string_view>

namespace vek {

// The file:// address of the page in `directory`, which is a drive path or a UNC path.
std::wstring WelcomePageUrl(std::wstring_view directory);

}  // namespace vek
