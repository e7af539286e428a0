// Builds parts from their recipes, feature after feature.
#pragma once

#include <cstddef>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include "bench/kernel/face_facts.h"
#include "bench/kernel/feature.h"
#include "bench/kernel/keys.h"
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

  // What those of the part's features draw that are named; a name that none of them has is passed over.
  std::vector<SketchGeometry> Drawn(const std::vector<Recipe>& recipes, const std::set<int>& features);

  // The keys of the part's faces and edges after its last feature; good until the next question.
  const BodyKeys& Keys(const std::vector<Recipe>& recipes);

  // Forgets all that was built.
  void Forget();

  // How many features have been built so far, rather than found in the cache.
  int features_built() const { return features_built_; }

 private:
  std::vector<std::shared_ptr<const Stage>> Stages(const std::vector<Recipe>& recipes);
  std::shared_ptr<const Stage> Build(const Recipe& recipe, std::span<const Recipe> before,
                                     const Stage& stage);

  const BodyKeys& KeysAfter(const std::vector<std::shared_ptr<const Stage>>& stages);

  StageCache cache_;
  FaceFactsCache face_facts_;
  // The keys that were worked out last, since many questions follow each other about one body.
  std::shared_ptr<const Stage> keyed_stage_;
  std::optional<BodyKeys> keys_;
  int features_built_ = 0;
};

}  // namespace bench::kernel
