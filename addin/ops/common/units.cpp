#include "addin/ops/common/units.h"

#include <ProUnits.h>

#include <cmath>
#include <optional>

#include "addin/host/text_buffer.h"

namespace vek {
namespace {

// A factor below this is no unit's: dividing by it would only spread the damage.
constexpr double kSmallestFactor = 1e-18;

// Model units per millimetre, when the host tells.
std::optional<double> LengthFactor(ProMdl model) {
  ProName millimetre_name;
  CopyCut(millimetre_name, L"mm");
  ProUnititem millimetre{};
  if (ProUnitInit(model, millimetre_name, &millimetre) != PRO_TK_NO_ERROR) return std::nullopt;
  ProUnitsystem system{};
  if (ProMdlPrincipalunitsystemGet(model, &system) != PRO_TK_NO_ERROR) return std::nullopt;
  ProUnititem length{};
  if (ProUnitsystemUnitGet(&system, PRO_UNITTYPE_LENGTH, &length) != PRO_TK_NO_ERROR) return std::nullopt;
  ProUnitConversion conversion{};
  if (ProUnitConversionCalculate(&millimetre, &length, &conversion) != PRO_TK_NO_ERROR) return std::nullopt;
  return conversion.scale;
}

std::optional<double> GuardedLengthFactor(ProMdl model) {
  const auto factor = LengthFactor(model);
  if (!factor || !std::isfinite(*factor) || std::abs(*factor) < kSmallestFactor) return std::nullopt;
  return factor;
}

}  // namespace

double MmToModelScale(ProMdl model) {
  return LengthFactor(model).value_or(1.0);
}

double MmToModel(ProMdl model, double value) {
  const auto factor = LengthFactor(model);
  return factor ? value * *factor : value;
}

double MmToModelGuarded(ProMdl model, double value) {
  const auto factor = GuardedLengthFactor(model);
  return factor ? value * *factor : value;
}

double ModelToMm(ProMdl model, double value) {
  const auto factor = GuardedLengthFactor(model);
  return factor ? value / *factor : value;
}

}  // namespace vek
