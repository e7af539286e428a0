// What all feature operations share: the active part, the record of a feature, the one lookup by name, the
// naming of new features, and the words for adding and removing material.
//
// Main thread only. Nothing is kept between two operations: each lookup visits the part's features anew.
#pragma once

#include <ProFeature.h>
#include <ProMdl.h>

#include <string>
#include <string_view>
#include <vector>

#include "addin/ops/feature/feature_names.h"
#include "addin/server/operation_result.h"

namespace vek::feature {

// One feature of the active part. An id of -1 marks an empty record.
struct FeatureInfo {
  std::wstring name;  // as FeatureDisplayName tells it, or type word and id of an unnamed one
  std::wstring type;  // as FeatureTypeWord tells it
  bool is_suppressed = false;
  int id = -1;
  ProFeature feature{};
};

// What a visit of the features collects and seeks.
struct FeatureVisitContext {
  std::vector<FeatureInfo>* all = nullptr;  // receives every feature
  std::wstring wanted;                      // the name sought; empty seeks none
  FeatureInfo* found = nullptr;             // receives the match
  bool sketched_curves_only = false;
};

// The type of the features that committed sketches are.
inline constexpr int kSketchedCurveType = 949;

// The window that the host takes for its current one.
inline constexpr int kCurrentWindow = -1;

// The lower-case word for a feature type number; "feat_%d" for a number that has none.
std::wstring FeatureTypeWord(int type);

// The active model, which must be a part. Every feature operation starts with this.
CreoMcpOperationResult RequireActiveModel(ProMdl& model);

// The required argument `feature_name`.
CreoMcpOperationResult ReadFeatureName(const std::wstring& arguments, std::wstring& name);

// The name that the feature holds, trimmed; empty when it has none.
std::wstring FeatureDisplayName(const ProFeature& feature);

// The step of a visit: collects the feature, and keeps it when it bears the wanted name. The last match wins.
// Answers 0 always, so that the visit goes on. Unnamed datums are passed over.
ProError CollectFeatureInfo(ProFeature* feature, ProError status, FeatureVisitContext* context);

// Visits all features of `model` with the step above.
ProError VisitFeatureInfo(ProMdl model, FeatureVisitContext& context);

// The feature of that name in `model`. On failure `info` is empty, and the message helps the client along.
CreoMcpOperationResult FeatureLookup(ProMdl model, const std::wstring& name, FeatureInfo& info,
                                     bool sketched_curves_only);

// Names a new feature "<base> <n>" or "<base>_<n>" with the first number that is free, and gives the name. A
// feature that the host has named already keeps its name. Never fails.
std::wstring AssignFeatureName(ProMdl model, const ProFeature& feature, std::wstring_view base);

// The optional argument `operation`: whether material is removed. False with a message for a word that means
// neither.
bool ParseFeatureOperation(const std::wstring& arguments, bool& is_cut, std::wstring& message);

// The data that feature operations answer with: {"feature_name":"…"}.
std::wstring FeatureNameData(std::wstring_view name);

}  // namespace vek::feature
