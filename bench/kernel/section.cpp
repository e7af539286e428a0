#include "bench/kernel/section.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepGProp.hxx>
#include <BRepTopAdaptor_FClass2d.hxx>
#include <BRep_Builder.hxx>
#include <GProp_GProps.hxx>
#include <Geom2d_Line.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Vertex.hxx>
#include <TopoDS_Wire.hxx>
#include <algorithm>
#include <cstdio>
#include <gp_Pln.hxx>
#include <string>

#include "bench/kernel/crossing.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/text_outline.h"

namespace bench::kernel {

namespace {

std::string Written(const gp_Pnt2d& point) {
  char text[80];
  std::snprintf(text, sizeof text, "(%.6g, %.6g)", point.X(), point.Y());
  return text;
}

// A corner in which the ends of two curves meet.
struct Corner {
  gp_Pnt2d at;
  TopoDS_Vertex vertex;
  std::vector<std::size_t> curves;
};

struct Link {
  std::size_t start = 0, end = 0;  // corners
  TopoDS_Edge edge;
};

struct Loop {
  TopoDS_Wire wire;  // counter-clockwise about the plane's normal
  TopoDS_Face face;  // of this loop alone
  gp_Pnt2d on;       // a point on it
  double area = 0;
  int depth = 0;  // how many loops it lies in
};

class LoopFinder {
 public:
  explicit LoopFinder(Section& section) : section_(section), pln_(section.plane) {}

  std::vector<Loop> Find() {
    for (std::size_t i = 0; i < section_.curves.size(); ++i) links_.push_back(FindEnds(i));
    CheckCorners();
    if (const auto crossing = FindCrossing(section_.curves)) RefuseCrossing(*crossing);
    for (std::size_t i = 0; i < links_.size(); ++i) MakeEdge(i);
    std::vector<Loop> loops;
    std::vector<bool> used(links_.size());
    for (std::size_t i = 0; i < links_.size(); ++i) {
      if (!used[i]) loops.push_back(Walk(i, used));
    }
    return loops;
  }

 private:
  std::size_t CornerAt(const gp_Pnt2d& point, std::size_t curve) {
    auto found = std::find_if(corners_.begin(), corners_.end(), [&](const Corner& corner) {
      return corner.at.Distance(point) <= kJoinTolerance;
    });
    if (found == corners_.end()) found = corners_.insert(corners_.end(), {point, {}, {}});
    found->curves.push_back(curve);
    return static_cast<std::size_t>(found - corners_.begin());
  }

  Link FindEnds(std::size_t index) {
    const PlanarCurve& curve = section_.curves[index];
    Link link;
    link.start = CornerAt(curve.Start(), index);
    // A closed curve's one corner holds it once for each end.
    link.end = CornerAt(curve.closed ? curve.Start() : curve.End(), index);
    return link;
  }

  void CheckCorners() const {
    for (const Corner& corner : corners_) {
      if (corner.curves.size() < 2) throw Refusal("The section is open at " + Written(corner.at) + ".");
      if (corner.curves.size() > 2)
        throw Refusal("More than two ends of the section meet at " + Written(corner.at) + ".");
    }
  }

  [[noreturn]] static void RefuseCrossing(const Crossing& crossing) {
    if (crossing.entity == crossing.other) {
      throw Refusal("Entity " + std::to_string(crossing.entity) + " meets itself at " + Written(crossing.at) +
                    ".");
    }
    throw Refusal("Entities " + std::to_string(crossing.entity) + " and " + std::to_string(crossing.other) +
                  " of the section meet at " + Written(crossing.at) + ".");
  }

  const TopoDS_Vertex& VertexOf(std::size_t corner) {
    TopoDS_Vertex& vertex = corners_[corner].vertex;
    if (vertex.IsNull())
      BRep_Builder().MakeVertex(vertex, InSpace(corners_[corner].at, section_.plane), Precision::Confusion());
    return vertex;
  }

  void MakeEdge(std::size_t index) {
    Link& link = links_[index];
    PlanarCurve curve = section_.curves[index];
    if (curve.curve->IsKind(STANDARD_TYPE(Geom2d_Line))) {
      // A line is drawn anew from corner to corner, so that what its ends were off is gone for good.
      const gp_Pnt2d& from = corners_[link.start].at;
      const gp_Pnt2d& to = corners_[link.end].at;
      curve.curve = new Geom2d_Line(from, gp_Dir2d(gp_Vec2d(from, to)));
      curve.first = 0;
      curve.last = from.Distance(to);
    }
    const TopoDS_Vertex start = VertexOf(link.start), end = VertexOf(link.end);
    Widen(start, corners_[link.start].at.Distance(curve.Start()));
    Widen(end, corners_[link.end].at.Distance(curve.End()));
    BRepBuilderAPI_MakeEdge maker(InSpace(curve.curve, section_.plane), start, end, curve.first, curve.last);
    if (!maker.IsDone()) throw Refusal("Entity " + std::to_string(curve.entity) + " makes no edge.");
    link.edge = maker.Edge();
    section_.entities.Bind(link.edge, curve.entity);
  }

  static void Widen(const TopoDS_Vertex& vertex, double gap) {
    if (gap > Precision::Confusion()) BRep_Builder().UpdateVertex(vertex, 1.01 * gap);
  }

  Loop Walk(std::size_t first, std::vector<bool>& used) {
    BRep_Builder builder;
    Loop loop;
    builder.MakeWire(loop.wire);
    std::size_t current = first;
    std::size_t corner = links_[first].start;
    do {
      used[current] = true;
      const Link& link = links_[current];
      const bool forward = link.start == corner;
      builder.Add(loop.wire, link.edge.Oriented(forward ? TopAbs_FORWARD : TopAbs_REVERSED));
      corner = forward ? link.end : link.start;
      const auto& both = corners_[corner].curves;
      current = both[0] == current ? both[1] : both[0];
    } while (current != first);
    loop.wire.Closed(true);
    const PlanarCurve& curve = section_.curves[first];
    loop.on = curve.curve->Value((curve.first + curve.last) / 2);
    Bound(loop);
    return loop;
  }

  void Bound(Loop& loop) const {
    constexpr bool kInside = true;  // turns a clockwise wire round
    BRepBuilderAPI_MakeFace maker(pln_, loop.wire, kInside);
    if (!maker.IsDone()) throw Refusal("The section does not bound an area.");
    loop.face = maker.Face();
    loop.wire = TopoDS::Wire(TopExp_Explorer(loop.face, TopAbs_WIRE).Current());
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(loop.face, properties);
    loop.area = properties.Mass();
    if (!(loop.area > kJoinTolerance * kJoinTolerance)) throw Refusal("The section does not bound an area.");
  }

  Section& section_;
  gp_Pln pln_;
  std::vector<Corner> corners_;
  std::vector<Link> links_;
};

// Loops that do not meet lie in one another with all of their points or with none.
bool Contains(const Loop& outer, const Loop& inner) {
  if (!(outer.area > inner.area)) return false;
  const BRepTopAdaptor_FClass2d classifier(outer.face, Precision::PConfusion());
  return classifier.Perform(inner.on) == TopAbs_IN;
}

void AddFaces(const std::vector<Loop>& loops, Section& section) {
  const gp_Pln pln(section.plane);
  std::vector<std::vector<bool>> contains(loops.size(), std::vector<bool>(loops.size()));
  std::vector<int> depth(loops.size());
  for (std::size_t i = 0; i < loops.size(); ++i) {
    for (std::size_t j = 0; j < loops.size(); ++j) {
      if (i == j || !Contains(loops[i], loops[j])) continue;
      contains[i][j] = true;
      ++depth[j];
    }
  }
  for (std::size_t i = 0; i < loops.size(); ++i) {
    if (depth[i] % 2 == 1) continue;
    BRepBuilderAPI_MakeFace maker(pln, loops[i].wire);
    for (std::size_t j = 0; j < loops.size(); ++j) {
      if (contains[i][j] && depth[j] == depth[i] + 1) maker.Add(TopoDS::Wire(loops[j].wire.Reversed()));
    }
    section.faces.push_back(maker.Face());
  }
}

}  // namespace

std::vector<PlanarCurve> BoundingCurves(const std::vector<Entity>& entities) {
  std::vector<PlanarCurve> curves;
  for (const Entity& entity : entities) {
    const auto curve = CurveOf(entity);
    if (entity.construction) continue;
    if (curve) curves.push_back(*curve);
    if (const auto* text = std::get_if<TextEntity>(&entity.geometry)) {
      const std::vector<PlanarCurve> outline = TextOutline(entity.id, *text);
      curves.insert(curves.end(), outline.begin(), outline.end());
    }
  }
  return curves;
}

Section BuildSection(const Sketch& sketch) {
  Section section;
  section.plane = sketch.plane;
  section.curves = BoundingCurves(sketch.entities);
  if (section.curves.empty()) throw Refusal("The section has no curves that bound an area.");
  AddFaces(LoopFinder(section).Find(), section);
  return section;
}

}  // namespace bench::kernel
