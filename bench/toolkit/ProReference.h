// References, which element trees hold.
#pragma once

#include "ProObjects.h"

PRO_TOOLKIT_CALL ProError ProReferenceAlloc(ProReference* reference);
PRO_TOOLKIT_CALL ProError ProReferenceSet(ProReference reference, ProAsmcomppath* path, ProModelitem* item);
PRO_TOOLKIT_CALL ProError ProReferenceFree(ProReference reference);
