// What solids weigh and how much room they take. Values go out in units of the model.
#include <ProSolid.h>

#include <algorithm>

#include "bench/host/calls/vector_out.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/extent.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/model/units.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr ProFeattype kCoordinateSystem = 979;

// A model has the coordinate system of its template only, which is the model's own.
bool HasCoordinateSystem(const Model& model, std::wstring_view name) {
  return std::ranges::any_of(model.features, [name](const auto& feature) {
    return feature->type == kCoordinateSystem && EqualsIgnoringCase(feature->name, name);
  });
}

ProMassProperty InUnitsOf(const Model& model, const Weight& weight) {
  const double mm = MillimetresPer(model.length_unit);
  ProMassProperty properties{};
  properties.volume = weight.volume / (mm * mm * mm);
  properties.surface_area = weight.area / (mm * mm);
  properties.mass = weight.mass / KilogramsPer(model.length_unit);
  properties.density = properties.mass / properties.volume;
  WriteOut(weight.center, 1 / mm, properties.center_of_gravity);
  return properties;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProSolidMassPropertyGet(ProSolid solid, ProName coordinate_system, ProMassProperty* properties) {
  HOST_CALL(solid, static_cast<const wchar_t*>(coordinate_system)) {
    const Model* model = LiveSolid(solid);
    if (!model || !properties) return PRO_TK_BAD_INPUTS;
    if (coordinate_system && !HasCoordinateSystem(*model, Bounded(coordinate_system, PRO_NAME_SIZE)))
      return PRO_TK_E_NOT_FOUND;
    const auto weight = ExtentOf(*model).weight;
    if (!weight) return PRO_TK_GENERAL_ERROR;
    *properties = InUnitsOf(*model, *weight);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSolidOutlineGet(ProSolid solid, Pro3dPnt corners[2]) {
  HOST_CALL(solid) {
    const Model* model = LiveSolid(solid);
    if (!model || !corners) return PRO_TK_BAD_INPUTS;
    const auto outline = ExtentOf(*model).outline;
    if (!outline) return PRO_TK_GENERAL_ERROR;
    const double mm = MillimetresPer(model->length_unit);
    WriteOut(outline->low, 1 / mm, corners[0]);
    WriteOut(outline->high, 1 / mm, corners[1]);
    return PRO_TK_NO_ERROR;
  };
}
