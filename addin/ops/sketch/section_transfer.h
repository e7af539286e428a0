// What a commit does with the section that the host made for a sketch's feature.
#pragma once

#include "addin/host/extracted_tree.h"
#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// The section under the sketcher element of a feature's tree; null, with the reason in the log, when there is
// none. It belongs to the tree.
ProSection FindSketcherSection(const ExtractedTree& tree);

// Adds the session's entities to `target` in drawing order, which gives them the same ids there.
bool CopyEntities(const SketchSession& session, ProSection target);

// Applies the session's constraints and dimensions to `target`, in the order in which they were added. The
// first that fails ends it, with the reason in `error`.
bool ReplayRecords(const SketchSession& session, ProSection target, std::wstring& error);

// Regenerates `target`. A section that does not regenerate is only logged: the redefinition decides.
void RegenerateSection(ProSection target);

}  // namespace vek::sketch
