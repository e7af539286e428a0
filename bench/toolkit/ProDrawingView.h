// Views on drawings. Points and outlines are in the coordinates of the sheet.
#pragma once

#include "ProCurvedata.h"
#include "ProDrawing.h"

// 0 general, 1 projected, 2 auxiliary, 3 detail, 4 revolve, 6 copy and align, 8 flat ply.
typedef enum ProViewTypes : int { PRO_VIEW_NONE = -1 } ProViewType;
// 1 the whole view is cut.
typedef enum ProDrawingViewSectionAreaTypes : int {
  PRO_VIEW_SECTION_AREA_NONE = -1
} ProDrawingViewSectionAreaType;

// An array of the views of all sheets, freed with ProArrayFree; -4 when there are none.
PRO_TOOLKIT_CALL ProError ProDrawingViewsCollect(ProDrawing drawing, ProView** views);
PRO_TOOLKIT_CALL ProError ProDrawingViewSheetGet(ProDrawing drawing, ProView view, int* sheet);
PRO_TOOLKIT_CALL ProError ProDrawingViewNameGet(ProDrawing drawing, ProView view, ProName name);
PRO_TOOLKIT_CALL ProError ProDrawingViewTypeGet(ProDrawing drawing, ProView view, ProViewType* type);
PRO_TOOLKIT_CALL ProError ProDrawingViewScaleGet(ProDrawing drawing, ProView view, double* scale);
PRO_TOOLKIT_CALL ProError ProDrawingViewScaleSet(ProDrawing drawing, ProView view, double scale);
// Two opposite corners, in no particular order.
PRO_TOOLKIT_CALL ProError ProDrawingViewOutlineGet(ProDrawing drawing, ProView view, ProPoint3d outline[2]);
PRO_TOOLKIT_CALL ProError ProDrawingViewSolidGet(ProDrawing drawing, ProView view, ProSolid* solid);

// A scale below 0 leaves the view to the scale of its sheet.
PRO_TOOLKIT_CALL ProError ProDrawingGeneralviewCreate(ProDrawing drawing, ProSolid solid, int sheet,
                                                      ProBoolean exploded, ProPoint3d point, double scale,
                                                      ProMatrix orientation, ProView* view);
PRO_TOOLKIT_CALL ProError ProDrawingProjectedviewCreate(ProDrawing drawing, ProView parent,
                                                        ProBoolean exploded, ProPoint3d point, ProView* view);
// The reference on `parent` and its point name the middle of what is shown, the closed curve its border.
PRO_TOOLKIT_CALL ProError ProDrawingViewDetailCreate(ProDrawing drawing, ProView parent,
                                                     ProSelection reference, ProCurvedata* border,
                                                     ProPoint3d point, ProView* view);
// Shows the view cut along a cross-section of its solid; `arrows` is the view that shows where it is cut.
PRO_TOOLKIT_CALL ProError ProDrawingView2DSectionSet(ProDrawing drawing, ProView view, ProName cross_section,
                                                     ProDrawingViewSectionAreaType area,
                                                     ProSelection reference, ProCurvedata* border,
                                                     ProView arrows);
