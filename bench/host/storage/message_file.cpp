#include "bench/host/storage/message_file.h"

#include <sstream>

#include "bench/host/installation.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/text.h"

namespace bench {

std::wstring MessageText(const std::wstring& file, const std::string& key) {
  const auto bytes = ReadWholeFile(TextDirectory() + L"\\" + file);
  std::istringstream lines(bytes.value_or(std::string{}));
  const auto next = [&lines](std::string& line) {
    if (!std::getline(lines, line)) return false;
    if (line.ends_with('\r')) line.pop_back();
    return true;
  };
  std::string found, own, translated, unused;
  while (next(found)) {
    if (found.starts_with('#')) continue;
    if (!next(own) || !next(translated)) break;
    if (found == key) return FromUtf8(translated.empty() || translated == "#" ? own : translated);
    next(unused);
  }
  return FromUtf8(key);
}

}  // namespace bench
