// Surfaces as data: what they are, where their parameters run, and their shape.
#pragma once

#include "ProGeomitem.h"

// The side of the surface that the material is not on: 1 along the surface's own normal, -1 against it. A
// cylinder with -1 is hollow.
typedef enum ProSurfaceOrients : int {
  PRO_SURF_ORIENT_IN = -1,
  PRO_SURF_ORIENT_NONE = 0,
  PRO_SURF_ORIENT_OUT = 1,
} ProSurfaceOrient;

typedef struct CreoPlaneData {
  ProVector e1;
  ProVector e2;
  ProVector e3;  // the normal
  ProVector origin;
} ProPlanedata;

// A point is origin + radius * (cos u * e1 + sin u * e2) + v * e3.
typedef struct CreoCylinderData {
  ProVector e1;
  ProVector e2;
  ProVector e3;  // the axis
  ProVector origin;
  double radius;
} ProCylinderdata;

// Filled for planes and cylinders, by the surface's type; zero for all others.
typedef union CreoSurfaceShape {
  ProPlanedata plane;
  ProCylinderdata cylinder;
} ProSurfaceshapedata;

typedef struct CreoSurfaceData {
  ProSrftype type;
  ProUvParam uv_min;
  ProUvParam uv_max;
  ProSurfaceOrient orient;
  ProSurfaceshapedata srf_shape;
  int id;
} ProSurfacedata;

// `obj_type` is 5 and the data that of a surface.
typedef struct CreoGeometryData {
  ProType obj_type;
  union {
    ProSurfacedata* p_surf_data;
  } data;
} ProGeomitemdata;

// A new record, freed with ProGeomitemdataFree.
PRO_TOOLKIT_CALL ProError ProSurfaceDataGet(ProSurface surface, ProGeomitemdata** data);
PRO_TOOLKIT_CALL ProError ProGeomitemdataFree(ProGeomitemdata** data);
// What a surface's record holds. Each output may be null.
PRO_TOOLKIT_CALL ProError ProSurfacedataGet(ProSurfacedata* data, ProSrftype* type, ProUvParam uv_min,
                                            ProUvParam uv_max, ProSurfaceOrient* orientation,
                                            ProSurfaceshapedata* shape, int* surface_id);
