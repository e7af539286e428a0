#include "bench/kernel/closed_spline.h"

#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt2d.hxx>

namespace bench::kernel {

namespace {

// One row of a tridiagonal system: before · x[i-1] + here · x[i] + after · x[i+1] = right.
struct Row {
  double before = 0, here = 0, after = 0;
  gp_XY right;
};

// Solves a system whose first row has no `before` and whose last has no `after`.
std::vector<gp_XY> Solve(std::vector<Row> rows) {
  for (std::size_t i = 1; i < rows.size(); ++i) {
    const double factor = rows[i].before / rows[i - 1].here;
    rows[i].here -= factor * rows[i - 1].after;
    rows[i].right -= rows[i - 1].right * factor;
  }
  std::vector<gp_XY> solution(rows.size());
  for (std::size_t i = rows.size(); i-- > 0;) {
    solution[i] = rows[i].right;
    if (i + 1 < rows.size()) solution[i] -= solution[i + 1] * rows[i].after;
    solution[i] /= rows[i].here;
  }
  return solution;
}

// Solves a system whose first and last rows reach around to each other, by the formula of Sherman and
// Morrison.
std::vector<gp_XY> SolveAround(std::vector<Row> rows) {
  const std::size_t last = rows.size() - 1;
  const double before_first = rows[0].before, after_last = rows[last].after;
  const double pivot = -rows[0].here;
  rows[0].here -= pivot;
  rows[last].here -= before_first * after_last / pivot;
  std::vector<Row> correction = rows;
  for (Row& row : correction) row.right = gp_XY(0, 0);
  correction[0].right = gp_XY(pivot, 0);
  correction[last].right = gp_XY(after_last, 0);
  std::vector<gp_XY> solution = Solve(std::move(rows));
  const std::vector<gp_XY> around = Solve(std::move(correction));
  const double share = before_first / pivot;
  const double divisor = 1 + around[0].X() + share * around[last].X();
  const gp_XY excess = (solution[0] + solution[last] * share) / divisor;
  for (std::size_t i = 0; i <= last; ++i) solution[i] -= excess * around[i].X();
  return solution;
}

// The derivatives at the points for which the second derivatives agree from either side.
std::vector<gp_XY> Derivatives(const std::vector<gp_Pnt2d>& points, const std::vector<double>& chords) {
  const std::size_t count = points.size();
  std::vector<Row> rows(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t before = (i + count - 1) % count, after = (i + 1) % count;
    const double in = chords[before], out = chords[i];
    const gp_XY slope_in = (points[i].XY() - points[before].XY()) / in;
    const gp_XY slope_out = (points[after].XY() - points[i].XY()) / out;
    rows[i] = {out, 2 * (in + out), in, (slope_in * out + slope_out * in) * 3};
  }
  return SolveAround(std::move(rows));
}

}  // namespace

Handle(Geom2d_BSplineCurve) ClosedSpline(const std::vector<gp_Pnt2d>& points) {
  const int count = static_cast<int>(points.size());
  std::vector<double> chords;
  for (int i = 0; i < count; ++i) chords.push_back(points[i].Distance(points[(i + 1) % count]));
  const std::vector<gp_XY> derivatives = Derivatives(points, chords);

  TColgp_Array1OfPnt2d poles(1, 2 * count + 2);
  TColStd_Array1OfReal knots(1, count + 1);
  TColStd_Array1OfInteger multiplicities(1, count + 1);
  multiplicities.Init(2);
  multiplicities(1) = multiplicities(count + 1) = 4;
  poles(1) = poles(2 * count + 2) = points[0];
  knots(1) = 0;
  for (int i = 0; i < count; ++i) {
    const int next = (i + 1) % count;
    poles(2 * i + 2) = points[i].XY() + derivatives[i] * (chords[i] / 3);
    poles(2 * i + 3) = points[next].XY() - derivatives[next] * (chords[i] / 3);
    knots(i + 2) = knots(i + 1) + chords[i];
  }
  constexpr int kCubic = 3;
  return new Geom2d_BSplineCurve(poles, knots, multiplicities, kCubic);
}

}  // namespace bench::kernel
