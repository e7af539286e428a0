// Units and unit systems.
#pragma once

#include "ProObjects.h"

typedef enum ProUnitTypes : int { PRO_UNITTYPE_LENGTH = 0, PRO_UNITTYPE_MASS = 1 } ProUnitType;

typedef struct CreoUnit {
  ProName name;
  ProMdl owner;
} ProUnititem;

typedef struct CreoUnitSystem {
  ProName name;
  ProMdl owner;
} ProUnitsystem;

typedef struct CreoUnitConversion {
  double scale;
  double offset;
} ProUnitConversion;

PRO_TOOLKIT_CALL ProError ProUnitInit(ProMdl model, ProName name, ProUnititem* unit);
PRO_TOOLKIT_CALL ProError ProUnitNameGet(ProUnititem* unit, ProName name);
PRO_TOOLKIT_CALL ProError ProMdlPrincipalunitsystemGet(ProMdl model, ProUnitsystem* system);
PRO_TOOLKIT_CALL ProError ProUnitsystemUnitGet(ProUnitsystem* system, ProUnitType type, ProUnititem* unit);
// One `from` is `scale` of `to`.
PRO_TOOLKIT_CALL ProError ProUnitConversionCalculate(ProUnititem* from, ProUnititem* to,
                                                     ProUnitConversion* conversion);
