// Orientations of models in their windows and of the views of drawings.
#pragma once

#include "ProObjects.h"

// The rotation by which row vectors of the model become row vectors of the screen: x to the right, y up, z
// towards the viewer. A null view is the model's own window. Shift and scale stand in the matrix too, and
// come back as they were when it is set again.
PRO_TOOLKIT_CALL ProError ProViewMatrixGet(ProMdl model, ProView view, ProMatrix matrix);
PRO_TOOLKIT_CALL ProError ProViewMatrixSet(ProMdl model, ProView view, ProMatrix matrix);
