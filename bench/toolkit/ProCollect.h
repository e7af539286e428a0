// Collections of curves and of surfaces: lists of instructions that the host carries out.
#pragma once

#include "ProObjects.h"

typedef struct CreoCollection* ProCollection;
typedef struct CreoCurveInstruction* ProCrvcollinstr;
typedef struct CreoSurfaceInstruction* ProSrfcollinstr;
typedef struct CreoSurfaceReference* ProSrfcollref;

// 101 one edge, 103 one composite curve, 108 all curves of a feature, 114 what runs on tangentially.
typedef enum ProCrvcollinstrTypes : int { PRO_CURVCOLL_EMPTY_INSTR = -1 } ProCrvcollinstrType;
// 1 single surfaces, 4 the surfaces of the whole solid.
typedef enum ProSrfcollinstrTypes : int { PRO_SURFCOLL_EMPTY_INSTR = -1 } ProSrfcollinstrType;
// 1 one surface.
typedef enum ProSrfcollrefTypes : int { PRO_SURFCOLL_REF_NONE = -1 } ProSrfcollrefType;

PRO_TOOLKIT_CALL ProError ProCrvcollectionAlloc(ProCollection* collection);
PRO_TOOLKIT_CALL ProError ProCrvcollinstrAlloc(ProCrvcollinstrType type, ProCrvcollinstr* instruction);
PRO_TOOLKIT_CALL ProError ProCrvcollinstrFree(ProCrvcollinstr instruction);
PRO_TOOLKIT_CALL ProError ProCrvcollinstrReferenceAdd(ProCrvcollinstr instruction, ProReference reference);
// From here on the instruction belongs to the collection.
PRO_TOOLKIT_CALL ProError ProCrvcollectionInstructionAdd(ProCollection collection,
                                                         ProCrvcollinstr instruction);
// Carries the instructions out: the curves and edges that come of them, freed with ProSelectionarrayFree.
PRO_TOOLKIT_CALL ProError ProCrvcollectionRegenerate(ProCollection collection, ProSelection** selections,
                                                     int* count);

PRO_TOOLKIT_CALL ProError ProSrfcollectionAlloc(ProCollection* collection);
PRO_TOOLKIT_CALL ProError ProSrfcollinstrAlloc(ProSrfcollinstrType type, ProBoolean include,
                                               ProSrfcollinstr* instruction);
PRO_TOOLKIT_CALL ProError ProSrfcollinstrFree(ProSrfcollinstr instruction);
PRO_TOOLKIT_CALL ProError ProSrfcollinstrIncludeSet(ProSrfcollinstr instruction, ProBoolean include);
PRO_TOOLKIT_CALL ProError ProSrfcollrefAlloc(ProSrfcollrefType type, ProReference reference,
                                             ProSrfcollref* surface_reference);
PRO_TOOLKIT_CALL ProError ProSrfcollrefFree(ProSrfcollref surface_reference);
// From here on the reference belongs to the instruction.
PRO_TOOLKIT_CALL ProError ProSrfcollinstrReferenceAdd(ProSrfcollinstr instruction,
                                                      ProSrfcollref surface_reference);
// From here on the instruction belongs to the collection.
PRO_TOOLKIT_CALL ProError ProSrfcollectionInstructionAdd(ProCollection collection,
                                                         ProSrfcollinstr instruction);

// With the instructions that belong to it. A collection that was set into an element is the tree's; freeing
// it here as well does no harm.
PRO_TOOLKIT_CALL ProError ProCollectionFree(ProCollection* collection);
