// The model tree beside a window.
#pragma once

#include "ProObjects.h"

PRO_TOOLKIT_CALL ProError ProTreetoolRefresh(ProMdl model);
