// Wide text: trimming, case, searching and reading numbers, the same on every platform.
//
// Nothing here asks the C runtime or the locale: `isw…`, `tow…`, `wcstod` and `_wtoi` mean different things
// on different systems, and what a request means may not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vek {

// Space, tab, line feed and carriage return: the blanks of this system, in requests and in names.
bool IsBlank(wchar_t c);

// `text` without the blanks at its two ends.
std::wstring_view Trim(std::wstring_view text);

// Simple case mapping, one code unit to one code unit: ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic.
// Everything else is left as it is.
std::wstring ToLower(std::wstring_view text);
std::wstring ToUpper(std::wstring_view text);

// Whether two texts are the same once both are lowered.
bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b);

// The leading integer of `text` with the semantics of `_wtoi`: leading white space, one sign, decimal digits;
// what follows is ignored, a text without digits is 0, a value out of range is the nearest 32-bit integer.
std::int32_t ReadLeadingInteger(std::wstring_view text);

// The leading number of `text` with the semantics of `wcstod` in the C locale: leading white space, a sign,
// then a decimal or hexadecimal ("0x1.8p3") floating number, "inf", "infinity" or "nan", in any case.
// `consumed`, when given, receives how many characters belong to the number; 0 when there is none, and then
// the result is 0. A number out of range gives an infinity or a zero of its sign, as `wcstod` does.
double ReadLeadingNumber(std::wstring_view text, std::size_t* consumed = nullptr);

}  // namespace vek
