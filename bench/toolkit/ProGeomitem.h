// Surfaces, contours and edges of solids, and the items that name them.
//
// A handle is the host's and stays good as long as what it names is part of the model.
#pragma once

#include "ProSolid.h"

typedef struct CreoSurface* ProSurface;
typedef struct CreoContour* ProContour;
typedef struct CreoEdge* ProEdge;

typedef double ProPoint3d[3];
typedef double ProVector[3];
typedef double ProUvParam[2];

// 34 plane, 36 cylinder, 37 cone, 38 torus, 43 revolved, 44 extruded, 45 spline, 46 foreign, 48 fillet.
typedef enum ProSrftypes : int { PRO_SRF_NONE = -1 } ProSrftype;

// 2 line, 3 arc, 4 ellipse, 5 spline, 12 B-spline.
typedef enum ProEnttypes : int { PRO_ENT_NONE = -1 } ProEnttype;

typedef ProError (*ProSurfaceAction)(ProSurface surface, ProError filter_status, ProAppData data);
typedef ProError (*ProSurfaceFilter)(ProSurface surface, ProAppData data);
typedef ProError (*ProContourAction)(ProContour contour, ProError filter_status, ProAppData data);
typedef ProError (*ProContourFilter)(ProContour contour, ProAppData data);
typedef ProError (*ProEdgeAction)(ProEdge edge, ProError filter_status, ProAppData data);
typedef ProError (*ProEdgeFilter)(ProEdge edge, ProAppData data);

PRO_TOOLKIT_CALL ProError ProSolidSurfaceVisit(ProSolid solid, ProSurfaceAction action,
                                               ProSurfaceFilter filter, ProAppData data);
PRO_TOOLKIT_CALL ProError ProSurfaceContourVisit(ProSurface surface, ProContourAction action,
                                                 ProContourFilter filter, ProAppData data);
PRO_TOOLKIT_CALL ProError ProContourEdgeVisit(ProSurface surface, ProContour contour, ProEdgeAction action,
                                              ProEdgeFilter filter, ProAppData data);

PRO_TOOLKIT_CALL ProError ProGeomitemToSurface(ProGeomitem* item, ProSurface* surface);
PRO_TOOLKIT_CALL ProError ProSurfaceToGeomitem(ProSolid solid, ProSurface surface, ProGeomitem* item);
PRO_TOOLKIT_CALL ProError ProGeomitemToEdge(ProGeomitem* item, ProEdge* edge);
PRO_TOOLKIT_CALL ProError ProEdgeToGeomitem(ProSolid solid, ProEdge edge, ProGeomitem* item);
PRO_TOOLKIT_CALL ProError ProGeomitemFeatureGet(ProGeomitem* item, ProFeature* feature);
PRO_TOOLKIT_CALL ProError ProGeomitemIsInactive(ProGeomitem* item, ProBoolean* inactive);

PRO_TOOLKIT_CALL ProError ProSurfaceTypeGet(ProSurface surface, ProSrftype* type);
PRO_TOOLKIT_CALL ProError ProSurfaceAreaEval(ProSurface surface, double* area);
PRO_TOOLKIT_CALL ProError ProSurfaceDiameterEval(ProSurface surface, ProUvParam uv, double* diameter);
// The surface's outermost points against and along a direction.
PRO_TOOLKIT_CALL ProError ProSurfaceExtremesEval(ProSurface surface, ProVector direction, ProPoint3d low,
                                                 ProPoint3d high);
// Point, first and second derivatives, and the normal out of the material. Each output may be null.
PRO_TOOLKIT_CALL ProError ProSurfaceXyzdataEval(ProSurface surface, ProUvParam uv, ProPoint3d point,
                                                ProVector first_derivatives[2],
                                                ProVector second_derivatives[3], ProVector normal);

PRO_TOOLKIT_CALL ProError ProEdgeIdGet(ProEdge edge, int* id);
PRO_TOOLKIT_CALL ProError ProEdgeTypeGet(ProEdge edge, ProEnttype* type);
// The next edges on the two surfaces, and these; null where there is none.
PRO_TOOLKIT_CALL ProError ProEdgeNeighborsGet(ProEdge edge, ProEdge* edge1, ProEdge* edge2, ProSurface* face1,
                                              ProSurface* face2);
// At a parameter from 0 to 1: point, first and second derivative, direction. Each output may be null.
PRO_TOOLKIT_CALL ProError ProEdgeXyzdataEval(ProEdge edge, double parameter, ProPoint3d point,
                                             ProVector first_derivative, ProVector second_derivative,
                                             ProVector direction);
