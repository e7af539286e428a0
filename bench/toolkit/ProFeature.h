// Features: kind, state, creation, redefinition, deletion, suppression.
#pragma once

#include "ProElement.h"
#include "ProSolid.h"

typedef int ProFeattype;

typedef enum ProFeatStatuses : int {
  PRO_FEAT_ACTIVE = 0,
  PRO_FEAT_INACTIVE = 1,
  PRO_FEAT_SUPPRESSED = 5,
  PRO_FEAT_UNREGENERATED = 6,
} ProFeatStatus;

// 0 the feature stays although it failed to regenerate, 1 and 6 it is taken back then, 2 incomplete feature.
typedef enum ProFeatureCreateOption : int { PRO_FEAT_CR_NO_OPTS = 0 } ProFeatureCreateOptions;
typedef enum ProFeatureDeleteOption : int { PRO_FEAT_DELETE_NO_OPTS = 0 } ProFeatureDeleteOptions;
typedef enum ProFeatureSuppressOption : int { PRO_FEAT_SUPPRESS_NO_OPTS = 0 } ProFeatureSuppressOptions;
typedef enum ProFeatureResumeOption : int { PRO_FEAT_RESUME_NO_OPTS = 0 } ProFeatureResumeOptions;
typedef enum ProFeatureElemtreeExtractOption : int {
  PRO_FEAT_EXTRACT_NO_OPTS = 0
} ProFeatureElemtreeExtractOptions;

typedef struct CreoFeatureError {
  int err_item_id;
  int error;
} ProErrorStruct;

typedef struct CreoFeatureErrors {
  ProErrorStruct* error_list;
  int error_number;
} ProErrorlist;

typedef ProError (*ProGeomitemAction)(ProGeomitem* item, ProError filter_status, ProAppData data);
typedef ProError (*ProGeomitemFilter)(ProGeomitem* item, ProAppData data);

PRO_TOOLKIT_CALL ProError ProFeatureInit(ProSolid solid, int id, ProFeature* feature);
PRO_TOOLKIT_CALL ProError ProFeatureTypeGet(ProFeature* feature, ProFeattype* type);
PRO_TOOLKIT_CALL ProError ProFeatureStatusGet(ProFeature* feature, ProFeatStatus* status);
PRO_TOOLKIT_CALL ProError ProFeatureIsIncomplete(ProFeature* feature, ProBoolean* incomplete);
// Bits of state: 64 and 128 for a feature that failed to regenerate.
PRO_TOOLKIT_CALL ProError ProFeatureStatusflagsGet(ProFeature* feature, int* flags);
PRO_TOOLKIT_CALL ProError ProFeatureGeomitemVisit(ProFeature* feature, ProType item_type,
                                                  ProGeomitemAction action, ProGeomitemFilter filter,
                                                  ProAppData data);

PRO_TOOLKIT_CALL ProError ProFeatureWithoptionsCreate(ProSelection model, ProElement tree,
                                                      ProFeatureCreateOptions* options, int flags,
                                                      ProFeature* feature, ProErrorlist* errors);
PRO_TOOLKIT_CALL ProError ProFeatureSketchedWithOptionsCreate(ProSelection model, ProElement tree,
                                                              ProFeatureCreateOptions* options,
                                                              ProSelection* sketches, int flags,
                                                              ProFeature* feature, ProErrorlist* errors);
PRO_TOOLKIT_CALL ProError ProFeatureWithoptionsRedefine(ProAsmcomppath* path, ProFeature* feature,
                                                        ProElement tree, ProFeatureCreateOptions* options,
                                                        int flags, ProErrorlist* errors);

PRO_TOOLKIT_CALL ProError ProFeatureD3elemMatrixSet(ProElement element, ProMatrix matrix);

PRO_TOOLKIT_CALL ProError ProFeatureElemtreeExtract(ProFeature* feature, ProAsmcomppath* path,
                                                    ProFeatureElemtreeExtractOptions options,
                                                    ProElement* tree);
PRO_TOOLKIT_CALL ProError ProFeatureElemtreeFree(ProFeature* feature, ProElement tree);

PRO_TOOLKIT_CALL ProError ProFeatureDelete(ProSolid solid, int* ids, int count,
                                           ProFeatureDeleteOptions* options, int option_count);
PRO_TOOLKIT_CALL ProError ProFeatureWithoptionsDelete(ProSolid solid, int* ids,
                                                      ProFeatureDeleteOptions* options, int flags);
PRO_TOOLKIT_CALL ProError ProFeatureWithoptionsSuppress(ProSolid solid, int* ids,
                                                        ProFeatureSuppressOptions* options, int flags);
PRO_TOOLKIT_CALL ProError ProFeatureWithoptionsResume(ProSolid solid, int* ids,
                                                      ProFeatureResumeOptions* options, int flags);
