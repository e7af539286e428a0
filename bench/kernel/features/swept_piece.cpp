#include "bench/kernel/features/swept_piece.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepOffsetAPI_MakePipe.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepSweep_Revol.hxx>
#include <BndLib_Add2dCurve.hxx>
#include <Bnd_Box2d.hxx>
#include <Geom_Circle.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "bench/kernel/boolean.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

// How many places of a free curve are looked at for bends that are too tight.
constexpr int kLooks = 400;

[[noreturn]] void Refuse(const PieceRecipe& recipe, const std::string& what) {
  throw Refusal("The section is too wide for " + what + " of the trajectory's entity " +
                std::to_string(recipe.piece.curve.entity) + ".");
}

// The solids that `maker` makes of the section's faces, with their names. `wall` gives the face that grew out
// of an edge, or a null shape.
template <typename Maker, typename Wall>
void AddNamed(Maker& maker, const Section& section, const TopoDS_Face& face, const PieceNames& names,
              Wall wall, NamedShape& shape) {
  const std::vector<TopoDS_Solid> solids = SolidsIn(maker.Shape());
  shape.solids.insert(shape.solids.end(), solids.begin(), solids.end());
  shape.names.Bind(maker.FirstShape(), names.start);
  shape.names.Bind(maker.LastShape(), names.end);
  for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
    const TopoDS_Shape side = wall(edges.Current());
    if (!side.IsNull() && side.ShapeType() == TopAbs_FACE)
      shape.names.Bind(side, names.Side(section.entities.Find(edges.Current())));
  }
}

// What lies beyond a mitre's plane, as far as the section reaches.
NamedShape BeyondMitre(const gp_Pnt& at, const gp_Dir& outwards, double size, const PieceNames& names) {
  const gp_Ax2 frame(at, outwards);
  const gp_Pnt corner =
      at.Translated(gp_Vec(frame.XDirection()) * -size + gp_Vec(frame.YDirection()) * -size);
  NamedShape beyond;
  beyond.solids = SolidsIn(
      BRepPrimAPI_MakeBox(gp_Ax2(corner, outwards, frame.XDirection()), 2 * size, 2 * size, size).Shape());
  for (const TopoDS_Face& face : beyond.Faces()) beyond.names.Bind(face, names.joint);
  return beyond;
}

// A straight piece. It is made longer where it ends in a mitre, and cut off there.
class StraightPiece {
 public:
  explicit StraightPiece(const PieceRecipe& recipe)
      : recipe_(recipe),
        start_(InSpace(recipe.piece.curve.Start(), recipe.path_plane)),
        end_(InSpace(recipe.piece.curve.End(), recipe.path_plane)),
        along_(gp_Vec(start_, end_).Normalized()),
        normal_(recipe.path_plane.Direction()) {}

  NamedShape Make() {
    const double before = Surplus(recipe_.mitre_at_start), behind = Surplus(recipe_.mitre_at_end);
    CheckLength();
    Sketch sketch = recipe_.section;
    sketch.plane.Translate(along_ * -before);
    const Section section = BuildSection(sketch);
    const double length = start_.Distance(end_) + before + behind;
    NamedShape shape;
    for (const TopoDS_Face& face : section.faces) {
      BRepPrimAPI_MakePrism maker(face, along_ * length);
      const auto wall = [&maker](const TopoDS_Shape& edge) { return maker.Generated(edge).First(); };
      AddNamed(maker, section, face, recipe_.names, wall, shape);
    }
    const double size = 4 * (length + SizeOf(section));
    if (recipe_.mitre_at_start) CutOff(shape, start_, along_.Reversed(), -*recipe_.mitre_at_start, size);
    if (recipe_.mitre_at_end) CutOff(shape, end_, along_, *recipe_.mitre_at_end, size);
    return shape;
  }

 private:
  double Surplus(const std::optional<double>& half_turn) const {
    if (!half_turn) return 0;
    return recipe_.across.Size() * (std::abs(std::tan(*half_turn)) + 1);
  }

  static double SizeOf(const Section& section) {
    return ExtentAlong(section.curves, gp_Dir2d(1, 0)).Size() +
           ExtentAlong(section.curves, gp_Dir2d(0, 1)).Size();
  }

  // The two mitres must not meet within the section.
  void CheckLength() const {
    const double gone =
        std::tan(recipe_.mitre_at_start.value_or(0)) + std::tan(recipe_.mitre_at_end.value_or(0));
    const double length = start_.Distance(end_);
    for (const double side : {recipe_.across.low, recipe_.across.high})
      if (!(length - side * gone > kJoinTolerance)) Refuse(recipe_, "the corners");
  }

  // Takes off what lies beyond the plane that `outwards` meets at a right angle once it is turned left by
  // `turn`.
  void CutOff(NamedShape& shape, const gp_Pnt& at, const gp_Vec& outwards, double turn, double size) const {
    const gp_Vec mitred = outwards.Rotated(gp_Ax1(at, normal_), turn);
    const NamedShape beyond = BeyondMitre(at, gp_Dir(mitred), size, recipe_.names);
    shape = Boolean(BooleanKind::kCut, shape, beyond).Result();
  }

  const PieceRecipe& recipe_;
  gp_Pnt start_, end_;
  gp_Vec along_;
  gp_Dir normal_;
};

NamedShape ArcPiece(const PieceRecipe& recipe) {
  const PlanarCurve& curve = recipe.piece.curve;
  const auto circle = Handle(Geom_Circle)::DownCast(InSpace(curve.curve, recipe.path_plane));
  // The curve runs its piece's way, and its axis follows it: left of it is the centre, or right of it.
  const gp_Ax1 axis = circle->Axis();
  const bool left = axis.Direction().Dot(recipe.path_plane.Direction()) > 0;
  const double inwards = left ? recipe.across.high : -recipe.across.low;
  if (inwards > circle->Radius() + kJoinTolerance) Refuse(recipe, "the bend");

  const Section section = BuildSection(recipe.section);
  NamedShape shape;
  for (const TopoDS_Face& face : section.faces) {
    BRepPrimAPI_MakeRevol maker(face, axis, curve.closed ? 2 * std::numbers::pi : curve.last - curve.first);
    if (!maker.IsDone()) throw Refusal("The section can't be swept along the bend.");
    // The maker's own history leaves out the flat walls of a full turn; its sweep knows them.
    BRepSweep_Revol sweep = maker.Revol();
    const auto wall = [&sweep](const TopoDS_Shape& edge) { return sweep.Shape(edge); };
    AddNamed(maker, section, face, recipe.names, wall, shape);
  }
  if (VolumeOf(shape) < 0)
    for (TopoDS_Solid& solid : shape.solids) solid.Reverse();
  return shape;
}

// Whether two segments have a point in common.
bool Meet(const gp_Pnt2d& a, const gp_Pnt2d& b, const gp_Pnt2d& c, const gp_Pnt2d& d) {
  const auto side = [](const gp_Pnt2d& from, const gp_Pnt2d& to, const gp_Pnt2d& point) {
    return gp_Vec2d(from, to).Crossed(gp_Vec2d(from, point)) > 0;
  };
  return side(a, b, c) != side(a, b, d) && side(c, d, a) != side(c, d, b);
}

// The section at place after place of the trajectory's plane must not come back to where it has been: neither
// in a bend that is too tight nor on the curve's way round.
void CheckFreeCurve(const PieceRecipe& recipe) {
  const PlanarCurve& curve = recipe.piece.curve;
  std::vector<std::pair<gp_Pnt2d, gp_Pnt2d>> places;
  for (int i = 0; i <= kLooks; ++i) {
    gp_Pnt2d at;
    gp_Vec2d along;
    curve.curve->D1(curve.first + (curve.last - curve.first) * i / kLooks, at, along);
    const gp_Vec2d left = gp_Vec2d(-along.Y(), along.X()).Normalized();
    places.emplace_back(at.Translated(left * recipe.across.low), at.Translated(left * recipe.across.high));
  }
  for (std::size_t i = 0; i < places.size(); ++i)
    for (std::size_t j = i + 1; j < places.size(); ++j)
      if (Meet(places[i].first, places[i].second, places[j].first, places[j].second))
        Refuse(recipe, "the bends");
}

NamedShape FreePiece(const PieceRecipe& recipe) {
  CheckFreeCurve(recipe);
  const PlanarCurve& curve = recipe.piece.curve;
  const TopoDS_Edge edge =
      BRepBuilderAPI_MakeEdge(InSpace(curve.curve, recipe.path_plane), curve.first, curve.last);
  const TopoDS_Wire wire = BRepBuilderAPI_MakeWire(edge);
  const Section section = BuildSection(recipe.section);
  NamedShape shape;
  for (const TopoDS_Face& face : section.faces) {
    BRepOffsetAPI_MakePipe maker(wire, face);
    if (!maker.IsDone()) throw Refusal("The section can't be swept along the curve.");
    const auto wall = [&](const TopoDS_Shape& side) { return maker.Generated(edge, side); };
    AddNamed(maker, section, face, recipe.names, wall, shape);
  }
  return shape;
}

}  // namespace

double Extent::Size() const {
  return std::max(std::abs(low), std::abs(high));
}

Extent ExtentAlong(const std::vector<PlanarCurve>& curves, const gp_Dir2d& direction) {
  gp_Trsf2d onto_x_axis;
  onto_x_axis.SetTransformation(gp_Ax2d(gp_Pnt2d(0, 0), direction));
  Bnd_Box2d box;
  for (const PlanarCurve& curve : curves) {
    const auto turned = Handle(Geom2d_Curve)::DownCast(curve.curve->Transformed(onto_x_axis));
    BndLib_Add2dCurve::AddOptimal(turned, curve.first, curve.last, 0, box);
  }
  Extent extent;
  double low = 0, high = 0;
  box.Get(extent.low, low, extent.high, high);
  return extent;
}

FaceName PieceNames::Side(int section_entity) const {
  return OwnName(place, first_rank + section_entity,
                 "side:" + std::to_string(section_entity) + ":" + std::to_string(path_entity));
}

NamedShape SweptPiece(const PieceRecipe& recipe) {
  if (recipe.piece.IsLine()) return StraightPiece(recipe).Make();
  return recipe.piece.IsArc() ? ArcPiece(recipe) : FreePiece(recipe);
}

}  // namespace bench::kernel
