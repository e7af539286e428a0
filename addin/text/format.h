// The one formatter of the system's message templates.
//
// It takes the templates as they stand: %s wide text, %S narrow text, %d, %u, %lu, %04x, %g, %.3g, %.6g, %lf,
// %.1f to %.4f, %c, %p and %%. Floating numbers are written the C99 way in the C locale: two exponent digits
// at least, never three where two do. A count or kind of arguments that does not fit the template does not
// compile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace vek {
namespace format_detail {

// What an argument is, in the order of Argument's alternatives.
enum class Kind { kWide, kNarrow, kSigned, kUnsigned, kFloating, kCharacter, kPointer };

using Argument = std::variant<std::wstring_view, std::string_view, std::int64_t, std::uint64_t, double,
                              wchar_t, const void*>;

// One conversion of a template: %[0][width][.precision][l]letter.
struct Conversion {
  bool zero_padded = false;
  int width = 0;
  int precision = -1;
  wchar_t letter = 0;
};

// Reads the conversion behind the percent sign at `position` and moves `position` behind it.
constexpr Conversion ReadConversion(std::wstring_view text, std::size_t& position) {
  Conversion conversion;
  ++position;
  const auto at = [&]() { return position < text.size() ? text[position] : L'\0'; };
  const auto is_digit = [&]() { return at() >= L'0' && at() <= L'9'; };
  if (at() == L'0') {
    conversion.zero_padded = true;
    ++position;
  }
  for (; is_digit(); ++position) conversion.width = conversion.width * 10 + (at() - L'0');
  if (at() == L'.') {
    conversion.precision = 0;
    for (++position; is_digit(); ++position) conversion.precision = conversion.precision * 10 + (at() - L'0');
  }
  if (at() == L'l') ++position;
  conversion.letter = at();
  if (position < text.size()) ++position;
  return conversion;
}

constexpr bool Fits(wchar_t letter, Kind kind) {
  switch (letter) {
    case L's':
      return kind == Kind::kWide;
    case L'S':
      return kind == Kind::kNarrow;
    case L'd':
      return kind == Kind::kSigned;
    case L'u':
    case L'x':
      return kind == Kind::kUnsigned;
    case L'g':
    case L'f':
      return kind == Kind::kFloating;
    case L'c':
      return kind == Kind::kCharacter;
    case L'p':
      return kind == Kind::kPointer;
    default:
      return false;
  }
}

constexpr bool Matches(std::wstring_view text, std::span<const Kind> kinds) {
  std::size_t used = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] != L'%') {
      ++i;
      continue;
    }
    const Conversion conversion = ReadConversion(text, i);
    if (conversion.letter == L'%') continue;
    if (used == kinds.size() || !Fits(conversion.letter, kinds[used])) return false;
    ++used;
  }
  return used == kinds.size();
}

template <typename T>
constexpr Kind KindOf() {
  using Plain = std::remove_cvref_t<T>;
  if constexpr (std::is_same_v<Plain, wchar_t>)
    return Kind::kCharacter;
  else if constexpr (std::is_convertible_v<const Plain&, std::wstring_view>)
    return Kind::kWide;
  else if constexpr (std::is_convertible_v<const Plain&, std::string_view>)
    return Kind::kNarrow;
  else if constexpr (std::is_floating_point_v<Plain>)
    return Kind::kFloating;
  else if constexpr (std::is_enum_v<Plain>)
    return Kind::kSigned;
  else if constexpr (std::is_integral_v<Plain> && std::is_signed_v<Plain>)
    return Kind::kSigned;
  else if constexpr (std::is_integral_v<Plain>)
    return Kind::kUnsigned;
  else {
    static_assert(std::is_pointer_v<Plain>, "not an argument that a template can take");
    return Kind::kPointer;
  }
}

template <typename T>
Argument MakeArgument(const T& value) {
  constexpr Kind kind = KindOf<T>();
  if constexpr (kind == Kind::kWide)
    return std::wstring_view(value);
  else if constexpr (kind == Kind::kNarrow)
    return std::string_view(value);
  else if constexpr (kind == Kind::kSigned)
    return static_cast<std::int64_t>(value);
  else if constexpr (kind == Kind::kUnsigned)
    return static_cast<std::uint64_t>(value);
  else if constexpr (kind == Kind::kFloating)
    return static_cast<double>(value);
  else if constexpr (kind == Kind::kCharacter)
    return value;
  else
    return static_cast<const void*>(value);
}

std::wstring FormatArguments(std::wstring_view text, std::span<const Argument> arguments);

}  // namespace format_detail

// A literal template that has been held against the types of its arguments.
template <typename... Args>
class FormatTemplate {
 public:
  template <std::size_t N>
  consteval FormatTemplate(const wchar_t (&text)[N]) : text_(text, N - 1) {
    static_assert(sizeof...(Args) > 0, "a text without arguments is no template");
    constexpr format_detail::Kind kinds[] = {format_detail::KindOf<Args>()...};
    if (!format_detail::Matches(text_, kinds)) throw "the arguments do not fit the template";
  }
  constexpr std::wstring_view text() const { return text_; }

 private:
  std::wstring_view text_;
};

// `text` with its conversions replaced by the arguments, in their order.
template <typename... Args>
std::wstring Format(FormatTemplate<std::type_identity_t<Args>...> text, const Args&... args) {
  const format_detail::Argument arguments[] = {format_detail::MakeArgument(args)...};
  return format_detail::FormatArguments(text.text(), arguments);
}

}  // namespace vek
