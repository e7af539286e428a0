// Components of assemblies: their paths, places and constraints.
#pragma once

#include "ProArray.h"
#include "ProSolid.h"

typedef ProFeature ProAsmcomp;
typedef int ProIdTable[PRO_MAX_ASSEM_LEVEL];

PRO_TOOLKIT_CALL ProError ProAsmcomppathInit(ProSolid assembly, ProIdTable ids, int count,
                                             ProAsmcomppath* path);
// The place of what the path leads to: from the bottom up (1) in the owner's coordinates, top down (0) the
// reverse.
PRO_TOOLKIT_CALL ProError ProAsmcomppathTrfGet(ProAsmcomppath* path, ProBoolean bottom_up, ProMatrix place);

PRO_TOOLKIT_CALL ProError ProAsmcomppathMdlGet(ProAsmcomppath* path, ProMdl* model);

typedef ProError (*ProSolidDispCompVisitAction)(ProAsmcomppath* path, ProSolid solid, ProBoolean down,
                                                ProAppData data);
typedef ProError (*ProSolidDispCompVisitFilter)(ProAsmcomppath* path, ProSolid solid, ProAppData data);
// Visits every displayed component at every depth, on the way down and again on the way up.
PRO_TOOLKIT_CALL ProError ProSolidDispCompVisit(ProSolid assembly, ProSolidDispCompVisitAction action,
                                                ProSolidDispCompVisitFilter filter, ProAppData data);

PRO_TOOLKIT_CALL ProError ProAsmcompAssemble(ProSolid assembly, ProSolid model, ProMatrix place,
                                             ProAsmcomp* component);
PRO_TOOLKIT_CALL ProError ProAsmcompMdlGet(ProAsmcomp* component, ProMdl* model);
PRO_TOOLKIT_CALL ProError ProAsmcompPositionGet(ProAsmcomp* component, ProMatrix place);
PRO_TOOLKIT_CALL ProError ProAsmcompPositionSet(ProAsmcomppath* path, ProAsmcomp* component, ProMatrix place);
PRO_TOOLKIT_CALL ProError ProAsmcompSetPlaced(ProAsmcomp* component, ProBoolean placed);
PRO_TOOLKIT_CALL ProError ProAsmcompRegenerate(ProAsmcomp* component, ProBoolean update);

typedef struct CreoAssemblyConstraint* ProAsmcompconstraint;

// 0 mate, 1 mate offset, 2 align, 3 align offset, 4 insert, 5 parallel, 6 coordinate system, 7 tangent, 13
// fix, 31 angle, 34 perpendicular.
typedef enum ProAsmcompConstrTypes : int { PRO_ASM_UNDEFINED = -1 } ProAsmcompConstrType;
typedef enum ProDatumsides : int { PRO_DATUM_SIDE_NONE = 0 } ProDatumside;

PRO_TOOLKIT_CALL ProError ProAsmcompconstraintAlloc(ProAsmcompconstraint* constraint);
PRO_TOOLKIT_CALL ProError ProAsmcompconstraintFree(ProAsmcompconstraint constraint);
// Frees an array of constraints with the constraints in it.
PRO_TOOLKIT_CALL ProError ProAsmcompconstraintArrayFree(ProAsmcompconstraint* constraints);
PRO_TOOLKIT_CALL ProError ProAsmcompconstraintTypeGet(ProAsmcompconstraint constraint,
                                                      ProAsmcompConstrType* type);
PRO_TOOLKIT_CALL ProError ProAsmcompconstraintTypeSet(ProAsmcompconstraint constraint,
                                                      ProAsmcompConstrType type);
// A new selection, freed with ProSelectionFree.
PRO_TOOLKIT_CALL ProError ProAsmcompconstraintAsmreferenceGet(ProAsmcompconstraint constraint,
                                                              ProSelection* reference, ProDatumside* side);
PRO_TOOLKIT_CALL ProError ProAsmcompconstraintAsmreferenceSet(ProAsmcompconstraint constraint,
                                                              ProSelection reference, ProDatumside side);
PRO_TOOLKIT_CALL ProError ProAsmcompconstraintCompreferenceSet(ProAsmcompconstraint constraint,
                                                               ProSelection reference, ProDatumside side);
// Model units, or degrees of an angle.
PRO_TOOLKIT_CALL ProError ProAsmcompconstraintOffsetSet(ProAsmcompconstraint constraint, double offset);

// An array of constraints, freed with ProAsmcompconstraintArrayFree.
PRO_TOOLKIT_CALL ProError ProAsmcompConstraintsGet(ProAsmcomp* component, ProAsmcompconstraint** constraints);
PRO_TOOLKIT_CALL ProError ProAsmcompConstraintsSet(ProAsmcomppath* path, ProAsmcomp* component,
                                                   ProAsmcompconstraint* constraints);
PRO_TOOLKIT_CALL ProError ProAsmcompAllConstrRemove(ProAsmcomp* component);
