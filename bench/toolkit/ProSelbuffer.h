// What the user has selected, ahead of any command.
#pragma once

#include "ProSelection.h"

// An array of selections, freed with ProSelectionarrayFree.
PRO_TOOLKIT_CALL ProError ProSelbufferSelectionsGet(ProSelection** selections);
