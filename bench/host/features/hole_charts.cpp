#include "bench/host/features/hole_charts.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "bench/host/installation.h"
#include "bench/host/text.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kBlanks = " \t\r\v\f";

std::vector<std::wstring> ChartsIn(const fs::path& directory) {
  std::vector<std::wstring> names;
  std::error_code problem;
  for (const auto& file : fs::directory_iterator(directory, problem))
    if (EqualsIgnoringCase(file.path().extension().wstring(), L".hol"))
      names.push_back(file.path().stem().wstring());
  std::ranges::sort(names);
  return names;
}

// A line without the blanks around it.
std::string Stripped(const std::string& line) {
  const auto first = line.find_first_not_of(kBlanks);
  return first == std::string::npos ? std::string()
                                    : line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

bool BeginsWith(const std::string& line, std::wstring_view word) {
  return EqualsIgnoringCase(FromUtf8(line.substr(0, word.size())), word);
}

}  // namespace

std::optional<HoleCharts> FindHoleCharts() {
  const fs::path installation = InstallationDirectory();
  if (installation.empty()) return std::nullopt;
  const fs::path places[] = {installation / L"text" / L"hole",
                             installation / L"Common Files" / L"text" / L"hole",
                             installation.parent_path() / L"Common Files" / L"text" / L"hole"};
  for (const fs::path& place : places)
    if (auto series = ChartsIn(place); !series.empty()) return HoleCharts{place.wstring(), std::move(series)};
  return std::nullopt;
}

std::optional<int> FindSeries(const HoleCharts& charts, std::wstring_view name) {
  const auto found = std::ranges::find_if(
      charts.series, [name](const std::wstring& series) { return EqualsIgnoringCase(series, name); });
  if (found == charts.series.end()) return std::nullopt;
  return static_cast<int>(found - charts.series.begin());
}

std::vector<std::wstring> ScrewSizes(const HoleCharts& charts, std::size_t series) {
  std::vector<std::wstring> sizes;
  std::ifstream text(fs::path(charts.directory) / (charts.series[series] + L".hol"));
  bool in_table = false;
  for (std::string raw; std::getline(text, raw);) {
    const std::string line = Stripped(raw);
    if (line.empty() || line.front() == '!') continue;
    if (BeginsWith(line, L"THREAD_DATA")) {
      in_table = true;
    } else if (in_table && !BeginsWith(line, L"FASTENER_ID")) {
      sizes.push_back(FromUtf8(line.substr(0, line.find_first_of(kBlanks))));
    }
  }
  return sizes;
}

}  // namespace bench
