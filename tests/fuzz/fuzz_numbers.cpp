// The input is a text that may start with a number; the C library's reader of narrow text is the measure.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "addin/text/format.h"
#include "addin/text/wide_text.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(vek::fuzz::Bytes(data, size));
  // The C library stops at a zero, and knows a form of nan with a bracket behind it that ends elsewhere.
  if (bytes.find('\0') != std::string::npos || bytes.find('(') != std::string::npos) return 0;
  const std::wstring text = vek::fuzz::Widened(bytes);

  std::size_t consumed = 0;
  const double number = vek::ReadLeadingNumber(text, &consumed);
  char* end = nullptr;
  const double expected = std::strtod(bytes.c_str(), &end);
  Require(consumed == static_cast<std::size_t>(end - bytes.c_str()));
  Require(std::isnan(expected) ? std::isnan(number) : std::memcmp(&number, &expected, sizeof number) == 0);

  const std::wstring printed = vek::Format(L"%g|%.3f|%lf", number, number, number);
  char measure[1024];
  const int length = std::snprintf(measure, sizeof measure, "%g|%.3f|%f", number, number, number);
  Require(printed == vek::fuzz::Widened({measure, static_cast<std::size_t>(length)}));

  const long long integer =
      std::clamp<long long>(std::strtoll(bytes.c_str(), nullptr, 10), INT32_MIN, INT32_MAX);
  Require(vek::ReadLeadingInteger(text) == integer);
  Require(vek::EqualsIgnoreCase(text, vek::ToUpper(text)) || text.find(L'\x00B5') != std::wstring::npos);
  return 0;
}
