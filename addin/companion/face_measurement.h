// Measuring a face for the companion application: what it is, how large, and whether it is a hole.
//
// The numbers are the model's, written as if they were millimetres. Main thread.
#pragma once

#include <ProMdl.h>
#include <ProSelection.h>

#include <string>

#include "addin/companion/face_measurement_record.h"

namespace vek {

// "m", "in", "cm" or "mm"; "mm" when the host doesn't tell.
std::wstring DetectModelUnit(ProMdl model);

// Measures the face that was selected. The type of `model`, which is the current one: 2 for a part, 1 for an
// assembly, 5 for the third kind; anything else is a failure, the host's status for one.
int MeasureFace(ProMdl model, ProSelection selection, FaceMeasurement& measurement);

}  // namespace vek
