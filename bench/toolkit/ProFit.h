// Interference between the components of an assembly.
#pragma once

#include "ProSelection.h"
#include "ProSolid.h"

// 0 the parts at all depths against each other.
typedef enum ProFitComputeSetups : int { PRO_FIT_PARTS = 0, PRO_FIT_SUB_ASSEMBLIES = 1 } ProFitComputeSetup;

typedef struct CreoInterferenceData* ProInterferenceData;

// Two parts that share some space. The selections name them with their paths from the assembly down.
typedef struct CreoInterference {
  ProInterferenceData interf_data;
  ProSelection selection_1;
  ProSelection selection_2;
} ProInterferenceInfo;

// An array of the pairs that overlap, freed with ProInterferenceInfoProarrayFree; -4 when there are none.
// Parts that only touch don't overlap.
PRO_TOOLKIT_CALL ProError ProFitGlobalinterferenceCompute(ProSolid assembly, ProFitComputeSetup setup,
                                                          ProBoolean with_facets, ProBoolean with_quilts,
                                                          ProBoolean with_unseen,
                                                          ProInterferenceInfo** interferences);
// The volume that both share, in the assembly's units.
PRO_TOOLKIT_CALL ProError ProFitInterferencevolumeCompute(ProInterferenceData data, double* volume);
// Frees the array with its selections and its data.
PRO_TOOLKIT_CALL ProError ProInterferenceInfoProarrayFree(ProInterferenceInfo* interferences);
