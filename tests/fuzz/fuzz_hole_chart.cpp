// The input is the bytes of a chart file. A row is one word of a line; it is found by its own designation,
// and so is one that a client writes in the charts' form.
#include "addin/ops/feature/hole_charts.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring chart = vek::fuzz::Widened(vek::fuzz::Bytes(data, size));
  const auto rows = vek::feature::ReadThreadRows(chart);
  std::size_t characters = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Require(!rows[i].empty() && rows[i].find_first_of(L" \t\n") == std::wstring::npos);
    characters += rows[i].size();
    const auto found = vek::feature::FindThreadRow(rows, rows[i]);
    Require(found && *found <= static_cast<int>(i));
  }
  Require(characters <= chart.size());

  const std::wstring designation = vek::feature::NormalizeThreadDesignation(chart);
  Require(designation.size() <= chart.size());
  Require(designation.find(L'X') == std::wstring::npos);
  Require(vek::feature::NormalizeThreadDesignation(designation) == designation);
  Require(vek::feature::DesignationDiameter(designation) >= 0);
  return 0;
}
