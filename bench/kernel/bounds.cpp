#include "bench/kernel/bounds.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepTools.hxx>
#include <BRepTopAdaptor_FClass2d.hxx>
#include <BRep_Tool.hxx>
#include <Precision.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <numbers>

#include "bench/kernel/named_shape.h"

namespace bench::kernel {

namespace {

constexpr double kFullTurn = 2 * std::numbers::pi;

// The points of a curve at which a + x cos t + y sin t is greatest or least.
void AddRound(const BRepAdaptor_Curve& curve, const gp_XYZ& x, const gp_XYZ& y, Reach& reach) {
  const double first = curve.FirstParameter(), last = curve.LastParameter();
  const double extreme = std::atan2(reach.HeightOf(y), reach.HeightOf(x));
  for (const double candidate : {extreme, extreme + std::numbers::pi}) {
    const double turned = candidate + kFullTurn * std::ceil((first - candidate) / kFullTurn);
    if (turned <= last) reach.Add(curve.Value(turned).XYZ());
  }
}

// Narrows [from, to], which holds one extreme of `height`, down to it.
double GreatestBetween(double from, double to, const std::function<double(double)>& height) {
  constexpr double kGolden = 0.6180339887498949;
  for (int step = 0; step < 60; ++step) {
    const double left = to - kGolden * (to - from), right = from + kGolden * (to - from);
    (height(left) < height(right) ? from : to) = height(left) < height(right) ? left : right;
  }
  return (from + to) / 2;
}

void AddFreeCurve(const BRepAdaptor_Curve& curve, Reach& reach) {
  constexpr int kSamples = 24;
  const int count = curve.NbIntervals(GeomAbs_C2);
  TColStd_Array1OfReal ends(1, count + 1);
  curve.Intervals(ends, GeomAbs_C2);
  std::vector<double> parameters;
  for (int i = 1; i <= count; ++i) {
    for (int k = 0; k < kSamples; ++k) parameters.push_back(ends(i) + (ends(i + 1) - ends(i)) * k / kSamples);
  }
  parameters.push_back(ends(count + 1));
  for (const double parameter : parameters) reach.Add(curve.Value(parameter).XYZ());
  for (const double sign : {1.0, -1.0}) {
    const auto height = [&](double t) { return sign * reach.HeightOf(curve.Value(t).XYZ()); };
    for (std::size_t i = 1; i + 1 < parameters.size(); ++i) {
      const double here = height(parameters[i]);
      if (here < height(parameters[i - 1]) || here < height(parameters[i + 1])) continue;
      reach.Add(curve.Value(GreatestBetween(parameters[i - 1], parameters[i + 1], height)).XYZ());
    }
  }
}

void AddEdge(const TopoDS_Edge& edge, Reach& reach) {
  if (BRep_Tool::Degenerated(edge)) {
    reach.Add(BRep_Tool::Pnt(TopExp::FirstVertex(edge)).XYZ());
    return;
  }
  const BRepAdaptor_Curve curve(edge);
  reach.Add(curve.Value(curve.FirstParameter()).XYZ());
  reach.Add(curve.Value(curve.LastParameter()).XYZ());
  switch (curve.GetType()) {
    case GeomAbs_Line:
      return;
    case GeomAbs_Circle: {
      const gp_Circ circle = curve.Circle();
      AddRound(curve, circle.XAxis().Direction().XYZ(), circle.YAxis().Direction().XYZ(), reach);
      return;
    }
    case GeomAbs_Ellipse: {
      const gp_Elips ellipse = curve.Ellipse();
      AddRound(curve, ellipse.XAxis().Direction().XYZ() * ellipse.MajorRadius(),
               ellipse.YAxis().Direction().XYZ() * ellipse.MinorRadius(), reach);
      return;
    }
    default:
      AddFreeCurve(curve, reach);
  }
}

// Whether a face can reach further than its edges do. A surface of straight lines can't: where it is extreme,
// it is so along one of its lines, up to an edge.
bool CanBulge(GeomAbs_SurfaceType type) {
  return type != GeomAbs_Plane && type != GeomAbs_Cylinder && type != GeomAbs_Cone &&
         type != GeomAbs_SurfaceOfExtrusion;
}

// Climbs from a grid's best points to where the face reaches furthest.
class Climber {
 public:
  explicit Climber(const TopoDS_Face& face) : surface_(face), inside_(face, Precision::PConfusion()) {
    BRepTools::UVBounds(face, u_low_, u_high_, v_low_, v_high_);
  }

  void AddTo(Reach& reach) const {
    for (const double sign : {1.0, -1.0}) Climb(sign, reach);
  }

 private:
  static constexpr int kGrid = 24;

  void Climb(double sign, Reach& reach) const {
    const auto height = [&](const gp_Pnt2d& uv) { return sign * reach.HeightOf(PointAt(uv)); };
    const double best = sign * reach.HeightOf(sign > 0 ? reach.high : reach.low);
    gp_Pnt2d top;
    bool found = false;
    for (int i = 1; i < kGrid; ++i) {
      for (int k = 1; k < kGrid; ++k) {
        const gp_Pnt2d uv(u_low_ + (u_high_ - u_low_) * i / kGrid, v_low_ + (v_high_ - v_low_) * k / kGrid);
        const double here = height(uv);
        // A point near the top of a bulge that a grid has missed may lie lower than the edges do.
        if (here <= best - Slack() || !Holds(uv)) continue;
        if (found && here <= height(top)) continue;
        top = uv;
        found = true;
      }
    }
    if (found) reach.Add(PointAt(Refined(top, height)));
  }

  gp_Pnt2d Refined(gp_Pnt2d top, const std::function<double(const gp_Pnt2d&)>& height) const {
    double u_step = (u_high_ - u_low_) / kGrid, v_step = (v_high_ - v_low_) / kGrid;
    double here = height(top);
    for (int halvings = 0; halvings < 40;) {
      bool moved = false;
      for (const gp_XY& step : {gp_XY(u_step, 0), gp_XY(-u_step, 0), gp_XY(0, v_step), gp_XY(0, -v_step)}) {
        const gp_Pnt2d next(top.XY() + step);
        if (!(height(next) > here) || !Holds(next)) continue;
        top = next;
        here = height(next);
        moved = true;
      }
      if (moved) continue;
      u_step /= 2;
      v_step /= 2;
      ++halvings;
    }
    return top;
  }

  // How much a bulge can rise between two points of the grid, at the most.
  double Slack() const {
    return PointAt({u_low_, v_low_})
               .Subtracted(PointAt({(u_low_ + u_high_) / 2, (v_low_ + v_high_) / 2}))
               .Modulus() /
           kGrid;
  }

  bool Holds(const gp_Pnt2d& uv) const { return inside_.Perform(uv) == TopAbs_IN; }
  gp_XYZ PointAt(const gp_Pnt2d& uv) const { return surface_.Value(uv.X(), uv.Y()).XYZ(); }

  BRepAdaptor_Surface surface_;
  BRepTopAdaptor_FClass2d inside_;
  double u_low_ = 0, u_high_ = 0, v_low_ = 0, v_high_ = 0;
};

// A shape taken apart once, for however many directions are asked about.
class Measurer {
 public:
  explicit Measurer(const TopoDS_Shape& shape) : edges_(Distinct(shape, TopAbs_EDGE)) {
    for (const TopoDS_Shape& face : Distinct(shape, TopAbs_FACE)) {
      if (CanBulge(BRepAdaptor_Surface(TopoDS::Face(face)).GetType()))
        bulges_.push_back(std::make_unique<Climber>(TopoDS::Face(face)));
    }
  }

  Reach Along(const gp_XYZ& direction) const {
    Reach reach(direction);
    for (const TopoDS_Shape& edge : edges_) AddEdge(TopoDS::Edge(edge), reach);
    for (const auto& bulge : bulges_) bulge->AddTo(reach);
    return reach;
  }

 private:
  std::vector<TopoDS_Shape> edges_;
  std::vector<std::unique_ptr<Climber>> bulges_;
};

}  // namespace

void Bounds::Add(const gp_XYZ& point) {
  if (IsEmpty()) {
    low = high = point;
    return;
  }
  low = {std::min(low.X(), point.X()), std::min(low.Y(), point.Y()), std::min(low.Z(), point.Z())};
  high = {std::max(high.X(), point.X()), std::max(high.Y(), point.Y()), std::max(high.Z(), point.Z())};
}

void Bounds::Add(const Bounds& other) {
  if (other.IsEmpty()) return;
  Add(other.low);
  Add(other.high);
}

void Reach::Add(const gp_XYZ& point) {
  if (is_empty) low = high = point;
  is_empty = false;
  if (HeightOf(point) < HeightOf(low)) low = point;
  if (HeightOf(point) > HeightOf(high)) high = point;
}

Reach ReachOf(const TopoDS_Shape& shape, const gp_XYZ& direction) {
  return Measurer(shape).Along(direction);
}

Bounds BoundsOf(const TopoDS_Shape& shape) {
  const Measurer measurer(shape);
  Bounds bounds;
  const Reach along_x = measurer.Along({1, 0, 0});
  const Reach along_y = measurer.Along({0, 1, 0});
  const Reach along_z = measurer.Along({0, 0, 1});
  if (along_x.is_empty || along_y.is_empty || along_z.is_empty) return bounds;
  bounds.Add({along_x.low.X(), along_y.low.Y(), along_z.low.Z()});
  bounds.Add({along_x.high.X(), along_y.high.Y(), along_z.high.Z()});
  return bounds;
}

}  // namespace bench::kernel
