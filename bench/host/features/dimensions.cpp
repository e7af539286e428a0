#include "bench/host/features/dimensions.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/features.h"
#include "bench/host/features/section_solver.h"

namespace bench {
namespace {

constexpr int kAngleInSection = 12;
constexpr double kDegreesPerRadian = 180 / std::numbers::pi;

struct Number {
  DimensionSource source;
  bool is_angle = false;
};

ElementNode* NodeAt(ElementNode& tree, const std::vector<int>& path) {
  ElementNode* node = &tree;
  for (const int id : path)
    if (node) node = node->Child(id);
  return node;
}

double* TreeNumber(const Feature& feature, const std::vector<int>& path) {
  ElementNode* node = feature.tree ? NodeAt(*feature.tree, path) : nullptr;
  return node ? std::get_if<double>(&node->value) : nullptr;
}

SectionDimension* SectionNumber(const Feature& feature, int id) {
  if (!feature.section) return nullptr;
  const auto found = feature.section->dimensions.find(id);
  return found == feature.section->dimensions.end() ? nullptr : &found->second;
}

// The numbers that a feature has, in the order in which they get their symbols.
std::vector<Number> NumbersOf(const Feature& feature) {
  std::vector<Number> numbers;
  const FeatureKind* kind = feature.tree ? FeatureKind::Of(*feature.tree) : nullptr;
  if (kind)
    for (const DimensionRule& rule : kind->Dimensions())
      if (TreeNumber(feature, rule.path)) numbers.push_back({{rule.path, 0}, rule.is_angle});
  if (feature.section)
    for (const auto& [id, dimension] : feature.section->dimensions)
      numbers.push_back({{{}, id}, dimension.type == kAngleInSection});
  return numbers;
}

ProError SetTreeNumber(Feature& feature, const std::vector<int>& path, double value) {
  double* number = TreeNumber(feature, path);
  if (!number) return PRO_TK_E_NOT_FOUND;
  const double before = *number;
  *number = value;
  const auto problem = FeatureKind::Of(*feature.tree)->Check(*feature.tree);
  if (!problem) return PRO_TK_NO_ERROR;
  *number = before;
  return Refused(PRO_TK_BAD_INPUTS, problem->element,
                 "element " + std::to_string(problem->element) + " " + problem->what)
      .status;
}

ProError SetSectionNumber(Feature& feature, int id, double value) {
  if (!SectionNumber(feature, id)) return PRO_TK_E_NOT_FOUND;
  SectionData candidate = *feature.section;
  SectionDimension& dimension = candidate.dimensions[id];
  dimension.value = dimension.type == kAngleInSection ? value / kDegreesPerRadian : value;
  SolvedSection solved = SolveSection(candidate);
  if (solved.section) {
    *feature.section = std::move(*solved.section);
    return PRO_TK_NO_ERROR;
  }
  return Refused(solved.no_kernel ? PRO_TK_COMM_ERROR : PRO_TK_GENERAL_ERROR, feature.id, solved.reason)
      .status;
}

}  // namespace

void UpdateDimensions(Model& model, const Feature& feature) {
  const std::vector<Number> numbers = NumbersOf(feature);
  std::erase_if(model.dimensions, [&](const Dimension& dimension) {
    return dimension.feature == feature.id &&
           std::ranges::find(numbers, dimension.source, &Number::source) == numbers.end();
  });
  for (const Number& number : numbers) {
    const bool known = std::ranges::any_of(model.dimensions, [&](const Dimension& dimension) {
      return dimension.feature == feature.id && dimension.source == number.source;
    });
    if (!known)
      model.dimensions.push_back({model.next_dimension++, feature.id, number.source, number.is_angle});
  }
}

void DropDimensionsOfGoneFeatures(Model& model) {
  std::erase_if(model.dimensions,
                [&](const Dimension& dimension) { return !model.FindFeature(dimension.feature); });
}

Dimension* FindDimension(Model& model, int id) {
  const auto found = std::ranges::find(model.dimensions, id, &Dimension::id);
  return found == model.dimensions.end() ? nullptr : &*found;
}

std::optional<double> ValueOf(Model& model, const Dimension& dimension) {
  const Feature* feature = model.FindFeature(dimension.feature);
  if (!feature) return std::nullopt;
  if (!dimension.source.element_path.empty()) {
    const double* number = TreeNumber(*feature, dimension.source.element_path);
    return number ? std::optional(*number) : std::nullopt;
  }
  const SectionDimension* number = SectionNumber(*feature, dimension.source.section_dimension);
  if (!number) return std::nullopt;
  return dimension.is_angle ? number->value * kDegreesPerRadian : number->value;
}

ProError SetValue(Model& model, const Dimension& dimension, double value) {
  Feature* feature = model.FindFeature(dimension.feature);
  if (!feature) return PRO_TK_E_NOT_FOUND;
  if (!std::isfinite(value)) return PRO_TK_BAD_INPUTS;
  const bool in_tree = !dimension.source.element_path.empty();
  const ProError status = in_tree ? SetTreeNumber(*feature, dimension.source.element_path, value)
                                  : SetSectionNumber(*feature, dimension.source.section_dimension, value);
  if (status == PRO_TK_NO_ERROR) model.modified = true;
  return status;
}

}  // namespace bench
