#include "bench/kernel/features/extrude.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "bench/kernel/boolean.h"
#include "bench/kernel/bounds.h"
#include "bench/kernel/features/body.h"
#include "bench/kernel/features/prism.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/section.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

enum class ExtentMode { kBlind, kSymmetric, kTwo, kThroughAll, kToNext };

struct ExtrudeRecipe {
  Sketch sketch;
  Operation operation = Operation::kJoin;
  ExtentMode mode = ExtentMode::kBlind;
  double depth = 0, depth2 = 0;
  bool reverse = false;
  double taper_deg = 0;
};

constexpr double kLeastDepth = 1e-5;
constexpr double kLargestDepth = 1e7;
// Walls that lean by less than this, in degrees, are upright.
constexpr double kLeastTaper = 1e-9;

void CheckNumbers(const ExtrudeRecipe& recipe) {
  if (!(std::abs(recipe.taper_deg) < 90)) throw Refusal("The taper must be between -90 and 90 degrees.");
  if (recipe.mode == ExtentMode::kThroughAll || recipe.mode == ExtentMode::kToNext) return;
  if (recipe.mode == ExtentMode::kTwo && !(recipe.depth >= 0 && recipe.depth2 >= 0))
    throw Refusal("Neither of the two depths may be below 0.");
  const double whole = recipe.depth + recipe.depth2;
  if (!(whole > kLeastDepth)) throw Refusal("The depth must be above 0.");
  if (!(whole <= kLargestDepth)) throw Refusal("The depth is too large.");
}

// The section of an extrude on its way to become a tool.
class Sweeper {
 public:
  Sweeper(const ExtrudeRecipe& recipe, const FeaturePlace& place)
      : section_(BuildSection(recipe.sketch)),
        direction_(recipe.sketch.plane.Direction()),
        taper_(recipe.taper_deg * std::numbers::pi / 180),
        tapered_(std::abs(recipe.taper_deg) > kLeastTaper),
        place_(place) {
    if (recipe.reverse) direction_.Reverse();
  }

  NamedShape Forward(double depth) const {
    if (tapered_) return DraftedPrism(section_, direction_, depth, taper_, place_);
    return UprightPrism(section_, direction_, 0, depth, place_);
  }

  // `ahead` in the direction and `behind` against it.
  NamedShape BothWays(double ahead, double behind) const {
    if (!(behind > kLeastDepth)) return Forward(ahead);
    if (!tapered_) return UprightPrism(section_, direction_, -behind, ahead, place_);
    NamedShape back = DraftedPrism(section_, direction_.Reversed(), behind, taper_, place_);
    // The far end of the half behind the plane is where the feature starts.
    for (const TopoDS_Face& face : back.Faces()) {
      const int rank = back.names.Find(face).rank;
      if (rank == kStartRank) back.names.Bind(face, EndName(place_));
      if (rank == kEndRank) back.names.Bind(face, StartName(place_));
    }
    if (!(ahead > kLeastDepth)) return back;
    return Join(Forward(ahead), back);
  }

  // How far the body reaches from the section's plane in the direction.
  double Reach(const NamedShape& body) const {
    gp_Trsf into_frame;
    into_frame.SetTransformation(gp_Ax3(section_.plane.Location(), direction_));
    return BoundsOf(body.Compound().Moved(into_frame)).high.Z();
  }

  const FeaturePlace& place() const { return place_; }
  const gp_Dir& direction() const { return direction_; }
  const gp_Pnt& origin() const { return section_.plane.Location(); }

 private:
  Section section_;
  gp_Dir direction_;
  double taper_;
  bool tapered_;
  FeaturePlace place_;
};

// A prism that ends beyond everything the body has in the direction.
NamedShape PrismPastBody(const Sweeper& sweeper, const NamedShape& body) {
  if (body.IsEmpty()) throw Refusal("There is no body that the section could meet.");
  const double reach = sweeper.Reach(body);
  if (!(reach > kLeastDepth)) throw Refusal("The section meets no body in its direction.");
  return sweeper.Forward(1.001 * reach + 0.001);
}

bool HasAny(const TopoDS_Solid& solid, const std::vector<TopoDS_Face>& faces) {
  NamedShape piece;
  piece.solids.push_back(solid);
  const std::vector<TopoDS_Face> own = piece.Faces();
  return std::any_of(own.begin(), own.end(), [&](const TopoDS_Face& face) {
    return std::any_of(faces.begin(), faces.end(),
                       [&](const TopoDS_Face& other) { return face.IsSame(other); });
  });
}

// What is left of a prism outside the body, told apart by the ends of the prism that the pieces have.
struct OpenPieces {
  NamedShape all;
  std::vector<TopoDS_Solid> at_start, at_end;
};

OpenPieces PiecesOutside(const NamedShape& prism, const NamedShape& body, const FeaturePlace& place) {
  Boolean outside(BooleanKind::kCut, prism, body);
  const auto descendants = [&](const FaceName& name) {
    std::vector<TopoDS_Face> faces;
    for (const TopoDS_Face& face : prism.FacesNamed(name)) {
      for (const TopoDS_Face& descendant : outside.Descendants(face)) faces.push_back(descendant);
    }
    return faces;
  };
  const auto start = descendants(StartName(place)), end = descendants(EndName(place));
  OpenPieces pieces;
  pieces.all = outside.Result();
  for (const TopoDS_Solid& solid : pieces.all.solids) {
    if (HasAny(solid, start)) pieces.at_start.push_back(solid);
    if (HasAny(solid, end)) pieces.at_end.push_back(solid);
  }
  return pieces;
}

bool Holds(const std::vector<TopoDS_Solid>& solids, const TopoDS_Solid& solid) {
  return std::any_of(solids.begin(), solids.end(),
                     [&](const TopoDS_Solid& other) { return other.IsSame(solid); });
}

// Some of the solids of a shape, with all of its names.
NamedShape Only(const NamedShape& shape, const std::vector<TopoDS_Solid>& solids) {
  NamedShape result = shape;
  result.solids = solids;
  return result;
}

NamedShape JoinThroughAll(const Sweeper& sweeper, const NamedShape& body) {
  const OpenPieces pieces = PiecesOutside(PrismPastBody(sweeper, body), body, sweeper.place());
  std::vector<TopoDS_Solid> bounded;
  bool past = false;
  for (const TopoDS_Solid& solid : pieces.all.solids) {
    const bool ends = Holds(pieces.at_end, solid);
    if (!ends) bounded.push_back(solid);
    past = past || (ends && Holds(pieces.at_start, solid));
  }
  if (bounded.empty() && past) throw Refusal("The body does not bound the section in its direction.");
  return bounded.empty() ? body : Join(body, Only(pieces.all, bounded));
}

NamedShape JoinToNext(const Sweeper& sweeper, const NamedShape& body) {
  const OpenPieces pieces = PiecesOutside(PrismPastBody(sweeper, body), body, sweeper.place());
  if (pieces.at_start.empty()) throw Refusal("There is no room between the section and the body.");
  for (const TopoDS_Solid& solid : pieces.at_start) {
    if (Holds(pieces.at_end, solid)) throw Refusal("The section meets no next surface in its direction.");
  }
  return Join(body, Only(pieces.all, pieces.at_start));
}

// From where to where a solid reaches in the direction.
struct Layer {
  TopoDS_Solid solid;
  double near = 0, far = 0;
};

// The solids that begin before the nearest of them ends.
std::vector<TopoDS_Solid> FirstLayer(const Sweeper& sweeper, const NamedShape& common) {
  gp_Trsf into_frame;
  into_frame.SetTransformation(gp_Ax3(sweeper.origin(), sweeper.direction()));
  std::vector<Layer> layers;
  for (const TopoDS_Solid& solid : common.solids) {
    const Bounds bounds = BoundsOf(solid.Moved(into_frame));
    layers.push_back({solid, bounds.low.Z(), bounds.high.Z()});
  }
  std::sort(layers.begin(), layers.end(), [](const Layer& a, const Layer& b) { return a.near < b.near; });
  std::vector<TopoDS_Solid> first;
  for (const Layer& layer : layers) {
    if (layer.near < layers.front().far - kLeastDepth) first.push_back(layer.solid);
  }
  return first;
}

NamedShape CutToNext(const Sweeper& sweeper, const NamedShape& body) {
  const NamedShape common = Boolean(BooleanKind::kCommon, PrismPastBody(sweeper, body), body).Result();
  if (common.IsEmpty()) throw Refusal("The section meets no body in its direction.");
  return Cut(body, Only(common, FirstLayer(sweeper, common)));
}

NamedShape Extruded(const ExtrudeRecipe& recipe, const FeaturePlace& place, const NamedShape& body) {
  CheckNumbers(recipe);
  const Sweeper sweeper(recipe, place);
  const bool join = recipe.operation == Operation::kJoin;
  switch (recipe.mode) {
    case ExtentMode::kBlind:
      return Apply(recipe.operation, body, sweeper.Forward(recipe.depth));
    case ExtentMode::kSymmetric:
      return Apply(recipe.operation, body, sweeper.BothWays(recipe.depth / 2, recipe.depth / 2));
    case ExtentMode::kTwo:
      return Apply(recipe.operation, body, sweeper.BothWays(recipe.depth, recipe.depth2));
    case ExtentMode::kThroughAll:
      return join ? JoinThroughAll(sweeper, body) : Cut(body, PrismPastBody(sweeper, body));
    case ExtentMode::kToNext:
      return join ? JoinToNext(sweeper, body) : CutToNext(sweeper, body);
  }
  throw Refusal("The extent has no known mode.");
}

class ExtrudeFeature : public Feature {
 public:
  explicit ExtrudeFeature(ExtrudeRecipe recipe) : recipe_(std::move(recipe)) {}

  void Build(const FeaturePlace& place, const Before&, Stage& stage) const override {
    stage.body = Extruded(recipe_, place, stage.body);
  }

  std::unique_ptr<const Feature> Moved(const gp_Trsf& motion) const override {
    ExtrudeRecipe moved = recipe_;
    moved.sketch.plane.Transform(motion);
    return std::make_unique<ExtrudeFeature>(std::move(moved));
  }

 private:
  ExtrudeRecipe recipe_;
};

ExtentMode ReadMode(const Fields& extent) {
  const std::string mode = extent.Text("mode");
  if (mode == "blind") return ExtentMode::kBlind;
  if (mode == "symmetric") return ExtentMode::kSymmetric;
  if (mode == "two") return ExtentMode::kTwo;
  if (mode == "through_all") return ExtentMode::kThroughAll;
  if (mode == "to_next") return ExtentMode::kToNext;
  extent.Complain("unknown mode '" + mode + "'");
}

}  // namespace

std::unique_ptr<const Feature> ReadExtrude(const Fields& fields, const std::string& where) {
  ExtrudeRecipe recipe;
  recipe.sketch = ReadSketch(fields, where);
  recipe.operation = ReadOperation(fields);
  const Fields extent = fields.Object("extent");
  recipe.mode = ReadMode(extent);
  const bool measured = recipe.mode != ExtentMode::kThroughAll && recipe.mode != ExtentMode::kToNext;
  if (measured) recipe.depth = extent.Number("depth");
  if (recipe.mode == ExtentMode::kTwo) recipe.depth2 = extent.Number("depth2");
  recipe.reverse = fields.Flag("reverse", false);
  recipe.taper_deg = fields.Number("taper_deg", 0);
  return std::make_unique<ExtrudeFeature>(std::move(recipe));
}

}  // namespace bench::kernel
