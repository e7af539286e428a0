#include "bench/kernel/mesh.h"

#include <BRepBuilderAPI_Copy.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <GeomLib.hxx>
#include <Geom_Surface.hxx>
#include <Poly_PolygonOnTriangulation.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <numbers>

#include "bench/kernel/named_shape.h"

namespace bench::kernel {

namespace {

// Faces that meet at less than this go over into each other.
const double kSmoothCosine = std::cos(3 * std::numbers::pi / 180);

// The sum of the triangles' own normals at each node, out of the material, for where the surface has none.
std::vector<gp_XYZ> NormalsOfTriangles(const Poly_Triangulation& facets, bool reversed) {
  std::vector<gp_XYZ> normals(facets.NbNodes() + 1);
  for (int i = 1; i <= facets.NbTriangles(); ++i) {
    int a = 0, b = 0, c = 0;
    facets.Triangle(i).Get(a, b, c);
    const gp_XYZ from = facets.Node(a).XYZ();
    gp_XYZ normal = (facets.Node(b).XYZ() - from).Crossed(facets.Node(c).XYZ() - from);
    if (reversed) normal.Reverse();
    for (const int node : {a, b, c}) normals[node] += normal;
  }
  for (gp_XYZ& normal : normals) {
    const double length = normal.Modulus();
    normal = length > 0 ? normal / length : gp_XYZ(0, 0, 1);
  }
  return normals;
}

void AddFace(const TopoDS_Face& face, Mesh& mesh) {
  TopLoc_Location location;
  const Handle(Poly_Triangulation) facets = BRep_Tool::Triangulation(face, location);
  if (facets.IsNull()) return;
  const gp_Trsf& place = location.Transformation();
  const bool reversed = face.Orientation() == TopAbs_REVERSED;
  const Handle(Geom_Surface) surface = BRep_Tool::Surface(face);  // in place
  const std::vector<gp_XYZ> flat = NormalsOfTriangles(*facets, reversed);
  const std::size_t first = mesh.nodes.size();
  for (int i = 1; i <= facets->NbNodes(); ++i) {
    MeshNode node{facets->Node(i).Transformed(place).XYZ(), gp_Vec(flat[i]).Transformed(place).XYZ()};
    constexpr double kTolerance = 1e-9;
    gp_Dir normal;
    if (facets->HasUVNodes() && GeomLib::NormEstim(surface, facets->UVNode(i), kTolerance, normal) <= 1) {
      if (reversed) normal.Reverse();
      // At an apex the estimate may be of the far side.
      if (normal.XYZ().Dot(node.normal) > 0) node.normal = normal.XYZ();
    }
    mesh.nodes.push_back(node);
  }
  for (int i = 1; i <= facets->NbTriangles(); ++i) {
    int a = 0, b = 0, c = 0;
    facets->Triangle(i).Get(a, b, c);
    mesh.triangles.push_back({first + a - 1, first + b - 1, first + c - 1});
  }
}

gp_XYZ NormalAt(const TopoDS_Face& face, const TopoDS_Edge& edge, double share) {
  double first = 0, last = 0, low = 0, high = 0;
  const Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(edge, face, first, last);
  BRep_Tool::Range(edge, low, high);
  if (curve.IsNull()) return {};
  gp_Dir normal;
  const gp_Pnt2d at = curve->Value(low + share * (high - low));
  if (GeomLib::NormEstim(BRep_Tool::Surface(face), at, 1e-9, normal) > 1) return {};
  return face.Orientation() == TopAbs_REVERSED ? normal.Reversed().XYZ() : normal.XYZ();
}

bool IsSmooth(const TopoDS_Edge& edge, const TopTools_ListOfShape& faces) {
  if (faces.Extent() != 2) return false;
  const TopoDS_Face& one = TopoDS::Face(faces.First());
  const TopoDS_Face& other = TopoDS::Face(faces.Last());
  for (const double share : {0.1, 0.5, 0.9})
    if (!(NormalAt(one, edge, share).Dot(NormalAt(other, edge, share)) > kSmoothCosine)) return false;
  return true;
}

void AddEdge(const TopoDS_Edge& edge, const TopTools_ListOfShape& faces, Mesh& mesh) {
  if (BRep_Tool::Degenerated(edge)) return;
  const TopoDS_Face& face = TopoDS::Face(faces.First());
  if (faces.Extent() == 1 && BRep_Tool::IsClosed(edge, face)) return;
  TopLoc_Location location;
  const Handle(Poly_Triangulation) facets = BRep_Tool::Triangulation(face, location);
  if (facets.IsNull()) return;
  const Handle(Poly_PolygonOnTriangulation) way = BRep_Tool::PolygonOnTriangulation(edge, facets, location);
  if (way.IsNull()) return;
  MeshEdge drawn{.points = {}, .is_smooth = IsSmooth(edge, faces)};
  for (int i = 1; i <= way->NbNodes(); ++i)
    drawn.points.push_back(facets->Node(way->Node(i)).Transformed(location.Transformation()).XYZ());
  mesh.edges.push_back(std::move(drawn));
}

}  // namespace

TopoDS_Shape Meshed(const TopoDS_Shape& shape, double deflection) {
  constexpr double kAngle = 0.2;
  const TopoDS_Shape copy = BRepBuilderAPI_Copy(shape).Shape();
  constexpr bool kRelativeToEdges = false;
  BRepMesh_IncrementalMesh(copy, deflection, kRelativeToEdges, kAngle);
  return copy;
}

Mesh MeshOf(const TopoDS_Shape& shape, double deflection) {
  const TopoDS_Shape meshed = Meshed(shape, deflection);
  Mesh mesh;
  for (const TopoDS_Shape& face : Distinct(meshed, TopAbs_FACE)) AddFace(TopoDS::Face(face), mesh);
  TopTools_IndexedDataMapOfShapeListOfShape sides;
  TopExp::MapShapesAndUniqueAncestors(meshed, TopAbs_EDGE, TopAbs_FACE, sides);
  for (int i = 1; i <= sides.Extent(); ++i)
    if (!sides(i).IsEmpty()) AddEdge(TopoDS::Edge(sides.FindKey(i)), sides(i), mesh);
  return mesh;
}

}  // namespace bench::kernel
