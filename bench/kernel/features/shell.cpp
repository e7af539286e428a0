#include "bench/kernel/features/shell.h"

#include <BRepBuilderAPI_Copy.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRepOffset_MakeOffset.hxx>
#include <BRep_Builder.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>

#include "bench/kernel/boolean.h"
#include "bench/kernel/features/body.h"
#include "bench/kernel/keys.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

struct ShellRecipe {
  double thickness = 0;
  std::vector<std::string> removed;  // keys of faces
};

constexpr double kLeastThickness = 1e-5;
constexpr double kLargestThickness = 1e7;
constexpr double kOffsetTolerance = 1e-7;
// A wall may be thinner than told by this, in mm.
constexpr double kThicknessSlack = 1e-5;
// A part of the inner shape's volume that is no more than an error of integration.
constexpr double kClearShare = 1e-6;

constexpr const char* kDoesNotFit = "The thickness doesn't fit into the body.";

// What a solid is hollowed by: its own shape, smaller by the thickness on all sides but the open ones.
struct Core {
  NamedShape shape;
  std::vector<TopoDS_Face> walls;  // the faces that stand off from the solid's
};

struct OuterFace {
  const KeyedFace* keyed = nullptr;
  int rank = 0;
  bool open = false;
};

using OuterFaces = std::vector<OuterFace>;

OuterFaces OuterFacesOf(const TopoDS_Solid& solid, const BodyKeys& keys, const ShellRecipe& recipe) {
  NamedShape alone;
  alone.solids.push_back(solid);
  const std::vector<TopoDS_Face> own = alone.Faces();
  OuterFaces faces;
  for (std::size_t i = 0; i < keys.faces().size(); ++i) {
    const KeyedFace& keyed = keys.faces()[i];
    const bool is_own =
        std::any_of(own.begin(), own.end(), [&](const TopoDS_Face& face) { return face.IsSame(keyed.face); });
    if (!is_own) continue;
    const auto found = std::find(recipe.removed.begin(), recipe.removed.end(), keyed.key);
    faces.push_back({&keyed, static_cast<int>(i), found != recipe.removed.end()});
  }
  return faces;
}

// The number of a part is written with a dot: the parts of an inner face have numbers of their own.
FaceName InnerName(const OuterFace& face, const FeaturePlace& place) {
  std::string outer = face.keyed->key;
  std::replace(outer.begin(), outer.end(), '#', '.');
  return OwnName(place, face.rank, "inner:" + outer);
}

Core CoreOf(const TopoDS_Solid& solid, const OuterFaces& faces, double thickness, const FeaturePlace& place) {
  // The toolkit may touch up what it offsets, and the solid is the cache's.
  BRepBuilderAPI_Copy copy(solid);
  constexpr bool kThroughout = false, kAgainstItself = false, kThicken = false;
  BRepOffset_MakeOffset offset;
  offset.Initialize(copy.Shape(), -thickness, kOffsetTolerance, BRepOffset_Skin, kThroughout, kAgainstItself,
                    GeomAbs_Intersection, kThicken);
  for (const OuterFace& face : faces)
    if (face.open) offset.SetOffsetOnFace(TopoDS::Face(copy.ModifiedShape(face.keyed->face)), 0);
  // Where a face shrinks to nothing, the toolkit says so in one way or the other.
  try {
    offset.MakeOffsetShape();
  } catch (const Standard_Failure&) {
    throw Refusal(kDoesNotFit);
  }
  if (!offset.IsDone()) throw Refusal(kDoesNotFit);

  Core core;
  core.shape.solids = SolidsIn(offset.Shape());
  for (const OuterFace& face : faces) {
    for (const TopoDS_Shape& made : offset.Generated(copy.ModifiedShape(face.keyed->face))) {
      if (made.ShapeType() != TopAbs_FACE) continue;
      core.shape.names.Bind(made, InnerName(face, place));
      if (!face.open) core.walls.push_back(TopoDS::Face(made));
    }
  }
  return core;
}

TopoDS_Compound CompoundOf(const std::vector<TopoDS_Face>& faces) {
  BRep_Builder builder;
  TopoDS_Compound compound;
  builder.MakeCompound(compound);
  for (const TopoDS_Face& face : faces) builder.Add(compound, face);
  return compound;
}

// The offset of a shape that is too thin comes out turned over, or through its other side, and can still be a
// valid solid.
void CheckCore(const Core& core, const TopoDS_Solid& solid, const OuterFaces& faces, double thickness) {
  NamedShape around;
  around.solids.push_back(solid);
  std::vector<TopoDS_Face> kept;
  for (const OuterFace& face : faces) {
    around.names.Bind(face.keyed->face, face.keyed->name);
    if (!face.open) kept.push_back(face.keyed->face);
  }
  const NamedShape& shape = core.shape;
  if (shape.IsEmpty() || core.walls.size() != kept.size() || !BRepCheck_Analyzer(shape.Compound()).IsValid())
    throw Refusal(kDoesNotFit);
  const std::vector<TopoDS_Face> made = shape.Faces();
  const auto has_name = [&](const TopoDS_Face& face) { return shape.names.IsBound(face); };
  if (made.size() != faces.size() || !std::all_of(made.begin(), made.end(), has_name))
    throw Refusal(kDoesNotFit);
  const double volume = VolumeOf(shape);
  if (!(volume > 0)) throw Refusal(kDoesNotFit);
  const BRepExtrema_DistShapeShape distance(CompoundOf(core.walls), CompoundOf(kept));
  if (!distance.IsDone() || !(distance.Value() >= thickness - kThicknessSlack)) throw Refusal(kDoesNotFit);
  const double inside = VolumeOf(Boolean(BooleanKind::kCommon, shape, around).Result());
  if (!(inside >= (1 - kClearShare) * volume)) throw Refusal(kDoesNotFit);
}

void CheckRecipe(const ShellRecipe& recipe, const NamedShape& body, const BodyKeys& keys) {
  if (!(recipe.thickness > kLeastThickness)) throw Refusal("The thickness must be above 0.");
  if (!(recipe.thickness <= kLargestThickness)) throw Refusal(kDoesNotFit);
  if (body.IsEmpty()) throw Refusal("There is no body to shell.");
  for (const std::string& key : recipe.removed) keys.Face(key);
}

class ShellFeature : public Feature {
 public:
  explicit ShellFeature(ShellRecipe recipe) : recipe_(std::move(recipe)) {}

  void Build(const FeaturePlace& place, const Before& before, Stage& stage) const override {
    const BodyKeys keys(stage.body, before.facts);
    CheckRecipe(recipe_, stage.body, keys);
    NamedShape cores;
    for (const TopoDS_Solid& solid : stage.body.solids) {
      const OuterFaces faces = OuterFacesOf(solid, keys, recipe_);
      const bool all_open =
          std::all_of(faces.begin(), faces.end(), [](const OuterFace& face) { return face.open; });
      if (all_open) throw Refusal("A shell can't remove all faces of a solid.");
      const Core core = CoreOf(solid, faces, recipe_.thickness, place);
      CheckCore(core, solid, faces, recipe_.thickness);
      cores.solids.insert(cores.solids.end(), core.shape.solids.begin(), core.shape.solids.end());
      for (const TopoDS_Face& face : core.shape.Faces()) cores.names.Bind(face, core.shape.names.Find(face));
    }
    stage.body = Cut(stage.body, cores);
  }

 private:
  ShellRecipe recipe_;
};

}  // namespace

std::unique_ptr<const Feature> ReadShell(const Fields& fields, const std::string&) {
  ShellRecipe recipe;
  recipe.thickness = fields.Number("thickness");
  for (const nlohmann::json& key : fields.Array("removed")) {
    if (!key.is_string()) fields.Complain("'removed' must hold keys of faces");
    recipe.removed.push_back(key.get<std::string>());
  }
  return std::make_unique<ShellFeature>(std::move(recipe));
}

}  // namespace bench::kernel
