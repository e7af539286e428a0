#include "bench/host/features/features.h"

#include <algorithm>
#include <utility>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/regeneration.h"
#include "bench/host/features/sketch_plane.h"
#include "bench/host/host.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kFeatureTypeElement = 387;
constexpr int kNameElement = 1964;

FeatureOutcome Refused(const TreeProblem& problem) {
  return bench::Refused(PRO_TK_GENERAL_ERROR, problem.element,
                        "element " + std::to_string(problem.element) + " " + problem.what);
}

// What the feature keeps of a caller's tree: all but the section, which it keeps itself.
std::unique_ptr<ElementNode> WithoutSketcher(const ElementNode& tree) {
  auto kept = tree.Clone();
  if (ElementNode* section = kept->Child(kSectionElement))
    std::erase_if(section->children, [](const auto& child) { return child->id == kSketcherElement; });
  return kept;
}

std::shared_ptr<SectionData> SectionIn(const ElementNode& tree) {
  const ElementNode* sketcher = tree.Find({kSectionElement, kSketcherElement});
  const auto* section = sketcher ? std::get_if<std::shared_ptr<SectionData>>(&sketcher->value) : nullptr;
  return section && *section ? std::make_shared<SectionData>(**section) : nullptr;
}

// The name that the tree asks for, where it is free and fits; else none.
std::wstring NameFor(const Model& model, const ElementNode& tree) {
  const ElementNode* element = tree.Child(kNameElement);
  const auto* name = element ? std::get_if<std::wstring>(&element->value) : nullptr;
  if (!name || name->size() >= PRO_NAME_SIZE) return {};
  const bool taken = std::ranges::any_of(
      model.features, [&](const auto& feature) { return EqualsIgnoringCase(feature->name, *name); });
  return taken ? std::wstring() : *name;
}

// Puts the feature onto the plane that its tree names.
std::optional<TreeProblem> Place(Model& model, Feature& feature) {
  auto placed = PlaceSketch(*feature.tree->Find({kSectionElement, kSetupElement}), model, feature);
  if (const auto* problem = std::get_if<TreeProblem>(&placed)) return *problem;
  auto& placement = std::get<SketchPlacement>(placed);
  feature.plane = placement.frame;
  feature.parents = std::move(placement.parents);
  return std::nullopt;
}

// Gives a new feature the section that it starts with, and the place of that section.
std::optional<TreeProblem> StartSection(Model& model, const FeatureKind& kind, const Feature* sketch,
                                        Feature& feature) {
  if (kind.Source() == SectionSource::kOwn) {
    if (sketch) return TreeProblem{kSectionElement, "is drawn in the feature itself and takes no sketch"};
    feature.section = std::make_shared<SectionData>();
    return Place(model, feature);
  }
  if (!sketch) return TreeProblem{kSectionElement, "needs a sketch"};
  feature.section = std::make_shared<SectionData>(*sketch->section);
  feature.plane = sketch->plane;
  feature.parents = sketch->parents;
  return std::nullopt;
}

// What comes of the candidates, or why nothing does. `may_fail` is the feature that stays even if it is
// refused.
struct Trial {
  FeatureOutcome outcome;
  std::shared_ptr<const Geometry> geometry;
};

Trial Try(const Model& model, const std::vector<const Feature*>& candidates, int may_fail = -1) {
  Trial trial;
  trial.geometry = Compute(model, candidates);
  if (!trial.geometry) {
    trial.outcome =
        bench::Refused(PRO_TK_COMM_ERROR, candidates.back()->id, "the geometry kernel gives no answer");
    return trial;
  }
  for (const int id : NewlyRefused(candidates, *trial.geometry)) {
    const auto refusal = bench::Refused(
        PRO_TK_GENERAL_ERROR, id, "feature " + std::to_string(id) + ": " + trial.geometry->refusals.at(id));
    trial.outcome.errors.push_back(refusal.errors.front());
    if (id != may_fail) trial.outcome.status = refusal.status;
  }
  return trial;
}

}  // namespace

FeatureOutcome Refused(ProError status, int item, const std::string& what) {
  TheHost().announcements.Say("refused: " + what);
  return {status, {{item, status}}, -1};
}

FeatureOutcome CreateFeature(Model& model, const ElementNode& tree, const std::set<int>& options,
                             const Feature* sketch) {
  if (model.type != PRO_MDL_PART) return bench::Refused(PRO_TK_BAD_CONTEXT, -1, "only parts take features");
  const FeatureKind* kind = FeatureKind::Of(tree);
  if (!kind) return Refused({kFeatureTypeElement, "names no kind of feature that the host knows"});
  if (auto problem = kind->Check(tree)) return Refused(*problem);

  auto feature = std::make_unique<Feature>();
  feature->id = model.next_id;
  feature->type = kind->Type(tree);
  feature->name = NameFor(model, tree);
  feature->tree = WithoutSketcher(tree);
  feature->incomplete = options.contains(kIncompleteFeature);
  if (auto problem = StartSection(model, *kind, sketch, *feature)) return Refused(*problem);
  if (!feature->incomplete)
    if (auto problem = kind->CheckSection(*feature->section)) return Refused(*problem);

  auto candidates = FeaturesOf(model);
  candidates.push_back(feature.get());
  Trial trial = Try(model, candidates, options.contains(kStaysThoughItFailed) ? feature->id : -1);
  if (trial.outcome.status != PRO_TK_NO_ERROR) return trial.outcome;

  trial.outcome.feature = feature->id;
  model.features.push_back(std::move(feature));
  ++model.next_id;
  Commit(model, std::move(trial.geometry));
  model.modified = true;
  return trial.outcome;
}

FeatureOutcome RedefineFeature(Model& model, Feature& feature, const ElementNode& tree) {
  if (!feature.tree)
    return bench::Refused(PRO_TK_BAD_CONTEXT, feature.id, "a datum of the template has no recipe");
  if (feature.status == PRO_FEAT_SUPPRESSED)
    return bench::Refused(PRO_TK_BAD_CONTEXT, feature.id, "a suppressed feature can't be redefined");
  const FeatureKind* kind = FeatureKind::Of(tree);
  if (!kind || kind != FeatureKind::Of(*feature.tree))
    return Refused({kFeatureTypeElement, "names another kind of feature"});
  if (auto problem = kind->Check(tree)) return Refused(*problem);

  // It starts as one that stands: what failed before may not fail again unnoticed.
  Feature candidate;
  candidate.id = feature.id;
  candidate.type = kind->Type(tree);
  candidate.name = feature.name;
  candidate.tree = WithoutSketcher(tree);
  candidate.section = SectionIn(tree);
  if (!candidate.section) candidate.section = std::make_shared<SectionData>(*feature.section);
  candidate.plane = feature.plane;
  candidate.parents = feature.parents;
  candidate.items = feature.items;
  if (kind->Source() == SectionSource::kOwn)
    if (auto problem = Place(model, candidate)) return Refused(*problem);
  if (auto problem = kind->CheckSection(*candidate.section)) return Refused(*problem);

  auto candidates = FeaturesOf(model);
  std::ranges::replace(candidates, const_cast<const Feature*>(&feature),
                       const_cast<const Feature*>(&candidate));
  Trial trial = Try(model, candidates);
  if (trial.outcome.status != PRO_TK_NO_ERROR) return trial.outcome;

  feature = std::move(candidate);
  Commit(model, std::move(trial.geometry));
  model.modified = true;
  return trial.outcome;
}

std::unique_ptr<ElementNode> ExtractTree(const Feature& feature) {
  if (!feature.tree) return nullptr;
  auto tree = feature.tree->Clone();
  ElementNode* section = tree->Child(kSectionElement);
  if (!section || !feature.section) return tree;
  auto sketcher = std::make_unique<ElementNode>();
  sketcher->id = kSketcherElement;
  sketcher->value = std::make_shared<SectionData>(*feature.section);
  section->children.push_back(std::move(sketcher));
  return tree;
}

}  // namespace bench
