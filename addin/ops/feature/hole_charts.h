// Thread designations such as "M8x1.25", and the text of the host's hole charts, in which they stand: pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vek::feature {

// A designation as the charts write it: without blanks, in upper case but for the x, and without the zero in
// front of a pitch below 1 ("m8 x 0.75" is "M8x.75").
std::wstring NormalizeThreadDesignation(std::wstring_view text);

// The nominal diameter that a designation begins with, in millimetres, behind an M; 0 when it tells none.
double DesignationDiameter(std::wstring_view designation);

// The designations of a chart's thread rows; the place of each in the list is its screw index. Whatever the
// text is, it is read: without a thread table it has no rows. Of a line, 1024 characters count.
std::vector<std::wstring> ReadThreadRows(std::wstring_view chart);

// The first row that means `designation`, loosely compared.
std::optional<int> FindThreadRow(const std::vector<std::wstring>& rows, std::wstring_view designation);

}  // namespace vek::feature
