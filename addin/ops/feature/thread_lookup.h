// Where a thread stands in the host's hole charts: the index of its series and that of its screw size, which
// is how the host knows a cosmetic thread. Both ways answer false with a message when they can't tell.
#pragma once

#include <ProMdl.h>

#include <string>

namespace vek::feature {

// Has the host fill a scratch tree of a hole, which is never made into one, and reads the indices there.
bool ResolveThreadByHoleHelper(ProMdl model, const std::wstring& series, const std::wstring& designation,
                               int& series_index, int& screw_index, std::wstring& message);

// Works the indices out from the chart files of the installation that the environment names.
bool ResolveThreadByChart(const std::wstring& series, const std::wstring& designation, int& series_index,
                          int& screw_index, std::wstring& message);

}  // namespace vek::feature
