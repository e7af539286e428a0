// Dimensions of parts and assemblies, known by their symbols.
#pragma once

#include "ProSolid.h"

typedef ProModelitem ProDimension;

// 21 angular.
typedef enum ProDimensiontypes : int { PRODIMTYPE_UNKNOWN = -1 } ProDimensiontype;

typedef ProError (*ProDimensionVisitAction)(ProDimension* dimension, ProError filter_status, ProAppData data);
typedef ProError (*ProDimensionFilterAction)(ProDimension* dimension, ProAppData data);

PRO_TOOLKIT_CALL ProError ProSolidDimensionVisit(ProSolid solid, ProBoolean reference_dimensions,
                                                 ProDimensionVisitAction action,
                                                 ProDimensionFilterAction filter, ProAppData data);
PRO_TOOLKIT_CALL ProError ProDimensionSymbolGet(ProDimension* dimension, ProName symbol);
PRO_TOOLKIT_CALL ProError ProDimensionTypeGet(ProDimension* dimension, ProDimensiontype* type);
// Model units, or degrees of an angular dimension.
PRO_TOOLKIT_CALL ProError ProDimensionValueGet(ProDimension* dimension, double* value);
// The geometry follows with the next regeneration.
PRO_TOOLKIT_CALL ProError ProDimensionValueSet(ProDimension* dimension, double value);
PRO_TOOLKIT_CALL ProError ProDimensionIsReldriven(ProDimension* dimension, ProBoolean* driven);
