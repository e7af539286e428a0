// Parts and assemblies.
#pragma once

#include "ProMdl.h"

typedef ProError (*ProFeatureVisitAction)(ProFeature* feature, ProError filter_status, ProAppData data);
typedef ProError (*ProFeatureFilterAction)(ProFeature* feature, ProAppData data);

PRO_TOOLKIT_CALL ProError ProSolidMdlnameCreate(ProMdlName name, ProMdlfileType type, ProSolid* solid);
PRO_TOOLKIT_CALL ProError ProSolidRegenerate(ProSolid solid, int flags);
PRO_TOOLKIT_CALL ProError ProSolidFeatVisit(ProSolid solid, ProFeatureVisitAction action,
                                            ProFeatureFilterAction filter, ProAppData data);

// What the whole solid weighs, at the density of its material, in the model's units.
typedef struct CreoMassProperties {
  double volume;
  double surface_area;
  double density;
  double mass;
  double center_of_gravity[3];
} ProMassProperty;

// In the coordinate system of that name; null is the model's own.
PRO_TOOLKIT_CALL ProError ProSolidMassPropertyGet(ProSolid solid, ProName coordinate_system,
                                                  ProMassProperty* properties);
// The corners of the box along the model's axes that holds the solid: lowest, then highest.
PRO_TOOLKIT_CALL ProError ProSolidOutlineGet(ProSolid solid, Pro3dPnt corners[2]);
