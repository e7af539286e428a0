// The charts of threads that an installation keeps as text files, one a series.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace bench {

struct HoleCharts {
  std::wstring directory;
  std::vector<std::wstring> series;  // the charts' names in their order; a series is known by its place
};

// The charts of the installation that the environment's PRO_DIRECTORY names; nothing when there are none.
std::optional<HoleCharts> FindHoleCharts();

// The place of a series by its name, without regard to case.
std::optional<int> FindSeries(const HoleCharts& charts, std::wstring_view name);

// What the rows of a series' chart begin with; a screw size is known by its place. `series` is within the
// charts. A chart that can't be read has none.
std::vector<std::wstring> ScrewSizes(const HoleCharts& charts, std::size_t series);

}  // namespace bench
