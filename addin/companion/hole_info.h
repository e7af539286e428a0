// What can be guessed of a drilled hole from its wall.
#pragma once

#include <ProGeomitem.h>

#include <string>

namespace vek {

struct HoleInfo {
  std::wstring threadSize, holeDiameter, holeDepth, standard, threadClass, holeType;
};

// Fills `info` from the wall; what can't be asked of the host leaves it as it was.
void ExtractHoleInfo(ProGeomitem& item, HoleInfo& info);

}  // namespace vek
