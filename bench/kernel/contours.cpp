#include "bench/kernel/contours.h"

#include <BRepTools.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Vertex.hxx>
#include <TopoDS_Wire.hxx>
#include <algorithm>

namespace bench::kernel {

namespace {

struct Side {
  const KeyedEdge* keyed;
  TopoDS_Vertex from, to;
};

std::vector<TopoDS_Wire> WiresOf(const TopoDS_Face& face) {
  const TopoDS_Wire outer = BRepTools::OuterWire(face);
  std::vector<TopoDS_Wire> wires;
  for (TopExp_Explorer each(face, TopAbs_WIRE); each.More(); each.Next()) {
    const auto place = each.Current().IsSame(outer) ? wires.begin() : wires.end();
    wires.insert(place, TopoDS::Wire(each.Current()));
  }
  return wires;
}

// The way on from the first side that is left, until it closes or nothing follows.
Contour TakeWay(std::vector<Side>& left) {
  Contour way;
  const TopoDS_Vertex start = left.front().from;
  for (auto next = left.begin(); next != left.end();) {
    const TopoDS_Vertex end = next->to;
    way.push_back(next->keyed->key);
    left.erase(next);
    if (end.IsSame(start)) break;
    next = std::find_if(left.begin(), left.end(), [&](const Side& side) { return side.from.IsSame(end); });
  }
  return way;
}

}  // namespace

Contours::Contours(const BodyKeys& keys) {
  for (const KeyedEdge& keyed : keys.edges()) {
    if (!edges_.IsBound(keyed.edge)) edges_.Bind(keyed.edge, {});
    edges_.ChangeFind(keyed.edge).push_back(&keyed);
  }
}

const KeyedEdge* Contours::Find(const KeyedFace& face, const TopoDS_Edge& edge) const {
  const auto* candidates = edges_.Seek(edge);
  if (!candidates) return nullptr;
  for (const KeyedEdge* keyed : *candidates)
    if (keyed->first == &face || keyed->second == &face) return keyed;
  return nullptr;
}

std::vector<Contour> Contours::Of(const KeyedFace& face) const {
  std::vector<Contour> contours;
  for (const TopoDS_Wire& wire : WiresOf(face.face)) {
    std::vector<Side> sides;
    for (TopExp_Explorer each(wire, TopAbs_EDGE); each.More(); each.Next()) {
      const TopoDS_Edge edge = TopoDS::Edge(each.Current());
      const KeyedEdge* keyed = Find(face, edge);
      constexpr bool kAlongTheWire = true;
      if (keyed)
        sides.push_back(
            {keyed, TopExp::FirstVertex(edge, kAlongTheWire), TopExp::LastVertex(edge, kAlongTheWire)});
    }
    while (!sides.empty()) contours.push_back(TakeWay(sides));
  }
  return contours;
}

}  // namespace bench::kernel
