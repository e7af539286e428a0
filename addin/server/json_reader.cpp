#include "addin/server/json_reader.h"

#include <cstddef>
#include <utility>

#include "addin/server/json_walk.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

using namespace std::string_view_literals;  // their length is known: that of others is counted in each call
using json::FindFirst;
using json::FindStringEnd;
using json::Follows;
using json::SkipBlanks;
using json::SkipValue;

constexpr std::int32_t kNotFound = -1;

const wchar_t* EndOf(std::wstring_view text) {
  return text.data() + text.size();
}

// Whether `text` has a character at `index`, and which.
bool HoldsAt(std::wstring_view text, std::int32_t index, wchar_t c) {
  return index >= 0 && static_cast<std::size_t>(index) < text.size() &&
         text[static_cast<std::size_t>(index)] == c;
}

bool OpensWith(std::wstring_view text, wchar_t c) {
  return !text.empty() && text.front() == c;
}

// Names are short and mostly differ in length or at their start, so that a library call costs more than it
// saves.
bool Equal(const wchar_t* begin, const wchar_t* end, std::wstring_view text) {
  if (static_cast<std::size_t>(end - begin) != text.size()) return false;
  for (const wchar_t c : text)
    if (*begin++ != c) return false;
  return true;
}

// The value at `at` as it stands, a bare one up to a comma or a closing bracket of either kind.
std::wstring_view RawValue(const wchar_t* at, const wchar_t* end) {
  if (*at != L'"' && !json::OpensBracket(*at)) return Trim({at, FindFirst(at, end, L',', L'}', L']')});
  const wchar_t* const behind = SkipValue(at, end, L'}');
  return behind ? std::wstring_view(at, behind) : std::wstring_view();
}

// Where the value of `key` starts; null for an empty object or key, and when it is missing.
const wchar_t* FindValue(std::wstring_view object, std::wstring_view key) {
  std::int32_t index = kNotFound;
  return !key.empty() && JsonFindKey(object, key, index) ? object.data() + index : nullptr;
}

// The bare word at `at`, for the readers that take it as a token.
std::wstring_view Token(const wchar_t* at, const wchar_t* end) {
  return {at, FindFirst(at, end, L' ', L'\t', L'\n', L'\r', L',', L'}', L']')};
}

// The array under `key`; empty when there is none.
std::wstring_view FindArray(std::wstring_view object, std::wstring_view key) {
  const wchar_t* const at = FindValue(object, key);
  return at && *at == L'[' ? RawValue(at, EndOf(object)) : std::wstring_view();
}

// Calls `take` with each element text of the array, in place.
template <typename Take>
void ForEachElement(std::wstring_view array, Take take) {
  if (!OpensWith(array, L'[')) return;
  const wchar_t* const end = EndOf(array);
  const wchar_t* at = array.data() + 1;
  while ((at = SkipBlanks(at, end)) < end && *at != L']') {
    const wchar_t* const behind = SkipValue(at, end, L']');
    if (!behind) return;
    if (const std::wstring_view element = Trim({at, behind}); !element.empty()) take(element);
    at = SkipBlanks(behind, end);
    if (at < end && *at == L',') ++at;
  }
}

wchar_t Unescaped(wchar_t c) {
  switch (c) {
    case L'b':
      return L'\b';
    case L'f':
      return L'\f';
    case L'n':
      return L'\n';
    case L'r':
      return L'\r';
    case L't':
      return L'\t';
    default:
      return c;
  }
}

// One walk over an operations object.
class OperationsScanner {
 public:
  OperationsScanner(std::wstring_view text, OperationList& operations, std::wstring& error)
      : text_(text), at_(text.data()), end_(EndOf(text)), operations_(operations), error_(error) {}

  bool Scan() {
    if (!OpensWith(text_, L'{')) return Fail(L"Invalid operations object.");
    ++at_;
    while (!Finished()) {
      OperationCall call;
      if (!ReadName(call.name) || !ReadArguments(call.arguments)) return false;
      operations_.push_back(std::move(call));
      at_ = SkipBlanks(at_, end_);
      if (at_ < end_ && *at_ == L',') ++at_;
    }
    return !operations_.empty();
  }

 private:
  bool Finished() {
    at_ = SkipBlanks(at_, end_);
    return at_ == end_ || *at_ == L'}';
  }

  bool ReadName(std::wstring& name) {
    if (*at_ != L'"') return Fail(L"Malformed operations object.");
    const wchar_t* const quote = FindStringEnd(at_ + 1, end_);
    if (quote == end_) return Fail(L"Unterminated operation name.");
    name.assign(at_ + 1, quote);
    at_ = SkipBlanks(quote + 1, end_);
    if (at_ == end_ || *at_ != L':') return Fail(L"Malformed operations object.");
    ++at_;
    return true;
  }

  bool ReadArguments(std::wstring& arguments) {
    at_ = SkipBlanks(at_, end_);
    if (at_ == end_) return Fail(L"Missing operation arguments.");
    const wchar_t* behind = nullptr;
    if (*at_ == L'{') {
      const wchar_t* const match = json::FindMatch(at_, end_, L'{', L'}');
      if (!match) return Fail(L"Unterminated operation arguments.");
      behind = match + 1;
    } else {
      behind = FindFirst(at_, end_, L',', L'}');
    }
    arguments = Trim({at_, behind});
    at_ = behind;
    return true;
  }

  bool Fail(const wchar_t* error) {
    error_ = error;
    return false;
  }

  const std::wstring_view text_;
  const wchar_t* at_;
  const wchar_t* const end_;
  OperationList& operations_;
  std::wstring& error_;
};

}  // namespace

std::int32_t JsonSkipBlanks(std::wstring_view text, std::int32_t index) {
  return static_cast<std::int32_t>(SkipBlanks(text.data() + index, EndOf(text)) - text.data());
}

std::int32_t JsonMatchBracket(std::wstring_view text, std::int32_t index, wchar_t open, wchar_t close) {
  if (!HoldsAt(text, index, open)) return kNotFound;
  const wchar_t* const match = json::FindMatch(text.data() + index, EndOf(text), open, close);
  return match ? static_cast<std::int32_t>(match - text.data()) : kNotFound;
}

std::wstring_view JsonFindAnywhere(std::wstring_view text, std::wstring_view key) {
  std::wstring quoted;
  quoted.reserve(key.size() + 2);
  quoted.append(1, L'"').append(key).append(1, L'"');
  const std::size_t found = text.find(quoted);
  if (found == std::wstring_view::npos) return {};

  const wchar_t* const end = EndOf(text);
  const wchar_t* at = SkipBlanks(text.data() + found + quoted.size(), end);
  if (at == end || *at != L':') return {};
  at = SkipBlanks(at + 1, end);
  if (at == end) return {};
  // A string here is cut like a bare word: only brackets make a value that can hold commas.
  if (!json::OpensBracket(*at)) return Trim({at, FindFirst(at, end, L',', L'}', L']')});
  return RawValue(at, end);
}

bool ParseOperationsObject(std::wstring_view text, OperationList& operations, std::wstring& error) {
  operations.clear();
  error.clear();
  return OperationsScanner(text, operations, error).Scan();
}

bool JsonFindKey(std::wstring_view object, std::wstring_view key, std::int32_t& value_index) {
  value_index = kNotFound;
  if (!OpensWith(object, L'{')) return false;
  const wchar_t* const end = EndOf(object);
  const wchar_t* at = object.data() + 1;
  while (Follows(at, end, L'"')) {
    const wchar_t* const name = at + 1;
    const wchar_t* const quote = FindStringEnd(name, end);
    if (quote == end) return false;

    at = quote + 1;
    if (!Follows(at, end, L':')) return false;
    at = SkipBlanks(at + 1, end);
    if (at == end) return false;
    if (Equal(name, quote, key)) {
      value_index = static_cast<std::int32_t>(at - object.data());
      return true;
    }

    at = SkipValue(at, end, L'}');
    if (!at) return false;
    if (Follows(at, end, L',')) ++at;
  }
  return false;
}

void JsonSplitArray(std::wstring_view array, std::vector<std::wstring>& elements) {
  elements.clear();
  ForEachElement(array, [&elements](std::wstring_view element) { elements.emplace_back(element); });
}

std::wstring JsonReadString(std::wstring_view text, std::int32_t index) {
  if (!HoldsAt(text, index, L'"')) return {};
  const wchar_t* const begin = text.data() + index + 1;
  const wchar_t* const plain_end = FindFirst(begin, EndOf(text), L'"', L'\\');
  if (plain_end == EndOf(text) || *plain_end == L'"') return std::wstring(begin, plain_end);

  const std::wstring_view raw(begin, FindStringEnd(plain_end, EndOf(text)));
  std::wstring value;
  value.reserve(raw.size());
  for (std::size_t i = 0; i < raw.size(); ++i) {
    const bool escapes = raw[i] == L'\\' && i + 1 < raw.size();
    value.push_back(escapes ? Unescaped(raw[++i]) : raw[i]);
  }
  return value;
}

std::wstring JsonReadStringArgument(std::wstring_view object, std::wstring_view key) {
  std::int32_t index = kNotFound;
  return JsonFindKey(object, key, index) ? JsonReadString(object, index) : std::wstring();
}

bool JsonReadNumber(std::wstring_view object, std::wstring_view key, double& number) {
  const wchar_t* const at = FindValue(object, key);
  if (!at) return false;
  const wchar_t* const end = EndOf(object);
  std::wstring quoted;
  if (*at == L'"') quoted = JsonReadString({at, end}, 0);
  const std::wstring_view token = quoted.empty() ? Token(at, end) : std::wstring_view(quoted);
  std::size_t consumed = 0;
  const double value = ReadLeadingNumber(Trim(token), &consumed);
  if (consumed == 0) return false;
  number = value;
  return true;
}

bool JsonReadBool(std::wstring_view object, std::wstring_view key, bool default_value) {
  const wchar_t* const at = FindValue(object, key);
  if (!at) return default_value;
  const std::wstring_view token = Token(at, EndOf(object));
  if (token == L"1"sv || EqualsIgnoreCase(token, L"true"sv)) return true;
  if (token == L"0"sv || EqualsIgnoreCase(token, L"false"sv)) return false;
  return default_value;
}

std::wstring JsonReadRaw(std::wstring_view object, std::wstring_view key) {
  const wchar_t* const at = FindValue(object, key);
  return at ? std::wstring(RawValue(at, EndOf(object))) : std::wstring();
}

bool JsonReadStringArray(std::wstring_view object, std::wstring_view key, std::vector<std::wstring>& list) {
  list.clear();
  const std::wstring_view array = FindArray(object, key);
  if (array.empty()) return false;
  ForEachElement(array, [&list](std::wstring_view element) {
    list.push_back(OpensWith(element, L'"') ? JsonReadString(element, 0) : std::wstring(element));
  });
  return true;
}

bool JsonReadNumberArray(std::wstring_view object, std::wstring_view key, std::vector<double>& numbers) {
  numbers.clear();
  const std::wstring_view array = FindArray(object, key);
  if (array.empty()) return false;
  ForEachElement(array, [&numbers](std::wstring_view element) {
    const std::wstring unquoted = JsonReadString(element, 0);
    std::size_t consumed = 0;
    const double number =
        ReadLeadingNumber(Trim(OpensWith(element, L'"') ? std::wstring_view(unquoted) : element), &consumed);
    if (consumed != 0) numbers.push_back(number);
  });
  return true;
}

}  // namespace vek
