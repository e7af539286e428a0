#include "addin/text/wide_text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace vek {
namespace {

using namespace std::string_view_literals;  // their length is known: that of others is counted in each call

// What the number readers skip in front of a number, as the C locale does: more than this system's blanks.
constexpr bool IsWhiteSpace(wchar_t c) {
  return c == L' ' || (c >= L'\t' && c <= L'\r');
}

// Objects, these two: templates call a function that they are handed, and inline an object.
constexpr auto IsDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };

constexpr wchar_t LowerAscii(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
}

constexpr auto IsHexDigit = [](wchar_t c) {
  return IsDigit(c) || (LowerAscii(c) >= L'a' && LowerAscii(c) <= L'f');
};

// Letters whose case differs by a fixed distance: capitals from `first` to `last`.
struct CapitalRange {
  unsigned first;
  unsigned last;
  unsigned distance;
};

constexpr CapitalRange kCapitalRanges[] = {
    {'A', 'Z', 32},     {0xC0, 0xD6, 32},   {0xD8, 0xDE, 32},   {0x386, 0x386, 38},
    {0x388, 0x38A, 37}, {0x38C, 0x38C, 64}, {0x38E, 0x38F, 63}, {0x391, 0x3A1, 32},
    {0x3A3, 0x3AB, 32}, {0x400, 0x40F, 80}, {0x410, 0x42F, 32},
};

// Letters that stand in pairs, each capital before its small letter, from `first` on.
struct PairRange {
  unsigned first;
  unsigned last;
};

constexpr PairRange kPairRanges[] = {
    {0x100, 0x12F}, {0x132, 0x137}, {0x139, 0x148}, {0x14A, 0x177}, {0x179, 0x17E},
    {0x460, 0x481}, {0x48A, 0x4BF}, {0x4C1, 0x4CE}, {0x4D0, 0x52F},
};

constexpr unsigned kCapitalYDiaeresis = 0x178;
constexpr unsigned kSmallYDiaeresis = 0xFF;
constexpr unsigned kCapitalPalochka = 0x4C0;
constexpr unsigned kSmallPalochka = 0x4CF;

wchar_t LowerOf(wchar_t c) {
  const auto code = static_cast<unsigned>(c);
  if (code < 0x80) return LowerAscii(c);
  if (code == kCapitalYDiaeresis) return kSmallYDiaeresis;
  if (code == kCapitalPalochka) return kSmallPalochka;
  for (const auto& range : kCapitalRanges)
    if (code >= range.first && code <= range.last) return static_cast<wchar_t>(code + range.distance);
  for (const auto& range : kPairRanges)
    if (code >= range.first && code <= range.last)
      return static_cast<wchar_t>((code - range.first) % 2 == 0 ? code + 1 : code);
  return c;
}

wchar_t UpperOf(wchar_t c) {
  const auto code = static_cast<unsigned>(c);
  if (code == kSmallYDiaeresis) return kCapitalYDiaeresis;
  if (code == kSmallPalochka) return kCapitalPalochka;
  for (const auto& range : kCapitalRanges)
    if (code >= range.first + range.distance && code <= range.last + range.distance)
      return static_cast<wchar_t>(code - range.distance);
  for (const auto& range : kPairRanges)
    if (code >= range.first && code <= range.last)
      return static_cast<wchar_t>((code - range.first) % 2 == 1 ? code - 1 : code);
  return c;
}

template <typename Mapping>
std::wstring Mapped(std::wstring_view text, Mapping mapping) {
  std::wstring mapped(text);
  for (wchar_t& c : mapped) c = mapping(c);
  return mapped;
}

// A walk over the characters of a number.
class NumberWalk {
 public:
  explicit NumberWalk(std::wstring_view text) : text_(text) {}

  std::size_t position() const { return position_; }
  void MoveTo(std::size_t position) { position_ = position; }
  wchar_t Current() const { return position_ < text_.size() ? text_[position_] : L'\0'; }

  void SkipWhiteSpace() {
    while (position_ < text_.size() && IsWhiteSpace(text_[position_])) ++position_;
  }

  // Steps over one sign; true when it was a minus.
  bool SkipSign() {
    const bool negative = Current() == L'-';
    if (negative || Current() == L'+') ++position_;
    return negative;
  }

  // Steps over `word` (lower case) in any case; otherwise stays.
  bool Skip(std::wstring_view word) {
    if (text_.size() - position_ < word.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i)
      if (LowerAscii(text_[position_ + i]) != word[i]) return false;
    position_ += word.size();
    return true;
  }

  // Steps over decimal digits and gives their value, `limit` at most; false when there is none.
  bool ReadDigits(std::int64_t limit, std::int64_t& value) {
    value = 0;
    return SkipWhile([limit, &value](wchar_t c) {
             if (!IsDigit(c)) return false;
             value = std::min(limit, value * 10 + (c - L'0'));
             return true;
           }) > 0;
  }

  template <typename Predicate>
  std::size_t SkipWhile(Predicate belongs) {
    const std::size_t start = position_;
    while (position_ < text_.size() && belongs(text_[position_])) ++position_;
    return position_ - start;
  }

 private:
  std::wstring_view text_;
  std::size_t position_ = 0;
};

// The characters of one number behind its sign, as std::from_chars takes them.
struct NumberToken {
  std::string characters;
  // The exponent of the leading digit that is not 0, in digits; tells an overflow from an underflow.
  std::int64_t magnitude = 0;
};

void AppendNarrow(std::string& out, std::wstring_view text) {
  for (const wchar_t c : text) out.push_back(static_cast<char>(c));
}

// Reads an exponent, if a whole one stands there; a lone letter or sign is not part of the number.
std::int64_t ReadExponent(NumberWalk& walk, wchar_t letter, std::string& characters) {
  // Beyond it a request's longest row of zeros can't bring the number back into a double's range.
  constexpr std::int64_t kLimit = 1'000'000'000;
  const std::size_t before = walk.position();
  if (LowerAscii(walk.Current()) != letter) return 0;
  walk.MoveTo(before + 1);
  const bool negative = walk.SkipSign();
  std::int64_t exponent = 0;
  if (!walk.ReadDigits(kLimit, exponent)) {
    walk.MoveTo(before);
    return 0;
  }
  if (negative) exponent = -exponent;
  characters.push_back(static_cast<char>(letter));
  characters.append(std::to_string(exponent));
  return exponent;
}

// Reads digits with at most one point among them; false, and nowhere moved, when there is no digit.
template <typename IsADigit>
bool ReadSignificand(std::wstring_view text, NumberWalk& walk, IsADigit is_digit, NumberToken& token) {
  const std::size_t start = walk.position();
  std::size_t digits = walk.SkipWhile(is_digit);
  const auto whole = static_cast<std::int64_t>(digits);
  if (walk.Current() == L'.') {
    walk.MoveTo(walk.position() + 1);
    digits += walk.SkipWhile(is_digit);
  }
  if (digits == 0) {
    walk.MoveTo(start);
    return false;
  }
  const std::wstring_view significand = text.substr(start, walk.position() - start);
  AppendNarrow(token.characters, significand);
  const auto leading = std::ranges::find_if(significand, [](wchar_t c) { return c != L'0' && c != L'.'; });
  const std::int64_t first = leading - significand.begin();
  token.magnitude = first < whole ? whole - first : whole - first + 1;
  return true;
}

double ConvertToken(const NumberToken& token, std::chars_format notation) {
  const char* const begin = token.characters.data();
  double value = 0;
  const auto read = std::from_chars(begin, begin + token.characters.size(), value, notation);
  if (read.ec == std::errc::result_out_of_range)
    return token.magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
  return value;
}

// The number behind the sign; moves behind it, or stays when there is none.
double ReadMagnitude(std::wstring_view text, NumberWalk& walk) {
  if (walk.Skip(L"inf"sv)) {
    walk.Skip(L"inity"sv);
    return std::numeric_limits<double>::infinity();
  }
  if (walk.Skip(L"nan"sv)) return std::numeric_limits<double>::quiet_NaN();

  constexpr std::int64_t kBitsOfHexDigit = 4;
  const std::size_t start = walk.position();
  NumberToken token;
  if (walk.Skip(L"0x"sv) && ReadSignificand(text, walk, IsHexDigit, token)) {
    token.magnitude = token.magnitude * kBitsOfHexDigit + ReadExponent(walk, L'p', token.characters);
    return ConvertToken(token, std::chars_format::hex);
  }
  walk.MoveTo(start);
  if (!ReadSignificand(text, walk, IsDigit, token)) return 0;
  token.magnitude += ReadExponent(walk, L'e', token.characters);
  return ConvertToken(token, std::chars_format::general);
}

}  // namespace

bool IsBlank(wchar_t c) {
  return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r';
}

std::wstring_view Trim(std::wstring_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::wstring ToLower(std::wstring_view text) {
  return Mapped(text, LowerOf);
}

std::wstring ToUpper(std::wstring_view text) {
  return Mapped(text, UpperOf);
}

bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return LowerOf(x) == LowerOf(y); });
}

std::int32_t ReadLeadingInteger(std::wstring_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  constexpr std::int64_t kBeyond32Bits = std::int64_t{1} << 40;
  NumberWalk walk(text);
  walk.SkipWhiteSpace();
  const bool negative = walk.SkipSign();
  std::int64_t value = 0;
  walk.ReadDigits(kBeyond32Bits, value);
  if (negative) value = -value;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

double ReadLeadingNumber(std::wstring_view text, std::size_t* consumed) {
  NumberWalk walk(text);
  walk.SkipWhiteSpace();
  const bool negative = walk.SkipSign();
  const std::size_t start = walk.position();
  const double magnitude = ReadMagnitude(text, walk);
  const bool found = walk.position() > start;
  if (consumed) *consumed = found ? walk.position() : 0;
  if (!found) return 0;
  return negative ? -magnitude : magnitude;
}

}  // namespace vek
