#include "bench/kernel/features/mirror.h"

#include <BRepBuilderAPI_Transform.hxx>
#include <BRep_Builder.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <gp_Ax2.hxx>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <utility>

#include "bench/kernel/keys.h"
#include "bench/kernel/quilt.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

struct MirrorRecipe {
  gp_Ax3 plane;
  std::vector<std::string> faces, quilts, curves, points;
};

// Faces to be mirrored, with the names that their images get.
struct Originals {
  TopoDS_Compound faces;
  FaceNames names;
  int count = 0;

  Originals() { BRep_Builder().MakeCompound(faces); }

  void Add(const TopoDS_Face& face, const FaceName& name, const FeaturePlace& place) {
    if (names.IsBound(face)) return;
    BRep_Builder().Add(faces, face);
    names.Bind(face, {place, count++, WordOf(place) + "/" + name.text});
  }
};

Originals Collect(const MirrorRecipe& recipe, const FeaturePlace& place, const Before& before,
                  const Stage& stage) {
  Originals originals;
  const BodyKeys keys(stage.body, before.facts);
  // They lie in one array, in the order of their keys: the order of the asking doesn't matter.
  std::set<const KeyedFace*> faces;
  for (const std::string& key : recipe.faces) faces.insert(&keys.Face(key));
  for (const KeyedFace* face : faces) originals.Add(face->face, face->name, place);
  for (const std::string& key : recipe.quilts) {
    const Quilt& quilt = FindQuilt(stage.quilts, key);
    for (const TopoDS_Shape& face : Distinct(quilt.faces, TopAbs_FACE))
      originals.Add(TopoDS::Face(face), quilt.names.Find(face), place);
  }
  return originals;
}

void AddImages(const Originals& originals, const gp_Trsf& reflection, const FeaturePlace& place,
               std::vector<Quilt>& quilts) {
  if (originals.count == 0) return;
  constexpr bool kCopyGeometry = true;
  BRepBuilderAPI_Transform maker(originals.faces, reflection, kCopyGeometry);
  FaceNames names;
  for (const TopoDS_Shape& face : Distinct(originals.faces, TopAbs_FACE))
    names.Bind(maker.ModifiedShape(face), originals.names.Find(face));
  AddQuilts(maker.Shape(), names, place, quilts);
}

// "41:curve:3" in its parts.
struct DrawnKey {
  int feature = 0, entity = 0;
};

DrawnKey ReadDrawnKey(const std::string& key, const std::string& what) {
  const std::size_t middle = key.find(':' + what + ':');
  const auto number = [&](const std::string& digits) {
    const bool is_number =
        !digits.empty() && digits.size() < 10 && digits.find_first_not_of("0123456789") == std::string::npos;
    if (!is_number) throw Refusal("There is no " + what + " " + key + ".");
    return std::stoi(digits);
  };
  if (middle == std::string::npos) throw Refusal("There is no " + what + " " + key + ".");
  return {number(key.substr(0, middle)), number(key.substr(middle + what.size() + 2))};
}

// What an earlier feature has drawn. A stage keeps only what its own feature drew, so that is drawn again.
SketchGeometry DrawnBy(int feature, const Before& before) {
  const auto& recipes = before.recipes;
  for (std::size_t i = 0; i < recipes.size(); ++i) {
    if (recipes[i].feature != feature || recipes[i].content->ShapesTheBody()) continue;
    Stage alone;
    recipes[i].content->Build({feature, static_cast<int>(i)}, {recipes.first(i), before.facts}, alone);
    return alone.drawn;
  }
  throw Refusal("Feature " + std::to_string(feature) + " draws nothing that could be mirrored.");
}

template <typename Drawn>
const Drawn& Entity(const std::vector<Drawn>& list, int entity, const std::string& key) {
  const auto found =
      std::find_if(list.begin(), list.end(), [entity](const Drawn& each) { return each.entity == entity; });
  if (found == list.end()) throw Refusal("There is no " + key + ".");
  return *found;
}

SketchGeometry Reflected(const MirrorRecipe& recipe, const gp_Trsf& reflection, const Before& before) {
  SketchGeometry drawn;
  for (const std::string& key : recipe.curves) {
    const DrawnKey at = ReadDrawnKey(key, "curve");
    const SketchGeometry source = DrawnBy(at.feature, before);
    const TopoDS_Edge& edge = Entity(source.curves, at.entity, key).edge;
    constexpr bool kCopyGeometry = true;
    BRepBuilderAPI_Transform maker(edge, reflection, kCopyGeometry);
    drawn.curves.push_back({static_cast<int>(drawn.curves.size()) + 1, TopoDS::Edge(maker.Shape())});
  }
  for (const std::string& key : recipe.points) {
    const DrawnKey at = ReadDrawnKey(key, "point");
    const SketchGeometry source = DrawnBy(at.feature, before);
    const gp_Pnt image = Entity(source.points, at.entity, key).at.Transformed(reflection);
    drawn.points.push_back({static_cast<int>(drawn.points.size()) + 1, image});
  }
  return drawn;
}

class MirrorFeature : public Feature {
 public:
  explicit MirrorFeature(MirrorRecipe recipe) : recipe_(std::move(recipe)) {}

  void Build(const FeaturePlace& place, const Before& before, Stage& stage) const override {
    gp_Trsf reflection;
    reflection.SetMirror(gp_Ax2(recipe_.plane.Location(), recipe_.plane.Direction()));
    AddImages(Collect(recipe_, place, before, stage), reflection, place, stage.quilts);
    stage.drawn = Reflected(recipe_, reflection, before);
  }

  bool ShapesTheBody() const override { return false; }

 private:
  MirrorRecipe recipe_;
};

}  // namespace

std::unique_ptr<const Feature> ReadMirror(const Fields& fields, const std::string&) {
  MirrorRecipe recipe;
  recipe.plane = ReadPlane(fields);
  recipe.faces = fields.Texts("faces");
  recipe.quilts = fields.Texts("quilts");
  recipe.curves = fields.Texts("curves");
  recipe.points = fields.Texts("points");
  return std::make_unique<MirrorFeature>(std::move(recipe));
}

}  // namespace bench::kernel
