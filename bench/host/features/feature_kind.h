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
  bool repeats = false;        // may stand there several times
  bool may_be_empty = false;   // may stand there without a value
};

// An element whose number is a dimension of the model.
struct DimensionRule {
  std::vector<int> path;
  bool is_angle = false;
};

// Where a feature's section comes from: there is none, it is drawn in the feature itself, or it is copied
// from a sketch together with the sketch's plane.
enum class SectionSource { kNone, kOwn, kSketch };

class FeatureKind {
 public:
  virtual ~FeatureKind() = default;

  // The kind that a tree belongs to by its type and form, or null.
  static const FeatureKind* Of(const ElementNode& tree);

  // Whether a tree makes sense by itself: it keeps the rules, and its values go together.
  std::optional<TreeProblem> Check(const ElementNode& tree) const;

  virtual SectionSource Source() const { return SectionSource::kNone; }

  // Of a kind with a section: the compound in which trees keep it, as element 458.
  virtual std::span<const int> SectionPath() const;

  // Adds to a tree that is handed out what the host shows in it beside what its maker has put there.
  virtual void Elaborate(ElementNode&) const {}

  // Fills in where a feature stands that has its tree: its parents, and its plane where it has one. Each item
  // that the tree refers to must be alive and stand before the feature, which may not be in the model yet.
  virtual std::optional<TreeProblem> Place(Model& model, Feature& feature) const;

  // Whether it is Place that gives such a feature its plane.
  virtual bool HasPlane() const { return false; }

  // The type of the feature that such a tree makes. The tree has been checked, here and below.
  virtual ProFeattype Type(const ElementNode& tree) const = 0;

  // Whether the feature can be complete with that section.
  virtual std::optional<TreeProblem> CheckSection(const SectionData&) const { return std::nullopt; }

  // The datums of such a feature beside its geometry, as their types: items that the host makes itself, in
  // this order. A datum plane comes behind the surface that it is too.
  virtual std::vector<ProType> Datums(const ElementNode&) const { return {}; }

  // The numbers of such trees that are dimensions, in the order in which they get their symbols. A feature
  // has those that its tree holds, and behind them the dimensions of its section.
  virtual std::vector<DimensionRule> Dimensions() const { return {}; }

  // The kernel's recipe, but for the feature's id; null for a kind that has no geometry of the kernel's.
  // Lengths of tree and section are in units of the model, those of recipes in millimetres.
  virtual nlohmann::json Recipe(const Feature& feature, const Model& model) const = 0;

 protected:
  virtual int Root() const { return 386; }
  virtual std::span<const ElementRule> Rules() const = 0;
  virtual std::optional<TreeProblem> CheckValues(const ElementNode&) const { return std::nullopt; }
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
bool IsRound(const ElementNode& tree);
const FeatureKind& Round();
bool IsChamfer(const ElementNode& tree);
const FeatureKind& Chamfer();
bool IsAngledChamfer(const ElementNode& tree);
const FeatureKind& AngledChamfer();
bool IsDraft(const ElementNode& tree);
const FeatureKind& Draft();
bool IsShell(const ElementNode& tree);
const FeatureKind& Shell();
bool IsHole(const ElementNode& tree);
const FeatureKind& Hole();
bool IsMove(const ElementNode& tree);
const FeatureKind& Move();
bool IsThread(const ElementNode& tree);
const FeatureKind& Thread();
bool IsDatumAxis(const ElementNode& tree);
const FeatureKind& DatumAxis();
bool IsDatumPlane(const ElementNode& tree);
const FeatureKind& DatumPlane();
bool IsPattern(const ElementNode& tree);
const FeatureKind& Pattern();
bool IsMirror(const ElementNode& tree);
const FeatureKind& Mirror();
bool IsSolidify(const ElementNode& tree);
const FeatureKind& Solidify();
bool IsSweep(const ElementNode& tree);
const FeatureKind& Sweep();
bool IsImported(const ElementNode& tree);
const FeatureKind& Imported();

// The kernel's name of a surface, edge, curve or point of the model; empty for what is not the kernel's.
std::string KeyOf(const Model& model, const ItemReference& item);
std::vector<std::string> KeysOf(const Model& model, const std::vector<ItemReference>& items);

// The items of an element of a checked tree; none of an element that is not there.
std::vector<ItemReference> ItemsAt(const ElementNode& tree, std::initializer_list<int> path);

// Values of a checked tree; of an element that is not there, the value given.
int IntegerAt(const ElementNode& tree, std::initializer_list<int> path, int otherwise = 0);
double DoubleAt(const ElementNode& tree, std::initializer_list<int> path, double otherwise = 0);

}  // namespace bench
