#include "addin/companion/companion_messages.h"

#include <algorithm>

#include "addin/text/format.h"

namespace vek {

std::wstring FilePathMessage(std::wstring_view file_path) {
  std::wstring path(file_path);
  std::ranges::replace(path, L'\\', L'/');
  return Format(L"{\"filePath\":\"%s\"}", path);
}

std::wstring FaceMeasurementMessage(const FaceMeasurement& face) {
  std::wstring message =
      Format(L"{\"Area\":\"%s\",\"Perimeter\":\"%s\",\"Radius\":\"%s\",\"Diameter\":\"%s\",", face.area,
             face.perimeter, face.radius, face.diameter);
  message += Format(L"\"CenterPoint\":{\"X\":\"%s\",\"Y\":\"%s\",\"Z\":\"%s\"},", face.centerX, face.centerY,
                    face.centerZ);
  message += Format(L"\"Normal\":\"%s\",\"IsHole\":%s,\"surfaceType\":\"%s\",\"SelectedHoleInfo\":",
                    face.normal, face.isHole ? L"true" : L"false", face.surfaceType);
  if (!face.isHole) return message + L"null}";
  message += Format(L"{\"ThreadSize\":\"%s\",\"HoleDiameter\":\"%s\",\"HoleDepth\":\"%s\",", face.threadSize,
                    face.holeDiameter, face.holeDepth);
  message += Format(L"\"Standard\":\"%s\",\"ThreadClass\":\"%s\",\"HoleType\":\"%s\"}", face.standard,
                    face.threadClass, face.holeType);
  return message + L"}";
}

}  // namespace vek
