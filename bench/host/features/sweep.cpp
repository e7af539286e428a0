// The sweep: a section of its own on the crosshairs of a trajectory, moved along it.
//
// The trajectory is the curves of one sketch, or one of them, and stays tied to that sketch.
#include <nlohmann/json.hpp>
#include <set>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/section_recipe.h"

namespace bench {
namespace {

constexpr int kProtrusion = 917;
constexpr int kCut = 916;
constexpr int kAddMaterial = -1;
constexpr int kSweepForm = 4;
constexpr int kRemovedSide = 499;
constexpr int kMethod = 725;
constexpr int kTrajectorySelected = 26;
constexpr int kSectionSketched = 25;
constexpr int kTrajectory = 2124;
constexpr int kDefaultStart = 0;
constexpr int kUserStart = 134217728;
constexpr int kStartDirection = 1648;
constexpr int kDirection = 3252;
constexpr int kDirectionReference = 3253;
constexpr int kDirectionFlip = 3254;
constexpr int kAsItIs = 0;
constexpr int kTurnedRound = 1;
constexpr ProFeattype kSketchedCurveType = 949;
constexpr ProFeattype kDatumPlaneType = 923;

constexpr std::initializer_list<int> kToTrajectory = {3165, 1176, 15, 726, kTrajectory};
constexpr std::initializer_list<int> kToUserStart = {3165, 1159, 1649};
constexpr std::initializer_list<int> kToReference = {3165, 1159, kStartDirection, kDirection,
                                                     kDirectionReference};
constexpr std::initializer_list<int> kToFlip = {3165, 1159, kStartDirection, kDirection, kDirectionFlip};

bool HasUserStart(const ElementNode& tree) {
  return IntegerAt(tree, kToUserStart) == kUserStart;
}

bool IsCut(const ElementNode& tree) {
  return IntegerAt(tree, {2023}) == kCut;
}

std::vector<ItemReference> TrajectoryItems(const ElementNode& tree) {
  std::vector<ItemReference> items;
  for (const auto& instruction : std::get<Collection>(tree.Find(kToTrajectory)->value).instructions)
    items.insert(items.end(), instruction.items.begin(), instruction.items.end());
  return items;
}

// The sketch whose curves are the trajectory; null when they are not those of one sketch.
const Feature* PathOf(const Model& model, const ElementNode& tree) {
  const Feature* path = nullptr;
  for (const ItemReference& item : TrajectoryItems(tree)) {
    const Feature* owner = model.OwnerOf(item.type, item.id);
    if (!owner || owner->type != kSketchedCurveType || !owner->section || (path && path != owner))
      return nullptr;
    path = owner;
  }
  return path;
}

// The entity that a curve of a sketch was made of, which its key ends with.
int EntityOf(const Model& model, const ItemReference& curve) {
  const std::string key = KeyOf(model, curve);
  return std::stoi("0" + key.substr(key.rfind(':') + 1));
}

// What of the path's section is the trajectory.
SectionData TrajectorySection(const Model& model, const ElementNode& tree, const Feature& path) {
  SectionData section = *path.section;
  std::set<int> chosen;
  for (const ItemReference& item : TrajectoryItems(tree)) {
    if (item.type == PRO_FEATURE) return section;
    chosen.insert(EntityOf(model, item));
  }
  std::erase_if(section.entities, [&](const auto& entry) { return !chosen.contains(entry.first); });
  return section;
}

// What gives the start direction, of a tree that asks for one.
const Feature* StartPlane(const Model& model, const ElementNode& tree) {
  const ItemReference item = ItemsAt(tree, kToReference).front();
  return model.OwnerOf(item.type, item.id);
}

// A new child, unless there is one of that id already.
ElementNode& WithChild(ElementNode& parent, int id, ElementNode::Value value = {}) {
  if (ElementNode* child = parent.Child(id)) return *child;
  auto child = std::make_unique<ElementNode>();
  child->id = id;
  child->value = std::move(value);
  parent.children.push_back(std::move(child));
  return *parent.children.back();
}

class SweepKind : public FeatureKind {
 public:
  SectionSource Source() const override { return SectionSource::kOwn; }

  std::span<const int> SectionPath() const override {
    static constexpr int kPath[] = {3164, 897};
    return kPath;
  }

  // The settings that a maker leaves out: how the section is made, and the start direction.
  void Elaborate(ElementNode& tree) const override {
    WithChild(*tree.Child(3164)->Child(897), kMethod);
    ElementNode& start = WithChild(*tree.Child(3165)->Child(1159), kStartDirection);
    ElementNode& direction = WithChild(start, kDirection);
    WithChild(direction, kDirectionReference);
    WithChild(direction, kDirectionFlip, kAsItIs);
  }

  ProFeattype Type(const ElementNode& tree) const override { return IsCut(tree) ? kCut : kProtrusion; }

  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (auto problem = FeatureKind::Place(model, feature)) return problem;
    if (!PathOf(model, *feature.tree)) return TreeProblem{kTrajectory, "needs the curves of one sketch"};
    if (!HasUserStart(*feature.tree)) return std::nullopt;
    const Feature* plane = StartPlane(model, *feature.tree);
    if (!plane || plane->type != kDatumPlaneType)
      return TreeProblem{kDirectionReference, "is no datum plane"};
    return std::nullopt;
  }

  std::optional<TreeProblem> CheckSection(const SectionData& section) const override {
    if (section.entities.empty()) return TreeProblem{kSketcherElement, "is empty"};
    return std::nullopt;
  }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const double mm = MillimetresPer(model.length_unit);
    const ElementNode& tree = *feature.tree;
    const Feature* path = PathOf(model, tree);
    nlohmann::json recipe{
        {"kind", "sweep"},
        {"path",
         {{"plane", PlaneRecipe(path ? path->plane : PlaneFrame{}, mm)},
          {"entities", EntitiesRecipe(path ? TrajectorySection(model, tree, *path) : SectionData{}, mm)}}},
        {"section", {{"entities", EntitiesRecipe(*feature.section, mm)}}},
        {"operation", IsCut(tree) ? "cut" : "join"}};
    if (HasUserStart(tree)) recipe["x_reference"] = StartDirection(model, tree);
    return recipe;
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{388}, true, {kSweepForm}},
        {{5528}, true, {128}},
        {{3165}},
        {{3165, 1176}},
        {{3165, 1176, 15}},
        {{3165, 1176, 15, kMethod}, true, {kTrajectorySelected}},
        {{3165, 1176, 15, 726}},
        {{3165, 1176, 15, 726, kTrajectory}},
        {{3165, 1159}},
        {{3165, 1159, 1170}, true, {0}},
        {{3165, 1159, 1171}, true, {1}},
        {{3165, 1159, 1649}, true, {kDefaultStart, kUserStart}},
        {{3165, 1159, kStartDirection}, false},
        {{3165, 1159, kStartDirection, kDirection}, false},
        {.path = kToReference, .required = false, .may_be_empty = true},
        {.path = kToFlip, .required = false, .allowed = {kAsItIs, kTurnedRound}},
        {{3164}},
        {{3164, 1168}, true, {8388608}},
        {{3164, 897}},
        {.path = {3164, 897, kMethod},
         .required = false,
         .allowed = {kSectionSketched},
         .may_be_empty = true},
        {{3164, 897, kSketcherElement}, false},
        {{1964}, false},
        {{1956}, true, {kProtrusion}},
        {{2023}, true, {kCut, kAddMaterial}},
        {{3176}, true, {0}},
        {{kRemovedSide}, false, {1}},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    if (IsCut(tree) != (tree.Child(kRemovedSide) != nullptr))
      return TreeProblem{kRemovedSide, "doesn't fit the material removal"};
    if (HasUserStart(tree) == ItemsAt(tree, kToReference).empty())
      return TreeProblem{kDirectionReference, "doesn't fit the start direction"};
    const ElementNode* sketcher = tree.Find({3164, 897, kSketcherElement});
    if (!sketcher || std::get<std::shared_ptr<SectionData>>(sketcher->value)->entities.empty())
      return std::nullopt;
    if (IntegerAt(tree, {3164, 897, kMethod}) != kSectionSketched)
      return TreeProblem{kMethod, "doesn't say that the section is drawn"};
    return std::nullopt;
  }

 private:
  static Vector3 StartDirection(const Model& model, const ElementNode& tree) {
    const Feature* plane = StartPlane(model, tree);
    const Vector3 normal = plane ? plane->plane.Normal() : Vector3{0, 0, 1};
    const double way = IntegerAt(tree, kToFlip) == kTurnedRound ? -1 : 1;
    // Without negative zeros, which would make equal directions different recipes.
    return {way * normal[0] + 0.0, way * normal[1] + 0.0, way * normal[2] + 0.0};
  }
};

}  // namespace

bool IsSweep(const ElementNode& tree) {
  return !tree.Child(387) && IntegerAt(tree, {388}) == kSweepForm;
}

const FeatureKind& Sweep() {
  static const SweepKind kind;
  return kind;
}

}  // namespace bench
