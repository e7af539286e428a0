// What a face measures, as it goes to the companion application.
#pragma once

#include <string>

namespace vek {

// Every number is a text with its unit.
struct FaceMeasurement {
  std::wstring area, perimeter, radius, diameter;
  std::wstring centerX = L"0.0", centerY = L"0.0", centerZ = L"0.0";
  std::wstring normal;
  bool isHole = false;
  std::wstring surfaceType;
  // Of a hole alone.
  std::wstring threadSize, holeDiameter, holeDepth, standard, threadClass, holeType;
  // Where the face was picked; not sent.
  std::wstring clickX = L"0.0", clickY = L"0.0", clickZ = L"0.0";
};

}  // namespace vek
