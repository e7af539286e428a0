// Curves as data.
#pragma once

#include "ProGeomitem.h"

// The arrays stay the caller's, and have to last as long as the record is used.
typedef struct CreoSplineData {
  int type;
  double* par_arr;
  ProPoint3d* pnt_arr;
  ProVector* tan_arr;
  int num_points;
} ProSplinedata;

// `spline` is the member for what ProSplinedataInit has filled.
typedef union CreoCurveData {
  int type;
  ProSplinedata spline;
} ProCurvedata;

PRO_TOOLKIT_CALL ProError ProSplinedataInit(double* parameters, ProPoint3d* points, ProVector* tangents,
                                            int count, ProSplinedata* spline);
