// Reading JSON by walking raw text.
//
// There is no tree and no index: a request is one UTF-16 text, and each reader walks it from its start
// whenever a value is wanted. What these readers accept, and how they degrade on malformed text, is the
// contract of the wire. None reports a reason: a failure is an empty text, a false or the default, and the
// caller words its own message. All are pure. A blank is a space, tab, line feed or carriage return.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "addin/server/operation_result.h"

namespace vek {

// ---- scanning
// ----------------------------------------------------------------------------------------------

// The first index at or behind `index` that holds no blank, or the length.
std::int32_t JsonSkipBlanks(std::wstring_view text, std::int32_t index);

// The index of the bracket that closes the one at `index`, or -1. Only the given kind is counted; strings are
// skipped whole.
std::int32_t JsonMatchBracket(std::wstring_view text, std::int32_t index, wchar_t open, wchar_t close);

// The raw value of the first occurrence of `"key"` anywhere in `text`, nested objects and strings included: a
// part of `text`, empty when there is none.
std::wstring_view JsonFindAnywhere(std::wstring_view text, std::wstring_view key);

// Cuts an `operations` object into its calls, in order. False with a text in `error` when it is malformed,
// false with an empty `error` when it holds nothing.
bool ParseOperationsObject(std::wstring_view text, OperationList& operations, std::wstring& error);

// Finds `key` on the top level of an object text; the first hit wins. `value_index` is where its value
// starts.
bool JsonFindKey(std::wstring_view object, std::wstring_view key, std::int32_t& value_index);

// The element texts of an array text, trimmed, quotes and brackets kept.
void JsonSplitArray(std::wstring_view array, std::vector<std::wstring>& elements);

// ---- reading values
// ----------------------------------------------------------------------------------------

// The unescaped string that starts at `index`; empty when there is none. `\u` escapes are not decoded.
std::wstring JsonReadString(std::wstring_view text, std::int32_t index);

// The string under `key`; empty when it is missing or no string, which is what operations take for "not
// given".
std::wstring JsonReadStringArgument(std::wstring_view object, std::wstring_view key);

// The number under `key`, quoted or bare. False leaves `number` untouched, so its prior value is the default.
bool JsonReadNumber(std::wstring_view object, std::wstring_view key, double& number);

// true or 1, false or 0, bare; anything else gives the default.
bool JsonReadBool(std::wstring_view object, std::wstring_view key, bool default_value);

// The raw value text under `key`, quotes and brackets kept; empty when it is missing.
std::wstring JsonReadRaw(std::wstring_view object, std::wstring_view key);

// The elements of the array under `key`; strings unescaped, all else as its text. False when it is no array.
bool JsonReadStringArray(std::wstring_view object, std::wstring_view key, std::vector<std::wstring>& list);

// The numbers of the array under `key`; elements that are none are left out. False when it is no array.
bool JsonReadNumberArray(std::wstring_view object, std::wstring_view key, std::vector<double>& numbers);

}  // namespace vek
