// The features of a part: each kind reads its recipe and builds what it says.
#pragma once

#include <gp_Trsf.hxx>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>
#include <vector>

#include "bench/kernel/face_facts.h"
#include "bench/kernel/json_fields.h"
#include "bench/kernel/named_shape.h"
#include "bench/kernel/sketch_recipe.h"

namespace bench::kernel {

struct Recipe;
struct Stage;

// What a feature may look at while it is built.
struct Before {
  std::span<const Recipe> recipes;  // those of the features that stand before it
  FaceFactsCache& facts;
};

class Feature {
 public:
  virtual ~Feature() = default;

  // Changes the stage, which is that of the features before. Throws Refusal when the geometry can't be made;
  // the stage is then thrown away.
  virtual void Build(const FeaturePlace& place, const Before& before, Stage& stage) const = 0;

  // The same feature at another place, for a pattern. Null for a kind that can't stand elsewhere.
  virtual std::unique_ptr<const Feature> Moved(const gp_Trsf&) const { return nullptr; }

  // Whether all that says where the feature is are keys of faces and edges: it is moved by being given
  // others.
  virtual bool StandsOnKeysAlone() const { return false; }

  // Whether a feature of the kind is there for what it does to the body, and not just for what it draws.
  virtual bool ShapesTheBody() const { return true; }
};

struct Recipe {
  int feature = 0;
  std::shared_ptr<const Feature> content;
  // The recipe's canonical text: equal texts are equal recipes.
  std::string text;
};

// Reads a request's array of recipes. Throws BadRequest.
std::vector<Recipe> ReadRecipes(const nlohmann::json& recipes);

}  // namespace bench::kernel
