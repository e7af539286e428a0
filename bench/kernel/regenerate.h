// Builds parts from their recipes, feature after feature.
#pragma once

#include <cstddef>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "bench/kernel/face_facts.h"
#include "bench/kernel/recipe.h"
#include "bench/kernel/stage_cache.h"

namespace bench::kernel {

class Regenerator {
 public:
  static constexpr std::size_t kStagesKept = 1024;

  explicit Regenerator(std::size_t stages_kept = kStagesKept) : cache_(stages_kept) {}

  // What the request "regenerate" answers under "ok".
  nlohmann::json Describe(const std::vector<Recipe>& recipes);

  // The part's solids after its last feature.
  NamedShape Body(const std::vector<Recipe>& recipes);

  // Forgets all that was built.
  void Forget();

  // How many features have been built so far, rather than found in the cache.
  int features_built() const { return features_built_; }

 private:
  std::vector<std::shared_ptr<const Stage>> Stages(const std::vector<Recipe>& recipes);
  std::shared_ptr<const Stage> Build(const Recipe& recipe, int age, const NamedShape& body);

  StageCache cache_;
  FaceFactsCache face_facts_;
  int features_built_ = 0;
};

}  // namespace bench::kernel
