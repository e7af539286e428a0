// Matrices.
#pragma once

#include "ProGeomitem.h"

// The placement with these axes and this origin.
PRO_TOOLKIT_CALL ProError ProMatrixInit(ProVector x_axis, ProVector y_axis, ProVector z_axis,
                                        ProPoint3d origin, ProMatrix matrix);
