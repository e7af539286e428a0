#include "bench/kernel/regenerate.h"

#include <Standard_Failure.hxx>

#include "bench/kernel/quilt.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/topology.h"

namespace bench::kernel {

using nlohmann::json;

std::shared_ptr<const Stage> Regenerator::Build(const Recipe& recipe, std::span<const Recipe> before,
                                                const Stage& stage_before) {
  auto standing = std::make_shared<Stage>();
  standing->body = stage_before.body;
  standing->quilts = stage_before.quilts;
  ++features_built_;
  auto stage = std::make_shared<Stage>(*standing);
  try {
    const int age = static_cast<int>(before.size());
    recipe.content->Build({recipe.feature, age}, {before, face_facts_}, *stage);
    return stage;
  } catch (const Refusal& refusal) {
    standing->reason = refusal.what();
  } catch (const Standard_Failure& failure) {
    standing->reason = std::string("The feature can't be built (") + failure.DynamicType()->Name() + ").";
  }
  standing->refused = true;
  return standing;
}

std::vector<std::shared_ptr<const Stage>> Regenerator::Stages(const std::vector<Recipe>& recipes) {
  std::vector<std::shared_ptr<const Stage>> stages;
  std::vector<StageCache::Id> parents;
  StageCache::Id parent = StageCache::kRoot;
  for (const Recipe& recipe : recipes) {
    parents.push_back(parent);
    StageCache::Entry entry = cache_.Find(parent, recipe.text);
    if (!entry.stage) {
      const Stage nothing;
      const auto before = std::span(recipes).first(stages.size());
      entry =
          cache_.Add(parent, recipe.text, Build(recipe, before, stages.empty() ? nothing : *stages.back()));
    }
    stages.push_back(entry.stage);
    parent = entry.id;
  }
  for (std::size_t i = recipes.size(); i-- > 0;) cache_.Touch(parents[i], recipes[i].text);
  cache_.Trim();
  return stages;
}

json Regenerator::Describe(const std::vector<Recipe>& recipes) {
  const auto stages = Stages(recipes);
  json features = json::array(), curves = json::array(), points = json::array();
  for (std::size_t i = 0; i < recipes.size(); ++i) {
    const Stage& stage = *stages[i];
    json feature = {{"feature", recipes[i].feature}, {"status", stage.refused ? "refused" : "ok"}};
    if (stage.refused) feature["reason"] = stage.reason;
    features.push_back(std::move(feature));
    DescribeSketch(recipes[i].feature, stage.drawn, curves, points);
  }
  json answer = DescribeBody(KeysAfter(stages));
  answer["features"] = std::move(features);
  answer["curves"] = std::move(curves);
  answer["points"] = std::move(points);
  answer["quilts"] =
      DescribeQuilts(stages.empty() ? std::vector<Quilt>{} : stages.back()->quilts, face_facts_);
  answer["bodies"] = stages.empty() ? 0 : stages.back()->body.solids.size();
  return answer;
}

const BodyKeys& Regenerator::KeysAfter(const std::vector<std::shared_ptr<const Stage>>& stages) {
  const auto last = stages.empty() ? nullptr : stages.back();
  if (!keys_ || last != keyed_stage_) {
    keys_.emplace(last ? last->body : NamedShape{}, face_facts_);
    keyed_stage_ = last;
  }
  return *keys_;
}

const BodyKeys& Regenerator::Keys(const std::vector<Recipe>& recipes) {
  return KeysAfter(Stages(recipes));
}

void Regenerator::Forget() {
  keys_.reset();
  keyed_stage_.reset();
  cache_.Clear();
  face_facts_.Clear();
}

std::vector<SketchGeometry> Regenerator::Drawn(const std::vector<Recipe>& recipes,
                                               const std::set<int>& features) {
  std::vector<SketchGeometry> drawn;
  const auto stages = Stages(recipes);
  for (std::size_t i = 0; i < recipes.size(); ++i)
    if (features.contains(recipes[i].feature)) drawn.push_back(stages[i]->drawn);
  return drawn;
}

NamedShape Regenerator::Body(const std::vector<Recipe>& recipes) {
  const auto stages = Stages(recipes);
  return stages.empty() ? NamedShape{} : stages.back()->body;
}

}  // namespace bench::kernel
