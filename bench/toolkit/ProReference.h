// References, which element trees hold.
#pragma once

#include "ProObjects.h"

PRO_TOOLKIT_CALL ProError ProReferenceAlloc(ProReference* reference);
PRO_TOOLKIT_CALL ProError ProReferenceSet(ProReference reference, ProAsmcomppath* path, ProModelitem* item);
// A new selection of what the reference refers to, freed with ProSelectionFree.
PRO_TOOLKIT_CALL ProError ProReferenceToSelection(ProReference reference, ProSelection* selection);
PRO_TOOLKIT_CALL ProError ProReferenceFree(ProReference reference);
