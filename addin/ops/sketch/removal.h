// Taking back what was drawn: an entity, the entities of a drawing step, a whole sketch.
//
// Constraints and dimensions that refer to an entity stay when it goes. Labels move up: the next commit reads
// the records with what their texts mean by then.
#pragma once

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

CreoMcpOperationResult SketchEntityDelete(const std::wstring& arguments);

// The reversal of a sketch's creation: its feature and its session go.
CreoMcpOperationResult DeleteSketch(const std::wstring& name);

// The reversal of a drawing step: deletes the entities of these labels, joined by ";", the last one first, so
// that the others keep theirs. What was deleted before a failure stays deleted.
CreoMcpOperationResult DeleteSketchEntities(const std::wstring& sketch, const std::wstring& labels);

}  // namespace vek::sketch
