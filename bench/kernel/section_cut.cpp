#include "bench/kernel/section_cut.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepTools.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Wire.hxx>
#include <algorithm>
#include <gp_Ax2.hxx>
#include <iterator>

#include "bench/kernel/bounds.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

// Bodies that reach no further than this past the plane, in mm, only touch it.
constexpr double kTouch = 1e-6;

// A block that stands on the plane and holds all that the box of the shape has before it.
BRepPrimAPI_MakeBox BlockBefore(const CuttingPlane& plane, const Bounds& bounds) {
  const gp_XYZ middle = (bounds.low + bounds.high) / 2;
  const gp_XYZ foot = middle - plane.normal * plane.normal.Dot(middle - plane.origin);
  const double size = 2 * (bounds.high - bounds.low).Modulus() + (middle - foot).Modulus();
  const gp_Ax2 centred(gp_Pnt(foot), gp_Dir(plane.normal));
  const gp_XYZ corner = foot - (centred.XDirection().XYZ() + centred.YDirection().XYZ()) * (size / 2);
  return {gp_Ax2(gp_Pnt(corner), gp_Dir(plane.normal), centred.XDirection()), size, size, size};
}

Polyline Seen(const TopoDS_Wire& wire, const TopoDS_Face& face, const Sight& sight, double tolerance) {
  Polyline line;
  for (BRepTools_WireExplorer each(wire, face); each.More(); each.Next()) {
    std::vector<gp_XYZ> points = PointsAlong(each.Current(), tolerance);
    if (each.Current().Orientation() == TopAbs_REVERSED) std::ranges::reverse(points);
    // The last one is the first of the next edge.
    points.pop_back();
    for (const gp_XYZ& point : points) line.push_back(sight.Seen(point));
  }
  return line;
}

}  // namespace

CutBody CutAway(const TopoDS_Shape& solids, const CuttingPlane& plane) {
  CutBody body;
  if (solids.IsNull() || !TopExp_Explorer(solids, TopAbs_FACE).More()) return body;
  const Reach reach = ReachOf(solids, plane.normal);
  const double height = plane.normal.Dot(plane.origin);
  if (reach.HeightOf(reach.high) <= height + kTouch) {
    body.rest = solids;
    return body;
  }
  if (reach.HeightOf(reach.low) >= height - kTouch) return body;

  BRepPrimAPI_MakeBox block = BlockBefore(plane, BoundsOf(solids));
  const TopoDS_Shape tool = block.Solid();
  TopTools_ListOfShape objects, tools;
  objects.Append(solids);
  tools.Append(tool);
  BRepAlgoAPI_Cut cut;
  cut.SetArguments(objects);
  cut.SetTools(tools);
  cut.SetNonDestructive(true);
  cut.Build();
  if (!cut.IsDone() || cut.HasErrors()) throw Refusal("The body can't be cut along the plane.");
  body.rest = cut.Shape();
  for (const TopoDS_Shape& face : cut.Modified(block.BottomFace())) body.faces.push_back(TopoDS::Face(face));
  if (body.faces.empty()) throw Refusal("The body can't be cut along the plane.");
  return body;
}

SectionRegion RegionOf(const TopoDS_Face& face, const Sight& sight, double tolerance) {
  SectionRegion region;
  const TopoDS_Wire outer = BRepTools::OuterWire(face);
  region.outer = Seen(outer, face, sight, tolerance);
  for (TopExp_Explorer wire(face, TopAbs_WIRE); wire.More(); wire.Next())
    if (!wire.Current().IsSame(outer))
      region.holes.push_back(Seen(TopoDS::Wire(wire.Current()), face, sight, tolerance));
  return region;
}

}  // namespace bench::kernel
