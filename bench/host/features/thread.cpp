// The cosmetic thread: a note on a cylinder, without geometry of its own.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/hole_charts.h"

namespace bench {
namespace {

constexpr int kThread = 1070;
constexpr int kStandard = 4974;
constexpr int kSeries = 4975;
constexpr int kScrewSize = 4976;
constexpr int kSurface = 4902;
constexpr int kDiameter = 4900;
constexpr int kStart = 4901;

// The face that an item is, or null.
const FaceInfo* FaceOf(const Model& model, const ItemReference& item) {
  if (item.type != PRO_SURFACE) return nullptr;
  const auto face = std::ranges::find(model.topology.faces, KeyOf(model, item), &FaceInfo::key);
  return face == model.topology.faces.end() ? nullptr : &*face;
}

bool Bounds(const EdgeInfo& edge, const std::string& face) {
  return edge.faces[0] == face || edge.faces[1] == face;
}

// Whether a thread on the cylinder can begin there: at one of its edges, or at a plane that meets it in one.
bool CanStart(const Model& model, const FaceInfo& cylinder, const ItemReference& start) {
  const auto& edges = model.topology.edges;
  if (start.type == PRO_EDGE) {
    const auto edge = std::ranges::find(edges, KeyOf(model, start), &EdgeInfo::key);
    return edge != edges.end() && Bounds(*edge, cylinder.key);
  }
  const FaceInfo* plane = FaceOf(model, start);
  return plane && plane->type == "plane" && std::ranges::any_of(edges, [&](const EdgeInfo& edge) {
           return Bounds(edge, cylinder.key) && Bounds(edge, plane->key);
         });
}

// Whether the indices name a thread of the charts, where there are charts.
std::optional<TreeProblem> CheckIndices(const ElementNode& tree) {
  const auto charts = FindHoleCharts();
  if (!charts) return std::nullopt;
  const auto series = static_cast<std::size_t>(IntegerAt(tree, {kSeries}));
  if (series >= charts->series.size()) return TreeProblem{kSeries, "is no series of the charts"};
  const auto screw = static_cast<std::size_t>(IntegerAt(tree, {kScrewSize}));
  if (screw >= ScrewSizes(*charts, series).size())
    return TreeProblem{kScrewSize, "is no screw size of its series"};
  return std::nullopt;
}

class ThreadKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kThread; }

  // The charts are looked at here and not with the tree's own values: a thread that stands outlives them.
  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (auto problem = FeatureKind::Place(model, feature)) return problem;
    const ElementNode& tree = *feature.tree;
    const FaceInfo* cylinder = FaceOf(model, ItemsAt(tree, {kSurface}).front());
    if (!cylinder || cylinder->type != "cylinder") return TreeProblem{kSurface, "refers to no cylinder"};
    if (!CanStart(model, *cylinder, ItemsAt(tree, {kStart}).front()))
      return TreeProblem{kStart, "refers to what doesn't bound the cylinder"};
    return CheckIndices(tree);
  }

  std::vector<DimensionRule> Dimensions() const override { return {{{4900}}, {{4903, 4906}}}; }

  nlohmann::json Recipe(const Feature&, const Model&) const override { return nullptr; }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kThread}},
        {{388}, true, {1}},
        {{1964}},
        {{kStandard}, true, {0, 1}},
        {{kSeries}},
        {{kScrewSize}},
        {{kSurface}},
        {{kDiameter}},
        {{kStart}},
        {{4903}},
        {{4903, 4904}, true, {0}},
        {{4903, 4905}, true, {1, -1}},
        {{4903, 4906}},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    for (const int index : {kSeries, kScrewSize})
      if (IntegerAt(tree, {index}) < 0) return TreeProblem{index, "is below 0"};
    if (!(DoubleAt(tree, {kDiameter}) > 0)) return TreeProblem{kDiameter, "must be above 0"};
    if (!(DoubleAt(tree, {4903, 4906}) > 0)) return TreeProblem{4906, "must be above 0"};
    return std::nullopt;
  }
};

}  // namespace

bool IsThread(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kThread;
}

const FeatureKind& Thread() {
  static const ThreadKind kind;
  return kind;
}

}  // namespace bench
