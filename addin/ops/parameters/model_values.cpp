#include "addin/ops/parameters/model_values.h"

#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/ops/parameters/expression.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::parameters {
namespace {

constexpr int kAngularDimension = 21;
constexpr ProError kStopVisit = PRO_TK_E_FOUND;

double NumericValue(const ProParamvalue& value) {
  switch (value.type) {
    case PRO_PARAM_DOUBLE:
      return value.value.d_val;
    case PRO_PARAM_INTEGER:
      return value.value.i_val;
    case PRO_PARAM_BOOLEAN:
      return value.value.l_val != PRO_B_FALSE ? 1 : 0;
    default:
      return 0;
  }
}

bool IsUnlocked(ProParameter& parameter) {
  ProLockstatus status = PRO_PARAMLOCKSTATUS_UNLOCKED;
  return ProParameterLockstatusGet(&parameter, &status) == PRO_TK_NO_ERROR &&
         status == PRO_PARAMLOCKSTATUS_UNLOCKED;
}

std::wstring ModelLengthUnit(ProMdl model) {
  ProUnitsystem system{};
  ProUnititem unit{};
  if (ProMdlPrincipalunitsystemGet(model, &system) != PRO_TK_NO_ERROR ||
      ProUnitsystemUnitGet(&system, PRO_UNITTYPE_LENGTH, &unit) != PRO_TK_NO_ERROR)
    return {};
  return UnitName(unit);
}

}  // namespace

bool FindParameter(ProModelitem& owner, const std::wstring& name, ProParameter& parameter) {
  bool found = false;
  VisitParameters(owner, [&](ProParameter* candidate, ProError) {
    if (!EqualsIgnoreCase(BufferText(candidate->id), name)) return PRO_TK_NO_ERROR;
    parameter = *candidate;
    found = true;
    return kStopVisit;
  });
  return found;
}

bool FindDimension(ProMdl model, const std::wstring& symbol, ProDimension& dimension) {
  bool found = false;
  VisitDimensions(model, [&](ProDimension* candidate, ProError) {
    ProName name{};
    if (ProDimensionSymbolGet(candidate, name) != PRO_TK_NO_ERROR) return PRO_TK_NO_ERROR;
    if (!EqualsIgnoreCase(BufferText(name), symbol)) return PRO_TK_NO_ERROR;
    dimension = *candidate;
    found = true;
    return kStopVisit;
  });
  return found;
}

std::wstring ParameterRow(ProParameter& parameter) {
  ProParamvalue value{};
  ProUnititem value_unit{};
  if (ProParameterValueWithUnitsGet(&parameter, &value, &value_unit) != PRO_TK_NO_ERROR) return {};
  std::wstring unit = ParameterUnitName(parameter);
  if (unit.empty()) unit = UnitName(value_unit);
  return Format(LR"({"name":"%s","expression":"%s","value":%g,"unit":"%s","is_user_parameter":%s})",
                JsonEscape(BufferText(parameter.id)), JsonEscape(ParameterValueText(value, unit)),
                NumericValue(value), JsonEscape(unit), IsUnlocked(parameter) ? L"true" : L"false");
}

std::wstring DimensionRow(ProMdl model, ProDimension& dimension) {
  ProName symbol{};
  double value = 0;
  if (ProDimensionSymbolGet(&dimension, symbol) != PRO_TK_NO_ERROR ||
      ProDimensionValueGet(&dimension, &value) != PRO_TK_NO_ERROR)
    return {};
  const std::wstring unit = DimensionUnitName(model, dimension);
  return Format(LR"({"name":"%s","expression":"%s","value":%g,"unit":"%s","is_user_parameter":false})",
                JsonEscape(BufferText(symbol)), JsonEscape(NumberText(value, unit)), value, JsonEscape(unit));
}

bool ListParameterRows(ProModelitem& owner, std::vector<std::wstring>& rows) {
  const ProError status = VisitParameters(owner, [&](ProParameter* parameter, ProError) {
    if (std::wstring row = ParameterRow(*parameter); !row.empty()) rows.push_back(std::move(row));
    return PRO_TK_NO_ERROR;
  });
  return status == PRO_TK_NO_ERROR || status == PRO_TK_E_NOT_FOUND;
}

void ListDimensionRows(ProMdl model, std::vector<std::wstring>& rows) {
  VisitDimensions(model, [&](ProDimension* dimension, ProError) {
    if (std::wstring row = DimensionRow(model, *dimension); !row.empty()) rows.push_back(std::move(row));
    return PRO_TK_NO_ERROR;
  });
}

std::wstring UnitName(ProUnititem& unit) {
  ProName name{};
  return ProUnitNameGet(&unit, name) == PRO_TK_NO_ERROR ? BufferText(name) : std::wstring();
}

std::wstring ParameterUnitName(ProParameter& parameter) {
  ProUnititem unit{};
  if (ProParameterUnitsGet(&parameter, &unit) == PRO_TK_NO_ERROR)
    if (std::wstring name = UnitName(unit); !name.empty()) return name;
  ProParamvalue value{};
  ProUnititem value_unit{};
  if (ProParameterValueWithUnitsGet(&parameter, &value, &value_unit) != PRO_TK_NO_ERROR) return {};
  return UnitName(value_unit);
}

std::wstring DimensionUnitName(ProMdl model, ProDimension& dimension) {
  ProDimensiontype type = PRODIMTYPE_UNKNOWN;
  if (ProDimensionTypeGet(&dimension, &type) == PRO_TK_NO_ERROR &&
      type == static_cast<ProDimensiontype>(kAngularDimension))
    return L"deg";
  return ModelLengthUnit(model);
}

std::wstring ParameterValueText(const ProParamvalue& value, const std::wstring& unit) {
  switch (value.type) {
    case PRO_PARAM_DOUBLE:
      return NumberText(value.value.d_val, unit);
    case PRO_PARAM_STRING:
      return BufferText(value.value.s_val);
    case PRO_PARAM_INTEGER:
      return Format(L"%d", value.value.i_val);
    case PRO_PARAM_BOOLEAN:
      return value.value.l_val != PRO_B_FALSE ? L"true" : L"false";
    default:
      return {};
  }
}

}  // namespace vek::parameters
