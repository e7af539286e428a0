#include "bench/kernel/feature.h"

#include <map>
#include <set>

#include "bench/kernel/features/chamfer.h"
#include "bench/kernel/features/draft.h"
#include "bench/kernel/features/extrude.h"
#include "bench/kernel/features/hole.h"
#include "bench/kernel/features/imported.h"
#include "bench/kernel/features/mirror.h"
#include "bench/kernel/features/move.h"
#include "bench/kernel/features/pattern.h"
#include "bench/kernel/features/revolve.h"
#include "bench/kernel/features/round.h"
#include "bench/kernel/features/shell.h"
#include "bench/kernel/features/sketch.h"
#include "bench/kernel/features/solidify.h"
#include "bench/kernel/features/sweep.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

using Reader = std::unique_ptr<const Feature> (*)(const Fields& fields, const std::string& where);

const std::map<std::string, Reader>& Kinds() {
  static const std::map<std::string, Reader> kinds{
      {"chamfer", ReadChamfer}, {"draft", ReadDraft},       {"extrude", ReadExtrude},
      {"hole", ReadHole},       {"import", ReadImported},   {"move", ReadMove},
      {"mirror", ReadMirror},   {"pattern", ReadPattern},   {"revolve", ReadRevolve},
      {"round", ReadRound},     {"shell", ReadShell},       {"sketch", ReadSketchFeature},
      {"sweep", ReadSweep},     {"solidify", ReadSolidify},
  };
  return kinds;
}

Recipe ReadRecipe(const json& entry, const std::string& where) {
  const Fields fields(entry, where);
  Recipe recipe;
  recipe.feature = fields.Integer("feature");
  recipe.text = entry.dump();
  const std::string kind = fields.Text("kind");
  const auto reader = Kinds().find(kind);
  if (reader == Kinds().end()) fields.Complain("unknown kind '" + kind + "'");
  recipe.content = reader->second(fields, where);
  return recipe;
}

}  // namespace

std::vector<Recipe> ReadRecipes(const json& entries) {
  std::vector<Recipe> recipes;
  std::set<int> features;
  for (const json& entry : entries) {
    const std::string where = "recipe " + std::to_string(recipes.size() + 1);
    recipes.push_back(ReadRecipe(entry, where));
    if (!features.insert(recipes.back().feature).second)
      throw BadRequest(where + ": feature " + std::to_string(recipes.back().feature) +
                       " has a recipe already");
  }
  return recipes;
}

}  // namespace bench::kernel
