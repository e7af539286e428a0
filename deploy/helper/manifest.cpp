#include "deploy/helper/manifest.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "addin/text/wide_text.h"
#include "deploy/helper/file_names.h"

namespace vek::helper {
namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kHashDigits = 64;

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

// Takes the last word off the text, with the blanks before it.
std::string_view TakeLastWord(std::string_view& text) {
  const std::size_t blank = text.find_last_of(kBlanks);
  const std::size_t start = blank == std::string_view::npos ? 0 : blank + 1;
  const std::string_view word = text.substr(start);
  text = WithoutBlanks(text.substr(0, start));
  return word;
}

std::optional<std::uint64_t> ReadSize(std::string_view digits) {
  std::uint64_t size = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, size);
  if (digits.empty() || stop != end || error != std::errc{}) return std::nullopt;
  return size;
}

std::optional<std::string> ReadHash(std::string_view digits) {
  if (digits.size() != kHashDigits) return std::nullopt;
  std::string hash(digits);
  for (char& digit : hash) {
    if (digit >= 'A' && digit <= 'F') digit = static_cast<char>(digit - 'A' + 'a');
    if (!(digit >= '0' && digit <= '9') && !(digit >= 'a' && digit <= 'f')) return std::nullopt;
  }
  return hash;
}

// "NAME SIZE SHA256"; the name may hold blanks.
std::optional<ManifestFile> ReadFile(std::string_view text) {
  const auto hash = ReadHash(TakeLastWord(text));
  const auto size = ReadSize(TakeLastWord(text));
  std::wstring name = DecodeUtf8(text);
  if (!hash || !size || !IsUpdateFileName(name)) return std::nullopt;
  return ManifestFile{std::move(name), *size, *hash};
}

bool Has(const Manifest& manifest, std::wstring_view name) {
  return std::ranges::any_of(manifest.files,
                             [name](const ManifestFile& file) { return EqualsIgnoreCase(file.name, name); });
}

// Reads the line behind its first word.
bool ReadEntry(std::string_view word, std::string_view rest, Manifest& manifest, bool& versioned) {
  if (word == "version") {
    const auto version = ReadVersion(rest);
    if (!version || versioned) return false;
    manifest.version = *version;
    versioned = true;
    return true;
  }
  const auto file = word == "file" ? ReadFile(rest) : std::nullopt;
  if (!file || Has(manifest, file->name)) return false;
  manifest.files.push_back(*file);
  return true;
}

}  // namespace

bool ReadManifest(std::string_view bytes, Manifest& manifest, std::wstring& problem) {
  manifest = {};
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  bool versioned = false;
  for (int number = 1; !bytes.empty(); ++number) {
    const std::size_t end = bytes.find('\n');
    const std::string_view line = WithoutBlanks(bytes.substr(0, end));
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    if (line.empty()) continue;
    const std::size_t blank = std::min(line.find_first_of(kBlanks), line.size());
    if (!ReadEntry(line.substr(0, blank), WithoutBlanks(line.substr(blank)), manifest, versioned)) {
      problem = Format(L"line %d of the manifest is wrong", number);
      return false;
    }
  }
  if (!versioned) {
    problem = L"the manifest tells no version";
    return false;
  }
  if (!Has(manifest, kHelperFile)) {
    problem = L"the manifest lists no " + std::wstring(kHelperFile);
    return false;
  }
  return true;
}

}  // namespace vek::helper
