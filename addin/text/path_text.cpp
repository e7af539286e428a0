#include "addin/text/path_text.h"

#include <cstddef>

namespace vek {
namespace {

std::size_t LastSeparator(std::wstring_view path) {
  const std::size_t backslash = path.rfind(L'\\');
  return backslash != std::wstring_view::npos ? backslash : path.rfind(L'/');
}

}  // namespace

std::wstring_view NameInPath(std::wstring_view path) {
  const std::size_t separator = LastSeparator(path);
  return separator == std::wstring_view::npos ? path : path.substr(separator + 1);
}

std::wstring_view DirectoryInPath(std::wstring_view path) {
  const std::size_t separator = LastSeparator(path);
  return separator == std::wstring_view::npos ? std::wstring_view{} : path.substr(0, separator);
}

std::wstring_view WithoutExtension(std::wstring_view name) {
  return name.substr(0, name.rfind(L'.'));
}

bool IsPlainFileName(std::wstring_view text) {
  return !text.empty() && text.find_first_of(L"\\/:") == std::wstring_view::npos;
}

}  // namespace vek
