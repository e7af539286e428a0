// Where occurrences stand, as the host tells it. Lengths are model units.
#pragma once

#include <ProAsmcomp.h>

#include "addin/ops/assembly/occurrences.h"
#include "addin/ops/assembly/pose_arithmetic.h"

namespace vek::assembly {

// The path of one entry that leads from the assembly to the occurrence.
CreoMcpOperationResult ComponentPathFor(ProMdl assembly, const OccurrenceInfo& info, ProAsmcomppath& path);

// Takes a fresh handle of the occurrence: after every step that regenerates.
CreoMcpOperationResult RefreshOccurrence(ProMdl assembly, OccurrenceInfo& info);

// The pose by way of the component path, else the component's own. The identity, or what the call left, on
// failure.
CreoMcpOperationResult ReadOccurrencePose(ProMdl assembly, const OccurrenceInfo& info, Pose& pose);

// The component's own pose; the identity, or what the call left, when the host doesn't tell.
ProError ReadComponentPosition(const ProAsmcomp& comp, Pose& pose);

// The pose that the host makes of a translation, or one with the translation in the last column.
Pose TranslationMatrix(const Translation& to);

}  // namespace vek::assembly
