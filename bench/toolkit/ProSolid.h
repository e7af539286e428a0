// Parts and assemblies.
#pragma once

#include "ProMdl.h"

typedef ProError (*ProFeatureVisitAction)(ProFeature* feature, ProError filter_status, ProAppData data);
typedef ProError (*ProFeatureFilterAction)(ProFeature* feature, ProAppData data);

PRO_TOOLKIT_CALL ProError ProSolidMdlnameCreate(ProMdlName name, ProMdlfileType type, ProSolid* solid);
PRO_TOOLKIT_CALL ProError ProSolidRegenerate(ProSolid solid, int flags);
PRO_TOOLKIT_CALL ProError ProSolidFeatVisit(ProSolid solid, ProFeatureVisitAction action,
                                            ProFeatureFilterAction filter, ProAppData data);
