// Cross-sections: the named planes along which drawings cut solids.
#pragma once

#include <ProObjects.h>

#include <optional>
#include <string_view>

#include "bench/host/model/model.h"

namespace bench {

// Millimetres, in the coordinates of the solid.
struct CutPlane {
  Vector3 origin{};
  Vector3 normal{};
};

// The plane of a datum plane or planar face by the id of its surface; nothing for what is no plane, or isn't
// there.
std::optional<CutPlane> PlaneOfSurface(const Model& solid, int surface);

// By its name, without regard to case; null when there is none.
const CrossSection* FindCrossSection(const Model& solid, std::wstring_view name);
const CrossSection* FindCrossSection(const Model& solid, int id);

// Makes one; a status other than 0 leaves the solid as it was: a name that can't be borne (-22) or is taken
// (-5), a surface that isn't there (-4) or is no plane (-18).
ProError AddCrossSection(Model& solid, std::wstring_view name, int surface, int& id);

}  // namespace bench
