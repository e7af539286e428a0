// Datum planes of a model, to cut it along.
#pragma once

#include <ProSolid.h>

#include <string>
#include <string_view>

#include "addin/server/operation_result.h"

namespace vek::drawing {

// The datum plane of that name: the first surface of the feature called so, or else the plane itself.
bool FindDatumSurface(ProSolid solid, std::wstring_view name, ProGeomitem& plane);

// A new datum plane of that name at `offset` model units from `base`; `surface` is its surface. The feature
// stays in the model, also when only its surface can't be found.
CreoMcpOperationResult CreateOffsetPlane(ProSolid solid, const ProGeomitem& base, double offset,
                                         const std::wstring& name, ProGeomitem& surface);

}  // namespace vek::drawing
