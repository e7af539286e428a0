#include "addin/ops/feature/thread_lookup.h"

#include <ProElement.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "addin/host/element_path.h"
#include "addin/host/element_tree_builder.h"
#include "addin/ops/common/model_paths.h"
#include "addin/ops/feature/hole_charts.h"
#include "addin/platform/files.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

constexpr const wchar_t* kInstallationVariable = L"PRO_DIRECTORY";
constexpr std::wstring_view kChartFolder = L"text\\hole";
constexpr std::wstring_view kCommonChartFolder = L"Common Files\\text\\hole";
constexpr int kSeriesPath[] = {1671, 1356};
constexpr int kScrewSizePath[] = {1671, 1358};

ElementTreeBuilder ScratchHoleTree() {
  ElementTreeBuilder tree(386, L"Failed to allocate scratch hole tree for thread lookup.");
  tree.OnFailure(L"Failed to build scratch hole tree for thread lookup.");
  tree.Integer(tree.Root(), 387, 911);  // feature type: hole
  const auto hole = tree.Compound(tree.Root(), 1671);
  tree.Integer(hole, 1356, 0);  // thread series
  tree.Integer(hole, 1358, 0);  // screw size
  return tree;
}

bool ReadIndex(ProElement tree, std::span<const int> path, int& index) {
  ProElement element = nullptr;
  return FollowElementPath(tree, path, element) == PRO_TK_NO_ERROR &&
         ProElementIntegerGet(element, &index) == PRO_TK_NO_ERROR;
}

// Where the charts may lie, the likeliest first. An installation is known by its own folder or by one in it.
std::vector<std::wstring> ChartDirectories() {
  const std::wstring installation = EnvironmentVariable(kInstallationVariable);
  if (installation.empty()) return {};
  std::vector<std::wstring> directories = {JoinPath(installation, kChartFolder),
                                           JoinPath(installation, kCommonChartFolder)};
  // A separator at the end is not the one before the last name.
  const std::size_t last = installation.rfind(L'\\', installation.find_last_not_of(L'\\'));
  if (last != std::wstring::npos && last > 0)
    directories.push_back(JoinPath(installation.substr(0, last), kCommonChartFolder));
  return directories;
}

// The place of the series among the charts of the directory.
bool FindSeries(const std::wstring& directory, const std::wstring& series, int& index,
                std::wstring& message) {
  std::vector<std::wstring> names;
  if (!FilesMatching(JoinPath(directory, L"*.hol"), names)) {
    message = L"Failed to enumerate *.hol charts.";
    return false;
  }
  for (std::wstring& name : names) name.resize(std::min(name.rfind(L'.'), name.size()));
  std::ranges::sort(names);
  const auto found =
      std::ranges::find_if(names, [&](const std::wstring& name) { return EqualsIgnoreCase(name, series); });
  if (found == names.end()) {
    message = Format(L"Series '%s' not found among *.hol charts.", series);
    return false;
  }
  index = static_cast<int>(found - names.begin());
  return true;
}

// What counts in a chart is plain ASCII, and each byte is a character.
std::wstring WidenedBytes(const std::string& bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  for (const char byte : bytes) text.push_back(static_cast<unsigned char>(byte));
  return text;
}

}  // namespace

bool ResolveThreadByHoleHelper(ProMdl model, const std::wstring& series, const std::wstring& designation,
                               int& series_index, int& screw_index, std::wstring& message) {
  const ElementTreeBuilder tree = ScratchHoleTree();
  if (!tree.ok()) {
    message = tree.message();
    return false;
  }
  // The host takes its texts through pointers to what it could write to.
  std::wstring series_text = series, designation_text = designation;
  if (const ProError status = ProElementHoleThreadSeriesSet(tree.tree(), model, series_text.data());
      status != PRO_TK_NO_ERROR) {
    message =
        Format(L"Unknown thread series '%s' (ProElementHoleThreadSeriesSet status=%d).", series, status);
    return false;
  }
  if (const ProError status = ProElementHoleScrewSizeSet(tree.tree(), model, designation_text.data());
      status != PRO_TK_NO_ERROR) {
    message = Format(
        L"Screw size '%s' not found in series '%s' (status=%d). Use an ISO.hol FASTENER_ID like M8x1.25.",
        designation, series, status);
    return false;
  }
  if (!ReadIndex(tree.tree(), kSeriesPath, series_index)) {
    message = L"Failed to read resolved PRO_E_HLE_THRDSERIS index.";
    return false;
  }
  if (!ReadIndex(tree.tree(), kScrewSizePath, screw_index)) {
    message = L"Failed to read resolved PRO_E_HLE_SCREWSIZE index.";
    return false;
  }
  return true;
}

bool ResolveThreadByChart(const std::wstring& series, const std::wstring& designation, int& series_index,
                          int& screw_index, std::wstring& message) {
  const std::wstring chart_name = series + L".hol";
  const std::vector<std::wstring> directories = ChartDirectories();
  const auto directory = std::ranges::find_if(
      directories, [&](const std::wstring& path) { return PathExists(JoinPath(path, chart_name)); });
  if (directory == directories.end()) {
    message = L"Could not locate Creo text\\hole charts (ISO.hol).";
    return false;
  }
  if (!FindSeries(*directory, series, series_index, message)) return false;

  const std::wstring chart = JoinPath(*directory, chart_name);
  std::string bytes;
  if (!ReadWholeFile(chart, bytes)) {
    message = Format(L"Failed to open '%s'.", chart);
    return false;
  }
  const auto row = FindThreadRow(ReadThreadRows(WidenedBytes(bytes)), designation);
  if (!row) {
    message = Format(L"Screw size '%s' not found in %s.hol.", designation, series);
    return false;
  }
  screw_index = *row;
  return true;
}

}  // namespace vek::feature
