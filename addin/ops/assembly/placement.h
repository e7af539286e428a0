// Bringing an occurrence to a place and making sure that it is there.
//
// A successful status is never taken as proof: after each attempt the pose is read back, and three ever
// stronger methods are tried until it is where it was asked to be: setting the position, redefining the
// feature, deleting the occurrence and placing its model anew. The last one changes the feature's id; `info`
// follows it.
#pragma once

#include "addin/ops/assembly/poses.h"

namespace vek::assembly {

// Strips the occurrence of all its constraints.
CreoMcpOperationResult ReleaseOccurrence(ProMdl assembly, OccurrenceInfo& info);

// Sets the placement through the feature's element tree, without constraints.
CreoMcpOperationResult RedefineInitPos(const ProAsmcomp& comp, const Pose& pose);

// Brings the occurrence to a translation, in model units.
CreoMcpOperationResult PersistTranslation(ProMdl assembly, OccurrenceInfo& info, const Translation& target);

// Releases the occurrence and brings it to a pose. Only the translation is read back, and the last method
// loses the rotation.
CreoMcpOperationResult PersistPose(ProMdl assembly, OccurrenceInfo& info, const Pose& pose);

}  // namespace vek::assembly
