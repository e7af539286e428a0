// Patterns of features, and the local groups that can lead them.
#pragma once

#include "ProElement.h"
#include "ProSolid.h"

typedef ProFeature ProPattern;
typedef ProFeature ProGroup;

// 0 a single feature leads, 1 a group.
typedef enum ProPatternClasses : int { PRO_FEAT_PATTERN = 0, PRO_GROUP_PATTERN = 1 } ProPatternClass;

PRO_TOOLKIT_CALL ProError ProPatternCreate(ProFeature* leader, ProPatternClass pattern_class,
                                           ProElement tree);
PRO_TOOLKIT_CALL ProError ProFeaturePatternGet(ProFeature* leader, ProPatternClass pattern_class,
                                               ProPattern* pattern);
// The features must stand one behind the other.
PRO_TOOLKIT_CALL ProError ProLocalGroupCreate(ProSolid solid, int* ids, int count, ProName name,
                                              ProGroup* group);
