// Dimensions of sections.
#pragma once

#include "ProSection.h"

// Which point of an entity: 1 the whole entity, 2 its first end, 3 its second, 4 its centre.
typedef enum ProSectionPointTypes : int { PRO_ENT_WHOLE = 1 } ProSectionPointType;
// 1 length of a line, 2 distance of a point, 3 radius, 4 diameter, 12 angle between lines.
typedef enum ProSecdimTypes : int { PRO_SECDIM_NONE = -1 } ProSecdimType;

PRO_TOOLKIT_CALL ProError ProSecdimCreate(ProSection section, int* entities, ProSectionPointType* points,
                                          int count, ProSecdimType type, Pro2dPnt place, int* dimension);
// Lengths in model units, angles in radians.
PRO_TOOLKIT_CALL ProError ProSecdimValueSet(ProSection section, int dimension, double value);
