#include "addin/ops/exchange/import_file_name.h"

namespace vek::exchange {

std::wstring ImportBaseName(std::wstring_view filename) {
  const auto dot = filename.rfind(L'.');
  const std::wstring_view base = dot == std::wstring_view::npos ? L"" : filename.substr(0, dot);
  return std::wstring(base.empty() ? filename : base);
}

bool ImportExtension(std::wstring_view filename, std::wstring& extension) {
  const auto dot = filename.rfind(L'.');
  extension = dot == std::wstring_view::npos ? L".step" : filename.substr(dot);
  return extension.find_first_of(L"\\/") == std::wstring::npos;
}

}  // namespace vek::exchange
