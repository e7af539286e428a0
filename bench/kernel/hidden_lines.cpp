#include "bench/kernel/hidden_lines.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepLib.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <HLRAlgo_Projector.hxx>
#include <HLRBRep_Algo.hxx>
#include <HLRBRep_HLRToShape.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <gp_Ax2.hxx>
#include <string>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

Handle(HLRBRep_Algo) HiddenLineRemoval(const TopoDS_Shape& shape, const Sight& sight) {
  // The toolkit notes on the edges which of them are smooth; the shapes in the cache must not change.
  BRepBuilderAPI_Copy copy(shape);
  BRepLib::EncodeRegularity(copy.Shape());
  const Handle(HLRBRep_Algo) removal = new HLRBRep_Algo;
  removal->Add(copy.Shape());
  removal->Projector(HLRAlgo_Projector(gp_Ax2(gp_Pnt(0, 0, 0), gp_Dir(sight.toward), gp_Dir(sight.right))));
  removal->Update();
  removal->Hide();
  return removal;
}

void AddLines(const TopoDS_Shape& edges, const Sight& sight, double tolerance, std::vector<Polyline>& lines) {
  if (edges.IsNull()) return;
  for (TopExp_Explorer each(edges, TopAbs_EDGE); each.More(); each.Next()) {
    Polyline line;
    for (const gp_XYZ& point : PointsAlong(TopoDS::Edge(each.Current()), tolerance))
      line.push_back(sight.Seen(point));
    if (line.size() > 1) lines.push_back(std::move(line));
  }
}

}  // namespace

std::vector<gp_XYZ> PointsAlong(const TopoDS_Edge& edge, double tolerance) {
  const BRepAdaptor_Curve curve(edge);
  if (curve.GetType() == GeomAbs_Line)
    return {curve.Value(curve.FirstParameter()).XYZ(), curve.Value(curve.LastParameter()).XYZ()};
  constexpr double kGreatestTurn = 0.12;  // radians from one piece to the next
  const GCPnts_TangentialDeflection pieces(curve, kGreatestTurn, tolerance);
  std::vector<gp_XYZ> points;
  for (int i = 1; i <= pieces.NbPoints(); ++i) points.push_back(pieces.Value(i).XYZ());
  return points;
}

SeenLines LinesSeen(const TopoDS_Shape& shape, const Sight& sight, double tolerance) {
  SeenLines lines;
  if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_FACE).More()) return lines;
  try {
    HLRBRep_HLRToShape result(HiddenLineRemoval(shape, sight));
    // The curves are taken as they run in space: the toolkit's flat ones are coarse.
    constexpr bool kInSpace = true;
    for (const auto kind : {HLRBRep_Sharp, HLRBRep_OutLine}) {
      AddLines(result.CompoundOfEdges(kind, true, kInSpace), sight, tolerance, lines.visible);
      AddLines(result.CompoundOfEdges(kind, false, kInSpace), sight, tolerance, lines.hidden);
    }
  } catch (const Standard_Failure& failure) {
    throw Refusal(std::string("The lines of the view can't be worked out: ") + failure.GetMessageString());
  }
  return lines;
}

}  // namespace bench::kernel
