// Annotations of models on drawings.
#pragma once

#include "ProObjects.h"

// 8 dimensions that drive the model.
typedef enum ProAnnotationTypes : int { PRO_ANNOT_TYPE_NONE = -1 } ProAnnotationType;

PRO_TOOLKIT_CALL ProError ProAnnotationByViewShow(ProDrawing drawing, ProView view, ProAnnotationType type);
