// The calls of ProParameter.h.
#include <ProParameter.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <vector>

#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/model/units.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr auto kOwnerIsModel = static_cast<ProParamownerType>(0);
constexpr auto kReadOnly = static_cast<ProError>(-48);
constexpr auto kLocked = static_cast<ProLockstatus>(1);
constexpr auto kParameterItem = static_cast<ProType>(88);

ProError ResolveParameter(const ProParameter* record, Model*& model, Parameter*& parameter) {
  if (!record || record->owner.type != kOwnerIsModel) return PRO_TK_BAD_INPUTS;
  if (const ProError status = Resolve(record->owner.who.model, model)) return status;
  const std::wstring_view name = Bounded(record->id, PRO_NAME_SIZE);
  const auto found = std::ranges::find_if(
      model->parameters, [&](const Parameter& each) { return EqualsIgnoringCase(each.name, name); });
  if (found == model->parameters.end()) return PRO_TK_E_NOT_FOUND;
  parameter = &*found;
  return PRO_TK_NO_ERROR;
}

// Runs `body(model, parameter)` on a live parameter.
template <typename Body>
ProError WithParameter(const ProParameter* record, Body&& body) {
  Model* model = nullptr;
  Parameter* parameter = nullptr;
  const ProError status = ResolveParameter(record, model, parameter);
  return status == PRO_TK_NO_ERROR ? body(*model, *parameter) : status;
}

const wchar_t* NameIn(const ProParameter* record) {
  return record ? record->id : nullptr;
}

void Read(const Parameter& parameter, ProParamvalue& record) {
  record = {};
  if (const auto* number = std::get_if<double>(&parameter.value)) {
    record.type = PRO_PARAM_DOUBLE;
    record.value.d_val = *number;
  } else if (const auto* text = std::get_if<std::wstring>(&parameter.value)) {
    record.type = PRO_PARAM_STRING;
    CopyOut(*text, record.value.s_val);
  } else if (const auto* integer = std::get_if<int>(&parameter.value)) {
    record.type = PRO_PARAM_INTEGER;
    record.value.i_val = *integer;
  } else {
    record.type = PRO_PARAM_BOOLEAN;
    record.value.l_val = std::get<bool>(parameter.value) ? PRO_B_TRUE : PRO_B_FALSE;
  }
}

ProError GiveUnit(const Model& model, const Parameter& parameter, ProUnititem& unit) {
  if (parameter.unit.empty()) return PRO_TK_E_NOT_FOUND;
  CopyOut(parameter.unit, unit.name);
  unit.owner = const_cast<Model*>(&model);
  return PRO_TK_NO_ERROR;
}

// Gives the parameter a value of the type that it has; `factor` converts a number.
ProError Write(Model& model, Parameter& parameter, const ProParamvalue& record, double factor) {
  if (parameter.locked) return kReadOnly;
  Parameter candidate = parameter;
  switch (record.type) {
    case PRO_PARAM_DOUBLE:
      if (!std::isfinite(record.value.d_val * factor)) return PRO_TK_BAD_INPUTS;
      candidate.value = record.value.d_val * factor;
      break;
    case PRO_PARAM_STRING:
      candidate.value = std::wstring(Bounded(record.value.s_val, PRO_LINE_SIZE));
      break;
    case PRO_PARAM_INTEGER:
      candidate.value = record.value.i_val;
      break;
    case PRO_PARAM_BOOLEAN:
      candidate.value = record.value.l_val != PRO_B_FALSE;
      break;
    default:
      return PRO_TK_INVALID_TYPE;
  }
  if (candidate.value.index() != parameter.value.index()) return PRO_TK_INVALID_TYPE;
  parameter = std::move(candidate);
  model.modified = true;
  return PRO_TK_NO_ERROR;
}

// One of `from` in the parameter's own unit; nothing when they measure different things.
std::optional<double> FactorFrom(const ProUnititem& from, const Parameter& parameter) {
  const Unit* given = FindUnit(Bounded(from.name, PRO_NAME_SIZE));
  const Unit* own = FindUnit(parameter.unit);
  if (!given || !own || given->type != own->type) return std::nullopt;
  return given->in_base / own->in_base;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProParameterVisit(ProModelitem* owner, ProParameterFilter filter, ProParameterAction action,
                           ProAppData data) {
  HOST_CALL(owner) {
    Model* model = nullptr;
    if (!owner || !action) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(owner->owner, model)) return status;
    // Items of models have no parameters here.
    if (static_cast<int>(owner->type) != static_cast<int>(model->type)) return PRO_TK_E_NOT_FOUND;
    std::vector<ProParameter> records;
    for (const Parameter& parameter : model->parameters) {
      ProParameter record{};
      record.type = kParameterItem;
      CopyOut(parameter.name, record.id);
      record.owner.type = kOwnerIsModel;
      record.owner.who.model = owner->owner;
      records.push_back(record);
    }
    if (records.empty()) return PRO_TK_E_NOT_FOUND;
    for (ProParameter& record : records) {
      const ProError filtered = filter ? filter(&record, data) : PRO_TK_NO_ERROR;
      if (filtered == PRO_TK_CONTINUE) continue;
      if (const ProError answer = action(&record, filtered, data)) return answer;
    }
    return PRO_TK_NO_ERROR;
  };
}

ProError ProParamvalueSet(ProParamvalue* record, void* value, ProParamvalueType type) {
  HOST_CALL(static_cast<int>(type)) {
    if (!record || !value) return PRO_TK_BAD_INPUTS;
    ProParamvalue filled{};
    filled.type = type;
    switch (type) {
      case PRO_PARAM_DOUBLE:
        filled.value.d_val = *static_cast<const double*>(value);
        break;
      case PRO_PARAM_STRING: {
        const auto* text = static_cast<const wchar_t*>(value);
        if (std::wcslen(text) >= PRO_LINE_SIZE) return PRO_TK_LINE_TOO_LONG;
        CopyOut(text, filled.value.s_val);
        break;
      }
      case PRO_PARAM_INTEGER:
        filled.value.i_val = *static_cast<const int*>(value);
        break;
      case PRO_PARAM_BOOLEAN:
        filled.value.l_val = *static_cast<const ProBoolean*>(value);
        break;
      default:
        return PRO_TK_INVALID_TYPE;
    }
    *record = filled;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProParameterValueWithUnitsGet(ProParameter* parameter, ProParamvalue* value, ProUnititem* unit) {
  HOST_CALL(NameIn(parameter)) {
    if (!value) return PRO_TK_BAD_INPUTS;
    return WithParameter(parameter, [&](const Model& model, const Parameter& found) {
      Read(found, *value);
      if (unit) {
        *unit = {};
        GiveUnit(model, found, *unit);
      }
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProParameterValueWithUnitsSet(ProParameter* parameter, ProParamvalue* value, ProUnititem* unit) {
  HOST_CALL(NameIn(parameter)) {
    if (!value) return PRO_TK_BAD_INPUTS;
    return WithParameter(parameter, [&](Model& model, Parameter& found) {
      // A number keeps its unit here; giving it another one is not taken.
      return unit ? PRO_TK_NOT_IMPLEMENTED : Write(model, found, *value, 1);
    });
  };
}

ProError ProParameterScaledvalueSet(ProParameter* parameter, ProParamvalue* value, ProUnititem* unit) {
  HOST_CALL(NameIn(parameter), unit ? unit->name : L"") {
    if (!value) return PRO_TK_BAD_INPUTS;
    return WithParameter(parameter, [&](Model& model, Parameter& found) {
      const std::optional<double> factor = unit ? FactorFrom(*unit, found) : 1.0;
      return factor ? Write(model, found, *value, *factor) : PRO_TK_BAD_INPUTS;
    });
  };
}

ProError ProParameterUnitsGet(ProParameter* parameter, ProUnititem* unit) {
  HOST_CALL(NameIn(parameter)) {
    if (!unit) return PRO_TK_BAD_INPUTS;
    return WithParameter(
        parameter, [&](const Model& model, const Parameter& found) { return GiveUnit(model, found, *unit); });
  };
}

ProError ProParameterLockstatusGet(ProParameter* parameter, ProLockstatus* status) {
  HOST_CALL(NameIn(parameter)) {
    if (!status) return PRO_TK_BAD_INPUTS;
    return WithParameter(parameter, [&](const Model&, const Parameter& found) {
      *status = found.locked ? kLocked : PRO_PARAMLOCKSTATUS_UNLOCKED;
      return PRO_TK_NO_ERROR;
    });
  };
}
