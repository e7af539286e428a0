// The bodies of what goes to the companion application. Values are put in as they are: nothing escapes them.
#pragma once

#include <string>
#include <string_view>

#include "addin/companion/face_measurement_record.h"

namespace vek {

// `{"filePath":"…"}`, with slashes for backslashes.
std::wstring FilePathMessage(std::wstring_view file_path);

// All of a measurement but the picked point; the hole's part is null when it is none.
std::wstring FaceMeasurementMessage(const FaceMeasurement& measurement);

}  // namespace vek
