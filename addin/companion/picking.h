// What the user has selected, and asking for a pick. Main thread.
#pragma once

#include <ProObjects.h>

#include "addin/host/owned.h"

namespace vek {

// The kinds of items in which a command can find a face.
inline constexpr int kSurfaceItem = 5;
inline constexpr int kQuiltItem = 57;

// The selection buffer, and how much is in it.
ProError SelectionsInBuffer(OwnedSelections& selections, int& count);

// The first in the array whose item is a face; null when none is. Each item's type goes to the log until
// then.
ProSelection FirstFace(const OwnedSelections& selections, int count, ProModelitem& item);

// Asks the user for one face, datum or coordinate system; the host's status.
ProError AskForFace(OwnedSelections& selections, int& count);

}  // namespace vek
