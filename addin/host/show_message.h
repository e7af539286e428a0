// The add-in's one message dialog.
#pragma once

#include <string_view>

namespace vek {

// Shows `text` under the title "Information" with an OK button; blocks until the user has closed it. Main
// thread.
void ShowMessage(std::wstring_view text);

}  // namespace vek
