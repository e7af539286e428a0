// Cross-sections of parts and assemblies, known by their names.
#pragma once

#include "ProSolid.h"

typedef ProModelitem ProXsec;

typedef ProError (*ProXsecVisitAction)(ProXsec* cross_section, ProError filter_status, ProAppData data);
typedef ProError (*ProXsecFilterAction)(ProXsec* cross_section, ProAppData data);

PRO_TOOLKIT_CALL ProError ProSolidXsecVisit(ProSolid solid, ProXsecVisitAction action,
                                            ProXsecFilterAction filter, ProAppData data);
PRO_TOOLKIT_CALL ProError ProXsecNameGet(ProXsec* cross_section, ProName name);

// A cut along a datum plane or planar face, named by its surface's id. What is cut is 0, the solid, or 1, the
// quilt of that id, else -1.
PRO_TOOLKIT_CALL ProError ProXsecPlanarWithoptionsCreate(ProSolid solid, wchar_t* name, int surface_id,
                                                         int cut_object, int one_sided, int quilt_id,
                                                         ProBoolean flip, ProBoolean exclude,
                                                         int* component_ids, ProXsec* cross_section);
// The older call for the same.
PRO_TOOLKIT_CALL ProError ProXsecPlanarCreate(ProSolid solid, wchar_t* name, int surface_id, int cut_object,
                                              int quilt_id, ProXsec* cross_section);
