#include "bench/kernel/features/prism.h"

#include <BRepBuilderAPI_Transform.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepOffsetAPI_DraftAngle.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRep_Tool.hxx>
#include <GeomAPI.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Pln.hxx>
#include <optional>

#include "bench/kernel/crossing.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

// The wall that grew out of one edge of the section, and that edge's copy at the far end.
struct Wall {
  int entity = 0;
  TopoDS_Edge edge;
  TopoDS_Edge far_edge;
  TopoDS_Face face;
};

struct Prism {
  TopoDS_Solid solid;
  TopoDS_Face start, end;
  std::vector<Wall> walls;
};

Prism Sweep(const Section& section, const TopoDS_Face& face, const gp_Vec& sweep) {
  BRepPrimAPI_MakePrism maker(face, sweep);
  Prism prism;
  prism.solid = SolidsIn(maker.Shape()).at(0);
  prism.start = TopoDS::Face(maker.FirstShape(face));
  prism.end = TopoDS::Face(maker.LastShape(face));
  for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
    Wall wall;
    wall.edge = TopoDS::Edge(edges.Current());
    wall.entity = section.entities.Find(wall.edge);
    wall.far_edge = TopoDS::Edge(maker.LastShape(wall.edge));
    wall.face = TopoDS::Face(maker.Generated(wall.edge).First());
    prism.walls.push_back(wall);
  }
  return prism;
}

void AddNamed(const Prism& prism, const FeaturePlace& place, NamedShape& shape) {
  shape.solids.push_back(prism.solid);
  shape.names.Bind(prism.start, StartName(place));
  shape.names.Bind(prism.end, EndName(place));
  for (const Wall& wall : prism.walls) shape.names.Bind(wall.face, SideName(place, wall.entity));
}

PlanarCurve InPlane(const TopoDS_Edge& edge, int entity, const gp_Pln& plane) {
  PlanarCurve planar;
  planar.entity = entity;
  planar.curve = GeomAPI::To2d(BRep_Tool::Curve(edge, planar.first, planar.last), plane);
  planar.closed = BRep_Tool::IsClosed(edge);
  return planar;
}

// Whether an edge of the far end still runs the way of the section's edge that it came of. A wall that has
// shrunk to nothing and beyond comes out the other way round.
bool SameWay(const PlanarCurve& near, const PlanarCurve& far) {
  gp_Pnt2d point;
  gp_Vec2d near_way, far_way;
  near.curve->D1((near.first + near.last) / 2, point, near_way);
  far.curve->D1((far.first + far.last) / 2, point, far_way);
  return near_way * far_way > 0;
}

// The far end of a drafted prism, which must have the walls it had before, none turned round.
std::vector<PlanarCurve> FarEnd(const Prism& upright, const BRepOffsetAPI_DraftAngle& draft,
                                const Section& section, const gp_Vec& sweep) {
  const gp_Pln near_plane(section.plane);
  const gp_Pln far_plane = near_plane.Translated(sweep);
  std::vector<PlanarCurve> far_curves;
  for (const Wall& wall : upright.walls) {
    const PlanarCurve near = InPlane(wall.edge, wall.entity, near_plane);
    const TopoDS_Edge far_edge = TopoDS::Edge(draft.ModifiedShape(wall.far_edge));
    const PlanarCurve far = InPlane(far_edge, wall.entity, far_plane);
    if (far.curve.IsNull() || !(far.last > far.first) || !SameWay(near, far))
      throw Refusal("The section collapses before its depth is reached.");
    far_curves.push_back(far);
  }
  return far_curves;
}

// Appends the far end to `far_curves`.
Prism Drafted(const Prism& upright, const Section& section, const gp_Vec& sweep, double taper,
              std::vector<PlanarCurve>& far_curves) {
  const gp_Dir direction(sweep);
  const gp_Pln neutral(section.plane);
  BRepOffsetAPI_DraftAngle draft(upright.solid);
  for (const Wall& wall : upright.walls) {
    draft.Add(wall.face, direction, taper, neutral);
    if (!draft.AddDone())
      throw Refusal("The wall of entity " + std::to_string(wall.entity) + " can't be drafted.");
  }
  draft.Build();
  if (!draft.IsDone()) throw Refusal("The section collapses before its depth is reached.");
  const std::vector<PlanarCurve> far_end = FarEnd(upright, draft, section, sweep);
  far_curves.insert(far_curves.end(), far_end.begin(), far_end.end());

  const auto became = [&draft](const TopoDS_Face& face) { return TopoDS::Face(draft.ModifiedShape(face)); };
  Prism drafted;
  drafted.solid = TopoDS::Solid(draft.ModifiedShape(upright.solid));
  drafted.start = became(upright.start);
  drafted.end = became(upright.end);
  for (const Wall& wall : upright.walls) drafted.walls.push_back({wall.entity, {}, {}, became(wall.face)});
  return drafted;
}

}  // namespace

NamedShape UprightPrism(const Section& section, const gp_Dir& direction, double from, double to,
                        const FeaturePlace& place) {
  gp_Trsf shift;
  shift.SetTranslation(gp_Vec(direction) * from);
  NamedShape shape;
  for (const TopoDS_Face& face : section.faces) {
    Prism prism = Sweep(section, face, gp_Vec(direction) * (to - from));
    if (from != 0) {
      BRepBuilderAPI_Transform moved(prism.solid, shift);
      prism.solid = TopoDS::Solid(moved.Shape());
      const auto became = [&moved](const TopoDS_Face& old) { return TopoDS::Face(moved.ModifiedShape(old)); };
      prism.start = became(prism.start);
      prism.end = became(prism.end);
      for (Wall& wall : prism.walls) wall.face = became(wall.face);
    }
    AddNamed(prism, place, shape);
  }
  return Unified(shape);
}

NamedShape DraftedPrism(const Section& section, const gp_Dir& direction, double depth, double taper,
                        const FeaturePlace& place) {
  const gp_Vec sweep = gp_Vec(direction) * depth;
  NamedShape shape;
  std::vector<PlanarCurve> far_curves;
  for (const TopoDS_Face& face : section.faces)
    AddNamed(Drafted(Sweep(section, face, sweep), section, sweep, taper, far_curves), place, shape);
  if (FindCrossing(far_curves))
    throw Refusal("The drafted walls run into each other before the depth is reached.");
  if (!BRepCheck_Analyzer(shape.Compound()).IsValid() || !(VolumeOf(shape) > 0))
    throw Refusal("The drafted section makes no valid solid.");
  return Unified(shape);
}

}  // namespace bench::kernel
