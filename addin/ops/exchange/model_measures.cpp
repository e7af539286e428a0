#include "addin/ops/exchange/model_measures.h"

#include <ProUnits.h>

#include <cmath>

#include "addin/host/text_buffer.h"
#include "addin/ops/common/units.h"

namespace vek::exchange {

double AreaInCm2(ProMdl model, double area) {
  const double mm = ModelToMm(model, 1.0);
  return area * mm * mm / 100;
}

double VolumeInCm3(ProMdl model, double volume) {
  const double mm = ModelToMm(model, 1.0);
  return volume * mm * mm * mm / 1000;
}

double MassInKg(ProMdl model, double mass) {
  ProName name;
  CopyCut(name, L"kg");
  ProUnititem kilogram{};
  if (ProUnitInit(model, name, &kilogram) != PRO_TK_NO_ERROR) return mass;
  ProUnitsystem system{};
  if (ProMdlPrincipalunitsystemGet(model, &system) != PRO_TK_NO_ERROR) return mass;
  ProUnititem unit{};
  if (ProUnitsystemUnitGet(&system, PRO_UNITTYPE_MASS, &unit) != PRO_TK_NO_ERROR) return mass;
  ProUnitConversion conversion{};
  if (ProUnitConversionCalculate(&unit, &kilogram, &conversion) != PRO_TK_NO_ERROR) return mass;
  return std::isfinite(conversion.scale) ? mass * conversion.scale : mass;
}

}  // namespace vek::exchange
