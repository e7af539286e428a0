#include "addin/text/format.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace vek::format_detail {
namespace {

// What `%f`, `%g` and `%e` write when the template names no precision.
constexpr int kDefaultPrecision = 6;

// The widest double in fixed notation has 309 digits before its point; the rest is sign, point and precision.
constexpr std::size_t kFloatingBuffer = 512;

// Sixteen digits whatever the platform's pointer is, so that logs can be compared.
constexpr int kPointerDigits = 16;

std::wstring Widen(std::string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  for (const char c : text) wide.push_back(static_cast<unsigned char>(c));
  return wide;
}

std::wstring FloatingText(const Conversion& conversion, double value) {
  const auto notation = conversion.letter == L'f' ? std::chars_format::fixed : std::chars_format::general;
  const int precision = conversion.precision < 0 ? kDefaultPrecision : conversion.precision;
  char digits[kFloatingBuffer];
  const auto written = std::to_chars(digits, digits + sizeof digits, value, notation, precision);
  return Widen({digits, written.ptr});
}

template <typename Integer>
std::wstring IntegerText(Integer value, int base) {
  char digits[24];
  const auto written = std::to_chars(digits, digits + sizeof digits, value, base);
  return Widen({digits, written.ptr});
}

std::wstring PointerText(const void* pointer) {
  std::wstring digits(kPointerDigits, L'0');
  auto rest = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(pointer));
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, rest >>= 4)
    *digit = L"0123456789ABCDEF"[rest & 0xF];
  return digits;
}

std::wstring TextOf(const Conversion& conversion, const Argument& argument) {
  switch (static_cast<Kind>(argument.index())) {
    case Kind::kWide:
      return std::wstring(std::get<std::wstring_view>(argument));
    case Kind::kNarrow:
      return Widen(std::get<std::string_view>(argument));
    case Kind::kSigned:
      return IntegerText(std::get<std::int64_t>(argument), 10);
    case Kind::kUnsigned:
      return IntegerText(std::get<std::uint64_t>(argument), conversion.letter == L'x' ? 16 : 10);
    case Kind::kFloating:
      return FloatingText(conversion, std::get<double>(argument));
    case Kind::kCharacter:
      return std::wstring(1, std::get<wchar_t>(argument));
    case Kind::kPointer:
      return PointerText(std::get<const void*>(argument));
  }
  return {};
}

void AppendPadded(std::wstring& out, const Conversion& conversion, std::wstring_view text) {
  const auto width = static_cast<std::size_t>(conversion.width);
  const std::size_t missing = width > text.size() ? width - text.size() : 0;
  if (!conversion.zero_padded) {
    out.append(missing, L' ').append(text);
    return;
  }
  const bool negative = !text.empty() && text.front() == L'-';
  if (negative) out.push_back(L'-');
  out.append(missing, L'0').append(text.substr(negative ? 1 : 0));
}

}  // namespace

std::wstring FormatArguments(std::wstring_view text, std::span<const Argument> arguments) {
  std::wstring out;
  out.reserve(text.size() + 16 * arguments.size());
  std::size_t used = 0;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t percent = std::min(text.find(L'%', i), text.size());
    out.append(text, i, percent - i);
    i = percent;
    if (i == text.size()) break;
    const Conversion conversion = ReadConversion(text, i);
    if (conversion.letter == L'%') {
      out.push_back(L'%');
    } else if (const auto* wide = std::get_if<std::wstring_view>(&arguments[used]);
               wide && !conversion.width) {
      out.append(*wide);
      ++used;
    } else {
      AppendPadded(out, conversion, TextOf(conversion, arguments[used++]));
    }
  }
  return out;
}

}  // namespace vek::format_detail
