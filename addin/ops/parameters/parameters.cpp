#include "addin/ops/parameters/parameters.h"

#include <ProModelitem.h>
#include <ProWindows.h>

#include <limits>

#include "addin/host/text_buffer.h"
#include "addin/ops/common/history.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/parameters/expression.h"
#include "addin/ops/parameters/model_values.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::parameters {
namespace {

constexpr int kModelOwner = 0;
constexpr int kItemOwner = 1;
constexpr int kReadOnlyStatus = -48;
constexpr int kCurrentWindow = -1;

constexpr const wchar_t* kUnparsable = L"Unable to parse parameter expression.";

// What holds the values: the active part or assembly.
struct ParameterHost {
  ProMdl model = nullptr;
  ProModelitem item{};
};

CreoMcpOperationResult RequireParameterHost(ParameterHost& host) {
  if (ProMdlCurrentGet(&host.model) != PRO_TK_NO_ERROR || host.model == nullptr)
    return MakeFailureResult(L"No active document.");
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(host.model, &type) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to read active document type.");
  if (type != PRO_MDL_ASSEMBLY && type != PRO_MDL_PART)
    return MakeFailureResult(L"Parameters are only available for parts and assemblies.");
  if (ProMdlToModelitem(host.model, &host.item) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to resolve active model item.");
  return MakeSuccessResult();
}

CreoMcpOperationResult RegenerateAfterSet(ProMdl model) {
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR) return MakeSuccessResult();
  if (type != PRO_MDL_ASSEMBLY && type != PRO_MDL_PART) return MakeSuccessResult();
  if (const ProError status = ProSolidRegenerate(static_cast<ProSolid>(model), 0); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Parameter updated, but rebuild failed (status=%d).", status));
  ProWindowRepaint(kCurrentWindow);
  return MakeSuccessResult();
}

CreoMcpOperationResult NotFound(const std::wstring& name) {
  return MakeFailureResult(Format(L"Parameter '%s' not found.", name));
}

// One change of a value: what is changed, to what, and what stood there before.
struct Change {
  const std::wstring& name;
  const std::wstring& expression;
  std::wstring before;
};

// What follows on a change that the host has taken. `row` shows the value as it is now.
template <typename Row>
CreoMcpOperationResult FinishChange(ProMdl model, const Change& change, Row&& row) {
  if (auto rebuilt = RegenerateAfterSet(model); !rebuilt.success) return rebuilt;
  PushSetParameter(change.name, change.before, change.expression);
  const std::wstring shown = row();
  return MakeSuccessResult(Format(L"Parameter '%s' set to '%s'.", change.name, change.expression),
                           shown.empty() ? L"null" : shown);
}

// ---- parameters
// --------------------------------------------------------------------------------------------

// A new value on its way to the host.
struct NewValue {
  ProParamvalue value{};
  ProUnititem unit{};
  bool has_unit = false;
  bool is_scaled = false;  // the host converts it
};

bool Fill(ProParamvalue& record, void* value, ProParamvalueType type) {
  return ProParamvalueSet(&record, value, type) == PRO_TK_NO_ERROR;
}

CreoMcpOperationResult ReadTextValue(const std::wstring& expression, NewValue& value) {
  ProLine line;
  if (!CopyWhole(line, expression) || !Fill(value.value, line, PRO_PARAM_STRING))
    return MakeFailureResult(L"Failed to prepare string parameter value.");
  return MakeSuccessResult();
}

CreoMcpOperationResult ReadIntegerValue(const std::wstring& expression, NewValue& value) {
  const auto parsed = ParseNumber(expression);
  if (!parsed) return MakeFailureResult(kUnparsable);
  constexpr double kLowest = std::numeric_limits<int>::min(), kHighest = std::numeric_limits<int>::max();
  const bool fits = parsed->number > kLowest - 1 && parsed->number < kHighest + 1;  // false for NaN
  int number = fits ? static_cast<int>(parsed->number) : 0;
  if (!fits || !Fill(value.value, &number, PRO_PARAM_INTEGER))
    return MakeFailureResult(L"Failed to prepare integer parameter value.");
  return MakeSuccessResult();
}

CreoMcpOperationResult ReadTruthValue(const std::wstring& expression, NewValue& value) {
  const auto parsed = ParseTruth(expression);
  if (!parsed) return MakeFailureResult(L"Unable to parse boolean parameter expression.");
  ProBoolean truth = *parsed ? PRO_B_TRUE : PRO_B_FALSE;
  if (!Fill(value.value, &truth, PRO_PARAM_BOOLEAN))
    return MakeFailureResult(L"Failed to prepare boolean parameter value.");
  return MakeSuccessResult();
}

// The model among whose units a parameter's are looked up.
ProMdl OwnerModel(ProParameter& parameter, ProMdl active) {
  if (static_cast<int>(parameter.owner.type) == kModelOwner) return parameter.owner.who.model;
  if (static_cast<int>(parameter.owner.type) != kItemOwner) return active;
  ProMdl owner = nullptr;
  return ProModelitemMdlGet(&parameter.owner.who.item, &owner) == PRO_TK_NO_ERROR ? owner : active;
}

bool FindUnit(ProMdl model, const std::wstring& name, ProUnititem& unit) {
  ProName buffer;
  CopyCut(buffer, name);
  if (ProUnitInit(model, buffer, &unit) == PRO_TK_NO_ERROR) return true;
  CopyCut(buffer, ToLower(name));
  return ProUnitInit(model, buffer, &unit) == PRO_TK_NO_ERROR;
}

CreoMcpOperationResult ReadNumberValue(const Change& change, ProMdl owner, NewValue& value) {
  const auto parsed = ParseNumber(change.expression);
  if (!parsed) return MakeFailureResult(kUnparsable);
  double number = parsed->number;
  if (!Fill(value.value, &number, PRO_PARAM_DOUBLE))
    return MakeFailureResult(L"Failed to prepare numeric parameter value.");
  value.is_scaled = true;
  value.has_unit = !parsed->unit.empty();
  if (value.has_unit && !FindUnit(owner, parsed->unit, value.unit))
    return MakeFailureResult(Format(L"Unknown unit '%s' for parameter '%s'.", parsed->unit, change.name));
  return MakeSuccessResult();
}

// Parameters don't change type: the present one says how the expression is read.
CreoMcpOperationResult ReadNewValue(const Change& change, ProParamvalueType type, ProMdl owner,
                                    NewValue& value) {
  switch (type) {
    case PRO_PARAM_STRING:
      return ReadTextValue(change.expression, value);
    case PRO_PARAM_INTEGER:
      return ReadIntegerValue(change.expression, value);
    case PRO_PARAM_BOOLEAN:
      return ReadTruthValue(change.expression, value);
    default:
      return ReadNumberValue(change, owner, value);
  }
}

CreoMcpOperationResult SetParameter(const ParameterHost& host, ProParameter& parameter, Change change) {
  ProParamvalue current{};
  ProUnititem current_unit{};
  if (ProParameterValueWithUnitsGet(&parameter, &current, &current_unit) != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to read current value for parameter '%s'.", change.name));
  std::wstring unit = ParameterUnitName(parameter);
  if (unit.empty()) unit = UnitName(current_unit);
  change.before = ParameterValueText(current, unit);

  NewValue value;
  const ProMdl owner = OwnerModel(parameter, host.model);
  if (auto read = ReadNewValue(change, current.type, owner, value); !read.success) return read;
  const ProError status = value.is_scaled ? ProParameterScaledvalueSet(&parameter, &value.value,
                                                                       value.has_unit ? &value.unit : nullptr)
                                          : ProParameterValueWithUnitsSet(&parameter, &value.value, nullptr);
  if (static_cast<int>(status) == kReadOnlyStatus)
    return MakeFailureResult(
        L"Parameter is read-only. If the model is managed by Windchill, check it out first.");
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to set parameter '%s' (status=%d).", change.name, status));
  return FinishChange(host.model, change, [&] { return ParameterRow(parameter); });
}

// ---- dimensions
// --------------------------------------------------------------------------------------------

// A dimension takes the number as it stands: nothing converts it, so another unit than its own is refused.
CreoMcpOperationResult SetDimension(const ParameterHost& host, ProDimension& dimension, Change change) {
  ProBoolean driven = PRO_B_FALSE;
  if (ProDimensionIsReldriven(&dimension, &driven) == PRO_TK_NO_ERROR && driven == PRO_B_TRUE)
    return MakeFailureResult(L"Dimension is driven by a relation and cannot be set directly.");
  double current = 0;
  const bool is_known = ProDimensionValueGet(&dimension, &current) == PRO_TK_NO_ERROR;
  const std::wstring unit = DimensionUnitName(host.model, dimension);
  if (is_known) change.before = NumberText(current, unit);

  const auto parsed = ParseNumber(change.expression);
  if (!parsed) return MakeFailureResult(L"Unable to parse dimension expression.");
  if (!parsed->unit.empty() && !unit.empty() && !EqualsIgnoreCase(parsed->unit, unit))
    return MakeFailureResult(
        Format(L"Unit '%s' does not match dimension unit '%s' for '%s'.", parsed->unit, unit, change.name));
  const ProError status = ProDimensionValueSet(&dimension, parsed->number);
  if (static_cast<int>(status) == kReadOnlyStatus)
    return MakeFailureResult(
        L"Dimension is read-only. If the model is managed by Windchill, check it out first.");
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to set dimension '%s' (status=%d).", change.name, status));
  return FinishChange(host.model, change, [&] { return DimensionRow(host.model, dimension); });
}

// ---- operations
// --------------------------------------------------------------------------------------------

CreoMcpOperationResult ParametersList(const std::wstring&) {
  ParameterHost host;
  if (auto required = RequireParameterHost(host); !required.success) return required;
  std::vector<std::wstring> rows;
  if (!ListParameterRows(host.item, rows)) return MakeFailureResult(L"Failed to list parameters.");
  ListDimensionRows(host.model, rows);
  std::wstring joined;
  for (const std::wstring& row : rows) joined += (joined.empty() ? L"" : L",") + row;
  const int count = static_cast<int>(rows.size());
  return MakeSuccessResult(Format(L"Found %d parameter(s).", count),
                           Format(LR"({"parameters":%s,"count":%d})", L"[" + joined + L"]", count));
}

CreoMcpOperationResult ParametersGet(const std::wstring& arguments) {
  const std::wstring name = JsonReadStringArgument(arguments, L"name");
  if (name.empty()) return MakeFailureResult(L"'name' argument is required.");
  ParameterHost host;
  if (auto required = RequireParameterHost(host); !required.success) return required;

  std::wstring row;
  ProParameter parameter{};
  ProDimension dimension{};
  if (FindParameter(host.item, name, parameter)) {
    row = ParameterRow(parameter);
    if (row.empty()) return MakeFailureResult(Format(L"Failed to read parameter '%s'.", name));
  } else {
    if (!FindDimension(host.model, name, dimension)) return NotFound(name);
    row = DimensionRow(host.model, dimension);
    if (row.empty()) return MakeFailureResult(Format(L"Failed to read dimension '%s'.", name));
  }
  return MakeSuccessResult(Format(L"Parameter '%s' retrieved.", name), row);
}

}  // namespace

CreoMcpOperationResult ParametersSet(const std::wstring& arguments) {
  const std::wstring name = JsonReadStringArgument(arguments, L"name");
  if (name.empty()) return MakeFailureResult(L"'name' argument is required.");
  const std::wstring expression = JsonReadStringArgument(arguments, L"expression");
  if (expression.empty()) return MakeFailureResult(L"'expression' argument is required.");
  ParameterHost host;
  if (auto required = RequireParameterHost(host); !required.success) return required;

  ProParameter parameter{};
  if (FindParameter(host.item, name, parameter)) return SetParameter(host, parameter, {name, expression, {}});
  ProDimension dimension{};
  if (FindDimension(host.model, name, dimension))
    return SetDimension(host, dimension, {name, expression, {}});
  return NotFound(name);
}

void RegisterParameterOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_parameters_list", ParametersList);
  provider.RegisterOperation(L"api_parameters_get", ParametersGet);
  provider.RegisterOperation(L"api_parameters_set", ParametersSet);
}

}  // namespace vek::parameters
