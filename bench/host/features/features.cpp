#include "bench/host/features/features.h"

#include <algorithm>
#include <utility>

#include "bench/host/features/component.h"
#include "bench/host/features/feature_kind.h"
#include "bench/host/features/regeneration.h"
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

ElementNode* SectionCompound(const FeatureKind& kind, ElementNode& tree) {
  ElementNode* node = &tree;
  for (const int id : kind.SectionPath())
    if (node) node = node->Child(id);
  return node;
}

// What the feature keeps of a caller's tree: all but the section, which it keeps itself.
std::unique_ptr<ElementNode> WithoutSketcher(const FeatureKind& kind, const ElementNode& tree) {
  auto kept = tree.Clone();
  if (kind.Source() == SectionSource::kNone) return kept;
  if (ElementNode* section = SectionCompound(kind, *kept))
    std::erase_if(section->children, [](const auto& child) { return child->id == kSketcherElement; });
  return kept;
}

std::shared_ptr<SectionData> SectionIn(const FeatureKind& kind, const ElementNode& tree) {
  const ElementNode* compound = SectionCompound(kind, const_cast<ElementNode&>(tree));
  const ElementNode* sketcher = compound ? compound->Child(kSketcherElement) : nullptr;
  const auto* section = sketcher ? std::get_if<std::shared_ptr<SectionData>>(&sketcher->value) : nullptr;
  return section && *section ? std::make_shared<SectionData>(**section) : nullptr;
}

std::wstring NameFor(const Model& model, const ElementNode& tree) {
  const ElementNode* element = tree.Child(kNameElement);
  const auto* name = element ? std::get_if<std::wstring>(&element->value) : nullptr;
  return name ? NameIfFree(model, *name) : std::wstring();
}

// Gives a new feature the section that it starts with, and its place.
std::optional<TreeProblem> Start(Model& model, const FeatureKind& kind, const Feature* sketch,
                                 Feature& feature) {
  const bool takes_sketch = kind.Source() == SectionSource::kSketch;
  if (sketch && !takes_sketch) return TreeProblem{kSectionElement, "takes no sketch"};
  if (!sketch && takes_sketch) return TreeProblem{kSectionElement, "needs a sketch"};
  if (kind.Source() == SectionSource::kOwn) feature.section = std::make_shared<SectionData>();
  if (!takes_sketch) return kind.Place(model, feature);
  feature.section = std::make_shared<SectionData>(*sketch->section);
  feature.plane = sketch->plane;
  if (const ElementNode* setup = sketch->tree->Find({kSectionElement, kSetupElement}))
    feature.setup = setup->Clone();
  feature.sketch = sketch->id;
  feature.parents = sketch->parents;
  return std::nullopt;
}

// What keeps a feature from being complete.
std::optional<TreeProblem> Missing(const FeatureKind& kind, const Feature& feature) {
  return feature.section ? kind.CheckSection(*feature.section) : std::nullopt;
}

// What comes of the candidates, or why nothing does. `may_fail` is the feature that stays even if it is
// refused.
struct Trial {
  FeatureOutcome outcome;
  std::shared_ptr<const Geometry> geometry;
};

Trial Try(Model& model, const std::vector<Feature*>& candidates, int may_fail = -1) {
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

// The model's features with one of them exchanged.
std::vector<Feature*> Exchanged(const Model& model, Feature& feature, Feature& candidate) {
  auto candidates = FeaturesOf(model);
  std::ranges::replace(candidates, &feature, &candidate);
  return candidates;
}

}  // namespace

FeatureOutcome Refused(ProError status, int item, const std::string& what) {
  TheHost().announcements.Say("refused: " + what);
  return {status, {{item, status}}, -1};
}

std::wstring NameIfFree(const Model& model, std::wstring_view name) {
  if (name.size() >= PRO_NAME_SIZE) return {};
  const bool taken = std::ranges::any_of(
      model.features, [&](const auto& feature) { return EqualsIgnoringCase(feature->name, name); });
  return taken ? std::wstring() : std::wstring(name);
}

FeatureOutcome CreateFeature(Model& model, const ElementNode& tree, const std::set<int>& options,
                             const Feature* sketch, std::vector<int> members) {
  const FeatureKind* kind = FeatureKind::Of(tree);
  const bool takes_it =
      model.type == PRO_MDL_PART || (model.type == PRO_MDL_ASSEMBLY && kind == &DatumPlane());
  if (!takes_it) return bench::Refused(PRO_TK_BAD_CONTEXT, -1, "only parts take such features");
  if (!kind) return Refused({kFeatureTypeElement, "names no kind of feature that the host knows"});
  if (auto problem = kind->Check(tree)) return Refused(*problem);

  auto feature = std::make_unique<Feature>();
  feature->id = model.next_id;
  feature->type = kind->Type(tree);
  feature->name = NameFor(model, tree);
  feature->tree = WithoutSketcher(*kind, tree);
  feature->incomplete = options.contains(kIncompleteFeature);
  feature->members = std::move(members);
  if (auto problem = Start(model, *kind, sketch, *feature)) return Refused(*problem);
  if (!feature->incomplete)
    if (auto problem = Missing(*kind, *feature)) return Refused(*problem);

  auto candidates = FeaturesOf(model);
  candidates.push_back(feature.get());
  Trial trial = Try(model, candidates, options.contains(kStaysThoughItFailed) ? feature->id : -1);
  if (trial.outcome.status != PRO_TK_NO_ERROR) return trial.outcome;

  trial.outcome.feature = feature->id;
  ++model.next_id;
  for (const ProType type : kind->Datums(tree)) {
    // A plane has one id, as a surface and as a datum plane.
    const int id = type == PRO_DATUM_PLANE ? feature->items.back().id : model.next_id++;
    feature->items.push_back({.type = type, .id = id, .key = {}});
  }
  model.features.push_back(std::move(feature));
  Commit(model, std::move(trial.geometry));
  model.modified = true;
  return trial.outcome;
}

FeatureOutcome RedefineFeature(Model& model, Feature& feature, const ElementNode& tree,
                               const std::set<int>& options) {
  if (!feature.tree && !feature.component)
    return bench::Refused(PRO_TK_BAD_CONTEXT, feature.id, "a datum of the template has no recipe");
  if (feature.status == PRO_FEAT_SUPPRESSED)
    return bench::Refused(PRO_TK_BAD_CONTEXT, feature.id, "a suppressed feature can't be redefined");
  if (feature.component) return RedefineComponent(model, feature, tree);
  const FeatureKind* kind = FeatureKind::Of(tree);
  if (!kind || kind != FeatureKind::Of(*feature.tree))
    return Refused({kFeatureTypeElement, "names another kind of feature"});
  if (auto problem = kind->Check(tree)) return Refused(*problem);
  if (kind->Datums(tree) != kind->Datums(*feature.tree))
    return bench::Refused(PRO_TK_BAD_CONTEXT, feature.id, "its datums can't become others");

  // It starts as one that stands: what failed before may not fail again unnoticed.
  Feature candidate;
  candidate.id = feature.id;
  candidate.type = kind->Type(tree);
  candidate.name = feature.name;
  candidate.tree = WithoutSketcher(*kind, tree);
  if (feature.section) {
    candidate.section = SectionIn(*kind, tree);
    if (!candidate.section) candidate.section = std::make_shared<SectionData>(*feature.section);
  }
  if (feature.setup) candidate.setup = feature.setup->Clone();
  candidate.sketch = feature.sketch;
  candidate.plane = feature.plane;
  candidate.parents = feature.parents;
  candidate.members = feature.members;
  candidate.imported = feature.imported;
  candidate.items = feature.items;
  if (kind->Source() != SectionSource::kSketch)
    if (auto problem = kind->Place(model, candidate)) return Refused(*problem);

  // One that may stay incomplete keeps what is new of it, whatever is still missing.
  const bool may_stay_incomplete = feature.incomplete && options.contains(kIncompleteFeature);
  Trial trial;
  if (auto problem = Missing(*kind, candidate)) {
    trial.outcome = Refused(*problem);
  } else {
    trial = Try(model, Exchanged(model, feature, candidate));
  }
  if (trial.outcome.status != PRO_TK_NO_ERROR) {
    if (!may_stay_incomplete || trial.outcome.status == PRO_TK_COMM_ERROR) return trial.outcome;
    candidate.incomplete = true;
    feature = std::move(candidate);
    model.modified = true;
    trial.outcome.status = PRO_TK_NO_ERROR;
    return trial.outcome;
  }

  feature = std::move(candidate);
  Commit(model, std::move(trial.geometry));
  model.modified = true;
  return trial.outcome;
}

std::unique_ptr<ElementNode> ExtractTree(const Feature& feature) {
  if (feature.component) return ComponentTree(feature);
  if (!feature.tree) return nullptr;
  auto tree = feature.tree->Clone();
  const FeatureKind* kind = FeatureKind::Of(*tree);
  if (kind) kind->Elaborate(*tree);
  ElementNode* section = kind ? SectionCompound(*kind, *tree) : nullptr;
  if (!section || !feature.section) return tree;
  auto sketcher = std::make_unique<ElementNode>();
  sketcher->id = kSketcherElement;
  sketcher->value = std::make_shared<SectionData>(*feature.section);
  section->children.push_back(std::move(sketcher));
  return tree;
}

}  // namespace bench
