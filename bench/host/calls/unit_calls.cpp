// The calls of ProUnits.h.
#include <ProUnits.h>

#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/model/units.h"
#include "bench/host/text.h"

using namespace bench;

namespace {

ProError ResolveUnit(const ProUnititem* item, const Unit*& unit) {
  Model* model = nullptr;
  if (!item) return PRO_TK_BAD_INPUTS;
  if (const ProError status = Resolve(item->owner, model)) return status;
  unit = FindUnit(Bounded(item->name, PRO_NAME_SIZE));
  return unit ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
}

}  // namespace

ProError ProUnitInit(ProMdl model, ProName name, ProUnititem* unit) {
  HOST_CALL(model, static_cast<const wchar_t*>(name)) {
    Model* found = nullptr;
    if (!name || !unit) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    const Unit* known = FindUnit(Bounded(name, PRO_NAME_SIZE));
    if (!known) return PRO_TK_E_NOT_FOUND;
    CopyOut(known->name, unit->name);
    unit->owner = model;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProUnitNameGet(ProUnititem* unit, ProName name) {
  HOST_CALL(unit ? unit->name : L"") {
    const Unit* known = nullptr;
    if (!name) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveUnit(unit, known)) return status;
    CopyOut(known->name, *reinterpret_cast<ProName*>(name));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMdlPrincipalunitsystemGet(ProMdl model, ProUnitsystem* system) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (!system) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    if (found->type == PRO_MDL_DRAWING) return PRO_TK_INVALID_TYPE;
    CopyOut(SystemOf(found->length_unit).name, system->name);
    system->owner = model;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProUnitsystemUnitGet(ProUnitsystem* system, ProUnitType type, ProUnititem* unit) {
  HOST_CALL(static_cast<int>(type)) {
    Model* model = nullptr;
    if (!system || !unit) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(system->owner, model)) return status;
    const UnitSystem* known = FindUnitSystem(Bounded(system->name, PRO_NAME_SIZE));
    if (!known) return PRO_TK_E_NOT_FOUND;
    if (type != PRO_UNITTYPE_LENGTH && type != PRO_UNITTYPE_MASS) return PRO_TK_BAD_INPUTS;
    CopyOut(type == PRO_UNITTYPE_LENGTH ? known->length_name : known->mass_name, unit->name);
    unit->owner = system->owner;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProUnitConversionCalculate(ProUnititem* from, ProUnititem* to, ProUnitConversion* conversion) {
  HOST_CALL(from ? from->name : L"", to ? to->name : L"") {
    const Unit* given = nullptr;
    const Unit* wanted = nullptr;
    if (!conversion) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveUnit(from, given)) return status;
    if (const ProError status = ResolveUnit(to, wanted)) return status;
    if (given->type != wanted->type) return PRO_TK_BAD_INPUTS;
    *conversion = {given->in_base / wanted->in_base, 0.0};
    return PRO_TK_NO_ERROR;
  };
}
