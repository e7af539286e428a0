// The datum planes and axes that patterns, geometry mirrors and sweeps refer to.
#pragma once

#include <ProModelitem.h>

#include <string>

#include "addin/server/operation_result.h"

namespace vek::feature {

// The datum plane of that name: as a surface, or else as a datum plane of its own. False when there is none.
bool FindDatumPlane(ProMdl model, const std::wstring& name, ProModelitem& item);

// The datum plane normal to the direction that the client named.
CreoMcpOperationResult ResolveDirection(ProMdl model, const std::wstring& word, ProModelitem& item);

// The axis that the client named. One of that very name wins over the word's meaning; a word with a meaning
// is given a datum axis where its two planes meet, which later patterns find again.
CreoMcpOperationResult ResolvePatternAxis(ProMdl model, const std::wstring& word, ProModelitem& item);

}  // namespace vek::feature
