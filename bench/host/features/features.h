// How features come into a model and are changed there.
//
// An outcome with a status other than 0 has at least one error, and the model is exactly as it was: features,
// ids, modified flag, geometry.
#pragma once

#include <ProFeature.h>

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "bench/host/model/model.h"

namespace bench {

// What options of a creation ask for.
constexpr int kIncompleteFeature = 2;
constexpr int kStaysThoughItFailed = 0;
constexpr int kUndoneWhenItFails = 6;

struct FeatureOutcome {
  ProError status = PRO_TK_NO_ERROR;
  std::vector<ProErrorStruct> errors;
  int feature = -1;  // the id of the new feature
};

// A refusal, told on the console too: `item` is the element or the feature that is at fault.
FeatureOutcome Refused(ProError status, int item, const std::string& what);

// Makes a feature at the end of the model. `sketch` is the sketched curve whose section and plane are copied,
// or null. An incomplete feature has an empty section and no geometry until it is redefined.
// `members` are those of a pattern.
FeatureOutcome CreateFeature(Model& model, const ElementNode& tree, const std::set<int>& options,
                             const Feature* sketch, std::vector<int> members = {});

// The name for a new feature that asks for this one: none where it is taken or doesn't fit.
std::wstring NameIfFree(const Model& model, std::wstring_view name);

// Gives a feature of the model another tree of its kind, with the section in it. An incomplete feature is
// complete then; where the options allow it to stay incomplete, it keeps tree and section also when it can't
// be completed with them, and the errors tell why.
FeatureOutcome RedefineFeature(Model& model, Feature& feature, const ElementNode& tree,
                               const std::set<int>& options);

// The tree of a feature, with a copy of its section in the sketcher element. Null for a feature without a
// recipe.
std::unique_ptr<ElementNode> ExtractTree(const Feature& feature);

}  // namespace bench
