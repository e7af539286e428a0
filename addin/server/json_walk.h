// The steps in which the JSON readers walk a text. Each takes where it stands and where the text ends, and
// gives where it comes to; the end stands for "not found", null for a bracket that stays open.
#pragma once

#include "addin/text/character_block.h"

namespace vek::json {

// Space, tab, line feed, carriage return. Nearly always the answer is no, after one comparison.
constexpr bool IsBlank(wchar_t c) {
  return c <= L' ' && (c == L' ' || c == L'\n' || c == L'\r' || c == L'\t');
}

constexpr bool OpensBracket(wchar_t c) {
  return c == L'{' || c == L'[';
}

constexpr wchar_t ClosingBracket(wchar_t open) {
  return open == L'{' ? L'}' : L']';
}

inline const wchar_t* SkipBlanks(const wchar_t* at, const wchar_t* end) {
  while (at < end && IsBlank(*at)) ++at;
  return at;
}

// Whether `c` is the next character that is no blank. `at` comes to that character.
inline bool Follows(const wchar_t*& at, const wchar_t* end, wchar_t c) {
  if (at < end && *at == c) return true;
  at = SkipBlanks(at, end);
  return at < end && *at == c;
}

// The first of `characters`. Names and bare values are short: there, four looks a turn are the fastest walk.
template <typename... Characters>
const wchar_t* FindFirst(const wchar_t* at, const wchar_t* end, Characters... characters) {
  const auto found = [=](const wchar_t* place) { return ((*place == characters) || ...); };
  for (; end - at >= 4; at += 4) {
    if (found(at)) return at;
    if (found(at + 1)) return at + 1;
    if (found(at + 2)) return at + 2;
    if (found(at + 3)) return at + 3;
  }
  while (at < end && !found(at)) ++at;
  return at;
}

// The quote that ends the string whose characters start at `at`. A backslash takes the next character with
// it.
inline const wchar_t* FindStringEnd(const wchar_t* at, const wchar_t* end) {
  for (;;) {
    at = FindFirst(at, end, L'"', L'\\');
    if (at == end || *at == L'"') return at;
    at += end - at > 1 ? 2 : 1;
  }
}

// The bracket that closes the one at `at`, or null. Only the given kind is counted, and none inside strings.
const wchar_t* FindMatch(const wchar_t* at, const wchar_t* end, wchar_t open, wchar_t close);

// Behind the value at `at`: a string, an object or array, or a bare value, which a comma or `bare_end` ends.
inline const wchar_t* SkipValue(const wchar_t* at, const wchar_t* end, wchar_t bare_end) {
  if (*at == L'"') {
    const wchar_t* const quote = FindStringEnd(at + 1, end);
    return quote == end ? end : quote + 1;
  }
  if (OpensBracket(*at)) {
    const wchar_t* const match = FindMatch(at, end, *at, ClosingBracket(*at));
    return match ? match + 1 : nullptr;
  }
  return FindFirst(at, end, L',', bare_end);
}

}  // namespace vek::json
