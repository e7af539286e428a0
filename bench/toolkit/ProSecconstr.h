// Constraints of sections.
#pragma once

#include "ProSecdim.h"

// 0 same point, 1 horizontal, 2 vertical, 3 point on entity, 4 tangent, 5 perpendicular, 6 equal radii,
// 7 parallel, 8 equal lengths.
typedef enum ProConstraintTypes : int { PRO_CONSTRAINT_NONE = -1 } ProConstraintType;

// A selection of an entity of the section, or of one of its points.
PRO_TOOLKIT_CALL ProError ProSectionEntityGetSelected(ProSection section, int entity,
                                                      ProSectionPointType point, ProAsmcomppath* path,
                                                      int component, ProSelection* selection);
PRO_TOOLKIT_CALL ProError ProSectionConstraintCreate(ProSection section, ProSelection* references, int count,
                                                     ProConstraintType type, int* constraint);
