// The command that measures a face and sends it to the companion application, which looks for components that
// fit it. Main thread.
#pragma once

#include <ProMdl.h>

#include "addin/companion/face_measurement_record.h"

namespace vek {

void CommandFindComponent();

// Measures the face that is selected, or else one that the user picks: the current model's type, or a
// failure.
int MeasureSelectedFace(FaceMeasurement& measurement);

// Measures the first face among what is selected. -4 when there is none.
int MeasureFromSelectionBuffer(FaceMeasurement& measurement);

}  // namespace vek
