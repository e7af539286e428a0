#include "bench/host/features/imported.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/regeneration.h"

namespace bench {
namespace {

constexpr int kTree = 386;
constexpr int kFeatureTypeElement = 387;
constexpr int kImport = 932;

class ImportedKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kImport; }

  // A tree alone has no shape: only what reads a file makes such features.
  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (!feature.imported)
      return TreeProblem{kFeatureTypeElement, "is of a kind that comes out of files only"};
    return FeatureKind::Place(model, feature);
  }

  nlohmann::json Recipe(const Feature& feature, const Model&) const override {
    return {{"kind", "import"}, {"shape", feature.imported ? *feature.imported : std::string()}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{{{kFeatureTypeElement}, true, {kImport}}};
    return rules;
  }
};

std::unique_ptr<Feature> ImportOf(const std::string& shape, int id) {
  auto type = std::make_unique<ElementNode>();
  type->id = kFeatureTypeElement;
  type->value = kImport;
  auto feature = std::make_unique<Feature>();
  feature->id = id;
  feature->type = kImport;
  feature->tree = std::make_unique<ElementNode>();
  feature->tree->id = kTree;
  feature->tree->children.push_back(std::move(type));
  feature->imported = std::make_shared<const std::string>(shape);
  return feature;
}

}  // namespace

bool IsImported(const ElementNode& tree) {
  return IntegerAt(tree, {kFeatureTypeElement}) == kImport;
}

const FeatureKind& Imported() {
  static const ImportedKind kind;
  return kind;
}

FeatureOutcome AddImports(Model& part, const std::vector<std::string>& shapes) {
  std::vector<std::unique_ptr<Feature>> imports;
  auto candidates = FeaturesOf(part);
  int next_id = part.next_id;
  for (const std::string& shape : shapes) {
    imports.push_back(ImportOf(shape, next_id++));
    candidates.push_back(imports.back().get());
  }
  auto geometry = Compute(part, candidates);
  if (!geometry) return Refused(PRO_TK_COMM_ERROR, part.next_id, "the geometry kernel gives no answer");
  for (const auto& import : imports)
    if (const auto why = geometry->refusals.find(import->id); why != geometry->refusals.end())
      return Refused(PRO_TK_GENERAL_ERROR, import->id,
                     "feature " + std::to_string(import->id) + ": " + why->second);
  part.next_id = next_id;
  for (auto& import : imports) part.features.push_back(std::move(import));
  Commit(part, std::move(geometry));
  part.modified = true;
  FeatureOutcome outcome;
  outcome.feature = next_id - 1;
  return outcome;
}

}  // namespace bench
