// The extrude: a sketch's section, drawn out along the normal of its plane.
#include <cmath>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/section_recipe.h"

namespace bench {
namespace {

constexpr int kProtrusion = 917;
constexpr int kCut = 916;
constexpr int kAddMaterial = -1;
constexpr int kExtrudeForm = 1;
constexpr int kAlongNormal = -1;
constexpr int kAgainstNormal = 1;
constexpr int kWithDraft = 80;
constexpr int kWithoutDraft = -1;
constexpr double kSteepestTaperDeg = 90;

// Depth types of the two sides, and which of their depths they need.
struct DepthMode {
  int first_side;   // element 430
  int second_side;  // element 433
  const char* word;
  bool has_second_depth;  // element 434
  bool has_first_depth;   // element 431
};
constexpr DepthMode kDepthModes[] = {
    {4096, 262144, "blind", true, false},    {4096, 268435456, "symmetric", true, false},
    {128, 262144, "two", true, true},        {4096, 1048576, "through_all", false, false},
    {4096, 524288, "to_next", false, false},
};

const DepthMode* ModeOf(const ElementNode& tree) {
  const int first = IntegerAt(tree, {515, 428, 430});
  const int second = IntegerAt(tree, {515, 429, 433});
  for (const DepthMode& mode : kDepthModes)
    if (mode.first_side == first && mode.second_side == second) return &mode;
  return nullptr;
}

// A depth is there exactly when the mode needs it, and is above 0.
std::optional<TreeProblem> CheckDepth(const ElementNode* depth, int id, bool needed) {
  if (!needed) return depth ? std::optional(TreeProblem{id, "has no meaning for this depth"}) : std::nullopt;
  if (!depth) return TreeProblem{id, "is missing"};
  if (!(std::get<double>(depth->value) > 0)) return TreeProblem{id, "must be above 0"};
  return std::nullopt;
}

std::optional<TreeProblem> CheckDraft(const ElementNode& tree) {
  const bool wanted = IntegerAt(tree, {5096, 5097}) == kWithDraft;
  const ElementNode* angle = tree.Find({5096, 5098});
  if (wanted != (angle != nullptr)) return TreeProblem{5098, "doesn't fit the draft option"};
  if (wanted && !(std::abs(std::get<double>(angle->value)) < kSteepestTaperDeg))
    return TreeProblem{5098, "must be less than 90 degrees"};
  return std::nullopt;
}

class ExtrudeKind : public FeatureKind {
 public:
  SectionSource Source() const override { return SectionSource::kSketch; }

  ProFeattype Type(const ElementNode& tree) const override {
    return IntegerAt(tree, {2023}) == kCut ? kCut : kProtrusion;
  }

  std::vector<DimensionRule> Dimensions() const override {
    return {{{515, 429, 434}}, {{515, 428, 431}}, {{5096, 5098}, true}};
  }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const double mm = MillimetresPer(model.length_unit);
    const ElementNode& tree = *feature.tree;
    const DepthMode& mode = *ModeOf(tree);
    nlohmann::json extent{{"mode", mode.word}};
    if (mode.has_second_depth) extent["depth"] = DoubleAt(tree, {515, 429, 434}) * mm;
    if (mode.has_first_depth) extent["depth2"] = DoubleAt(tree, {515, 428, 431}) * mm;
    return {{"kind", "extrude"},
            {"plane", PlaneRecipe(feature.plane, mm)},
            {"entities", EntitiesRecipe(*feature.section, mm)},
            {"operation", IntegerAt(tree, {2023}) == kCut ? "cut" : "join"},
            {"extent", std::move(extent)},
            {"reverse", IntegerAt(tree, {436}) == kAgainstNormal},
            {"taper_deg", DoubleAt(tree, {5096, 5098})}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kProtrusion}},
        {{388}, true, {kExtrudeForm}},
        {{1956}, true, {kProtrusion}},
        {{2023}, true, {kCut, kAddMaterial}},
        {{3176}, true, {0}},
        {{1964}, false},
        {{447}},
        {{447, 458}, false},
        {{436}, true, {kAlongNormal, kAgainstNormal}},
        {{515}},
        {{515, 428}},
        {{515, 429}},
        {{515, 428, 430}},
        {{515, 428, 431}, false},
        {{515, 429, 433}},
        {{515, 429, 434}, false},
        {{5096}},
        {{5096, 5097}, true, {kWithDraft, kWithoutDraft}},
        {{5096, 5098}, false},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    const DepthMode* mode = ModeOf(tree);
    if (!mode) return TreeProblem{433, "doesn't go with the type of the first side"};
    if (auto problem = CheckDepth(tree.Find({515, 428, 431}), 431, mode->has_first_depth)) return problem;
    if (auto problem = CheckDepth(tree.Find({515, 429, 434}), 434, mode->has_second_depth)) return problem;
    if (auto problem = CheckDraft(tree)) return problem;
    return std::nullopt;
  }
};

}  // namespace

bool IsExtrude(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kProtrusion && IntegerAt(tree, {388}) == kExtrudeForm;
}

const FeatureKind& Extrude() {
  static const ExtrudeKind kind;
  return kind;
}

}  // namespace bench
