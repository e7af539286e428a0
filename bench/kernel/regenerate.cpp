#include "bench/kernel/regenerate.h"

#include <Standard_Failure.hxx>

#include "bench/kernel/features/extrude.h"
#include "bench/kernel/features/revolve.h"
#include "bench/kernel/features/sketch.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/topology.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

// Carries out one recipe on a stage whose body is that of the features before it.
class Builder {
 public:
  Builder(const FeaturePlace& place, Stage& stage) : place_(place), stage_(stage) {}

  void operator()(const Sketch& sketch) const { stage_.drawn = DrawSketch(sketch); }
  void operator()(const ExtrudeRecipe& recipe) const { stage_.body = Extrude(recipe, place_, stage_.body); }
  void operator()(const RevolveRecipe& recipe) const { stage_.body = Revolve(recipe, place_, stage_.body); }

 private:
  FeaturePlace place_;
  Stage& stage_;
};

}  // namespace

std::shared_ptr<const Stage> Regenerator::Build(const Recipe& recipe, int age, const NamedShape& body) {
  auto stage = std::make_shared<Stage>();
  stage->body = body;
  ++features_built_;
  try {
    std::visit(Builder({recipe.feature, age}, *stage), recipe.content);
  } catch (const Refusal& refusal) {
    stage->refused = true;
    stage->reason = refusal.what();
  } catch (const Standard_Failure& failure) {
    stage->refused = true;
    stage->reason = std::string("The feature can't be built (") + failure.DynamicType()->Name() + ").";
  }
  return stage;
}

std::vector<std::shared_ptr<const Stage>> Regenerator::Stages(const std::vector<Recipe>& recipes) {
  std::vector<std::shared_ptr<const Stage>> stages;
  std::vector<StageCache::Id> parents;
  StageCache::Id parent = StageCache::kRoot;
  for (const Recipe& recipe : recipes) {
    parents.push_back(parent);
    StageCache::Entry entry = cache_.Find(parent, recipe.text);
    if (!entry.stage) {
      const NamedShape nothing;
      const int age = static_cast<int>(stages.size());
      entry =
          cache_.Add(parent, recipe.text, Build(recipe, age, stages.empty() ? nothing : stages.back()->body));
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
  const NamedShape body = stages.empty() ? NamedShape{} : stages.back()->body;
  json answer = DescribeBody(body, face_facts_);
  answer["features"] = std::move(features);
  answer["curves"] = std::move(curves);
  answer["points"] = std::move(points);
  answer["bodies"] = body.solids.size();
  return answer;
}

void Regenerator::Forget() {
  cache_.Clear();
  face_facts_.Clear();
}

NamedShape Regenerator::Body(const std::vector<Recipe>& recipes) {
  const auto stages = Stages(recipes);
  return stages.empty() ? NamedShape{} : stages.back()->body;
}

}  // namespace bench::kernel
