// Parameters of models and of their items.
#pragma once

#include "ProUnits.h"

typedef enum ProParamvalueTypes : int {
  PRO_PARAM_DOUBLE = 50,
  PRO_PARAM_STRING = 51,
  PRO_PARAM_INTEGER = 52,
  PRO_PARAM_BOOLEAN = 53,
} ProParamvalueType;

#define PRO_LINE_SIZE 81
typedef wchar_t ProLine[PRO_LINE_SIZE];

typedef struct CreoParameterValue {
  ProParamvalueType type;
  union {
    double d_val;
    ProLine s_val;
    int i_val;
    ProBoolean l_val;
  } value;
} ProParamvalue;

// 0 the model itself, 1 an item of it.
typedef enum ProParamownerTypes : int { PRO_PARAMOWNER_UNUSED = -1 } ProParamownerType;

typedef struct CreoParameterOwner {
  ProParamownerType type;
  union {
    ProMdl model;
    ProModelitem item;
  } who;
} ProParamowner;

typedef struct CreoParameter {
  ProType type;
  ProName id;
  ProParamowner owner;
} ProParameter;

// 0 unlocked.
typedef enum ProLockstatuses : int { PRO_PARAMLOCKSTATUS_UNLOCKED = 0 } ProLockstatus;

typedef ProError (*ProParameterAction)(ProParameter* parameter, ProError filter_status, ProAppData data);
typedef ProError (*ProParameterFilter)(ProParameter* parameter, ProAppData data);

PRO_TOOLKIT_CALL ProError ProParameterVisit(ProModelitem* owner, ProParameterFilter filter,
                                            ProParameterAction action, ProAppData data);
// Fills a record; `value` points to a double, an int, a ProBoolean, or is the text.
PRO_TOOLKIT_CALL ProError ProParamvalueSet(ProParamvalue* record, void* value, ProParamvalueType type);
PRO_TOOLKIT_CALL ProError ProParameterValueWithUnitsGet(ProParameter* parameter, ProParamvalue* value,
                                                        ProUnititem* unit);
PRO_TOOLKIT_CALL ProError ProParameterValueWithUnitsSet(ProParameter* parameter, ProParamvalue* value,
                                                        ProUnititem* unit);
// Converts a number from `unit`, when there is one, into the parameter's own.
PRO_TOOLKIT_CALL ProError ProParameterScaledvalueSet(ProParameter* parameter, ProParamvalue* value,
                                                     ProUnititem* unit);
PRO_TOOLKIT_CALL ProError ProParameterUnitsGet(ProParameter* parameter, ProUnititem* unit);
PRO_TOOLKIT_CALL ProError ProParameterLockstatusGet(ProParameter* parameter, ProLockstatus* status);
