// The kinds of features: each reads its element tree strictly and turns it into a recipe for the kernel.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "bench/host/model/model.h"

namespace bench {

// What is wrong with a tree, and at which of its elements.
struct TreeProblem {
  int element = 0;
  std::string what;
};

// An element that a tree of some kind may hold, by the ids that lead to it from the root. Its kind of value
// is that of the catalog.
struct ElementRule {
  std::vector<int> path;
  bool required = true;        // wherever its parent is
  std::vector<int> allowed{};  // the integers that it may hold; empty: any
};

// Where a feature's section comes from: it is drawn in the feature itself, on the plane that its tree names,
// or copied from a sketch together with the sketch's plane.
enum class SectionSource { kOwn, kSketch };

class FeatureKind {
 public:
  virtual ~FeatureKind() = default;

  // The kind that a tree belongs to by its type and form, or null.
  static const FeatureKind* Of(const ElementNode& tree);

  // Whether a tree makes sense by itself: it keeps the rules, and its values go together.
  std::optional<TreeProblem> Check(const ElementNode& tree) const;

  virtual SectionSource Source() const = 0;

  // The type of the feature that such a tree makes. The tree has been checked, here and below.
  virtual ProFeattype Type(const ElementNode& tree) const = 0;

  // Whether the feature can be complete with that section.
  virtual std::optional<TreeProblem> CheckSection(const SectionData& section) const = 0;

  // The kernel's recipe, but for the feature's id. `mm` is the length of the model's unit.
  virtual nlohmann::json Recipe(const Feature& feature, double mm) const = 0;

 protected:
  virtual std::span<const ElementRule> Rules() const = 0;
  virtual std::optional<TreeProblem> CheckValues(const ElementNode& tree) const = 0;
};

// The compound in which such trees keep their section: its setup (450) and its sketcher element (458).
constexpr int kSectionElement = 447;
constexpr int kSetupElement = 450;
constexpr int kSketcherElement = 458;

// The single kinds.
bool IsSketchedCurve(const ElementNode& tree);
const FeatureKind& SketchedCurve();
bool IsExtrude(const ElementNode& tree);
const FeatureKind& Extrude();
bool IsRevolve(const ElementNode& tree);
const FeatureKind& Revolve();

// Values of a checked tree; of an element that is not there, the value given.
int IntegerAt(const ElementNode& tree, std::initializer_list<int> path, int otherwise = 0);
double DoubleAt(const ElementNode& tree, std::initializer_list<int> path, double otherwise = 0);

}  // namespace bench
