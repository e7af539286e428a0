// Faces for constraints: choosing one on a model, and selecting it in the assembly.
//
// Main thread only.
#pragma once

#include <ProGeomitem.h>

#include <string_view>

#include "addin/host/owned.h"
#include "addin/ops/assembly/occurrences.h"

namespace vek::assembly {

// The model's first surface of that type. Without one, its first plane or cylinder. False when it has
// neither, and for a null model.
bool FindFaceOfKind(ProMdl model, int surface_type, ProGeomitem& face);

// The plane of the model that lies outermost along ">X" … "<Z", in the model's own coordinates; among equals
// the first. False for a text that is no selector, a model without planes, and a null model.
bool FaceBySelector(ProMdl model, std::wstring_view selector, ProGeomitem& face);

// A selection of `geometry` on the occurrence, or, without one, of the assembly's own.
CreoMcpOperationResult BuildGeometrySelection(ProMdl assembly, const OccurrenceInfo* occurrence,
                                              ProGeomitem* geometry, OwnedSelection& selection);

}  // namespace vek::assembly
