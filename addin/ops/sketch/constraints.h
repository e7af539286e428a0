// Constraints of a sketch.
//
// They are records of the session, applied to the section of each commit anew and never to the private one.
// Adding one is trying it: the commit that fails with it takes it away again.
#pragma once

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// Applies a record to the section of a commit, which numbers its entities as the private section does. False
// with the reason in `error`.
bool ApplySketchConstraint(ProSection section, const SketchSession& session,
                           const SketchConstraintRecord& record, std::wstring& error);

CreoMcpOperationResult SketchConstraintAdd(const std::wstring& arguments);

}  // namespace vek::sketch
