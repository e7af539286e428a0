// Two-dimensional sections.
#pragma once

#include "Pro2dEntdef.h"
#include "ProObjects.h"

typedef struct CreoSection* ProSection;
typedef struct CreoSectionErrors* ProWSecerror;

PRO_TOOLKIT_CALL ProError ProSection2DAlloc(ProSection* section);
PRO_TOOLKIT_CALL ProError ProSectionIntentManagerModeSet(ProSection section, ProBoolean on);
PRO_TOOLKIT_CALL ProError ProSectionNameSet(ProSection section, ProName name);

PRO_TOOLKIT_CALL ProError ProSectionEntityAdd(ProSection section, Pro2dEntdef* entity, int* id);
PRO_TOOLKIT_CALL ProError ProSectionEntityDelete(ProSection section, int id);
// The record belongs to the section.
PRO_TOOLKIT_CALL ProError ProSectionEntityGet(ProSection section, int id, Pro2dEntdef** entity);
PRO_TOOLKIT_CALL ProError ProSectionEntityIdsGet(ProSection section, int** ids);
PRO_TOOLKIT_CALL ProError ProSectionEntityConstructionSet(ProSection section, int id,
                                                          ProBoolean construction);
PRO_TOOLKIT_CALL ProError ProSectionEntityIsConstruction(ProSection section, int id,
                                                         ProBoolean* construction);

PRO_TOOLKIT_CALL ProError ProSectionSolve(ProSection section, ProWSecerror* errors);
PRO_TOOLKIT_CALL ProError ProSectionRegenerate(ProSection section, ProWSecerror* errors);
PRO_TOOLKIT_CALL ProError ProSecerrorAlloc(ProWSecerror* errors);
PRO_TOOLKIT_CALL ProError ProSecerrorCount(ProWSecerror* errors, int* count);
PRO_TOOLKIT_CALL ProError ProSecerrorFree(ProWSecerror* errors);
