#include "addin/companion/measurement_text.h"

#include <initializer_list>

#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {

std::wstring SurfaceTypeWord(int type) {
  switch (type) {
    case 34:
      return L"Plane";
    case 36:
      return L"Cylinder";
    case 37:
      return L"Cone";
    case 38:
      return L"Torus";
    case 40:
      return L"SPLINESR";
    case 41:
      return L"FILSRF";
    case 42:
      return L"RULSRF";
    case 43:
      return L"REV";
    case 44:
      return L"TABCYL";
    case 45:
      return L"B_SPL";
    case 46:
      return L"FOREIGN";
    case 48:
      return L"CYL_SPL";
    case 50:
      return L"SPL2DER";
    default:
      return L"OTHER";
  }
}

std::wstring LengthUnitWord(std::wstring_view unit_name) {
  const std::wstring name = ToLower(unit_name);
  const auto holds = [&](std::initializer_list<const wchar_t*> words) {
    for (const wchar_t* word : words)
      if (name.find(word) != std::wstring::npos) return true;
    return false;
  };
  if (holds({L"meter", L"m "})) return L"m";
  if (holds({L"inch", L"in"})) return L"in";
  if (holds({L"centimeter", L"cm"})) return L"cm";
  return L"mm";
}

std::wstring FormatLength(double value, std::wstring_view unit) {
  if (unit == L"m") return Format(L"%lfm", value / 1000.0);
  if (unit == L"in") return Format(L"%lfin", value / 25.4);
  if (unit == L"cm") return Format(L"%lfcm", value / 10.0);
  return Format(L"%lfmm", value);
}

std::wstring ThreadClassWord(double diameter) {
  if (!(diameter > 0)) return L"N/A";
  if (diameter < 3) return L"Fine Thread";
  return diameter < 10 ? L"Standard Thread" : L"Coarse Thread";
}

}  // namespace vek
