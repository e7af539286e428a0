// The ANSI code page of the thread, in which the shell logs and in which a request that is no UTF-8 is read.
#pragma once

#include <string>
#include <string_view>

namespace vek {

std::wstring DecodeAnsi(std::string_view bytes);
std::string EncodeAnsi(std::wstring_view text);

}  // namespace vek
