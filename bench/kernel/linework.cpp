#include "bench/kernel/linework.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace bench::kernel {

namespace {

using Interval = std::pair<double, double>;

double LengthOf(const Polyline& line) {
  double length = 0;
  for (std::size_t i = 1; i < line.size(); ++i) length += (line[i] - line[i - 1]).Modulus();
  return length;
}

bool IsStraight(const Polyline& line) {
  return line.size() == 2;
}

// A stretch of the straight line through two points that are not one.
class Ruler {
 public:
  Ruler(const gp_XY& from, const gp_XY& to)
      : from_(from), length_((to - from).Modulus()), along_((to - from) / length_) {}

  double length() const { return length_; }
  gp_XY At(double position) const { return from_ + along_ * position; }
  double PositionOf(const gp_XY& point) const { return (point - from_).Dot(along_); }
  double OffsetOf(const gp_XY& point) const { return along_.Crossed(point - from_); }

 private:
  gp_XY from_;
  double length_;
  gp_XY along_;
};

// A curve that is seen edge-on runs to and fro on a straight line: it becomes the stretch that it covers.
Polyline Straightened(const Polyline& line, double tolerance) {
  if (IsStraight(line)) return line;
  const auto away_from = [](const gp_XY& point) {
    return [&point](const gp_XY& a, const gp_XY& b) {
      return (a - point).SquareModulus() < (b - point).SquareModulus();
    };
  };
  const gp_XY one = *std::ranges::max_element(line, away_from(line.front()));
  const gp_XY other = *std::ranges::max_element(line, away_from(one));
  if (!((other - one).Modulus() > tolerance)) return line;
  const Ruler ruler(one, other);
  const bool straight = std::ranges::all_of(
      line, [&](const gp_XY& point) { return std::abs(ruler.OffsetOf(point)) <= tolerance; });
  return straight ? Polyline{one, other} : line;
}

// Both in one, where they lie in line and touch.
std::optional<Polyline> InLine(const Polyline& a, const Polyline& b, double tolerance) {
  const bool a_is_longer = LengthOf(a) >= LengthOf(b);
  const Polyline& longer = a_is_longer ? a : b;
  const Polyline& shorter = a_is_longer ? b : a;
  const Ruler ruler(longer[0], longer[1]);
  if (std::abs(ruler.OffsetOf(shorter[0])) > tolerance || std::abs(ruler.OffsetOf(shorter[1])) > tolerance)
    return std::nullopt;
  const auto [low, high] = std::minmax({ruler.PositionOf(shorter[0]), ruler.PositionOf(shorter[1])});
  if (low > ruler.length() + tolerance || high < -tolerance) return std::nullopt;
  return Polyline{low < 0 ? ruler.At(low) : longer[0], high > ruler.length() ? ruler.At(high) : longer[1]};
}

// Both in one, where the second goes on smoothly at the end of the first.
std::optional<Polyline> OneAfterTheOther(const Polyline& first, const Polyline& second, double tolerance) {
  constexpr double kSmooth = 0.9;  // cosine of a turn that two pieces of one curve may make
  if ((first.back() - second.front()).Modulus() > tolerance) return std::nullopt;
  const gp_XY arriving = first.back() - first[first.size() - 2], leaving = second[1] - second[0];
  if (arriving.Dot(leaving) < kSmooth * arriving.Modulus() * leaving.Modulus()) return std::nullopt;
  Polyline both = first;
  both.insert(both.end(), std::next(second.begin()), second.end());
  return both;
}

std::optional<Polyline> Chained(const Polyline& a, const Polyline& b, double tolerance) {
  const Polyline a_back(a.rbegin(), a.rend()), b_back(b.rbegin(), b.rend());
  for (const auto& [first, second] : {std::pair{&a, &b}, {&a, &b_back}, {&b, &a}, {&a_back, &b}})
    if (auto both = OneAfterTheOther(*first, *second, tolerance)) return both;
  return std::nullopt;
}

// Joins what `join` makes one until nothing more can be joined.
template <typename Join>
std::vector<Polyline> Joined(std::vector<Polyline> lines, Join&& join) {
  std::vector<Polyline> done;
  while (!lines.empty()) {
    Polyline line = std::move(lines.back());
    lines.pop_back();
    const auto met = std::ranges::find_if(done, [&](const Polyline& other) { return !!join(line, other); });
    if (met == done.end()) {
      done.push_back(std::move(line));
      continue;
    }
    // What it has become may meet others that its parts did not.
    lines.push_back(*join(line, *met));
    done.erase(met);
  }
  return done;
}

// The lines that are drawn already.
class Drawn {
 public:
  explicit Drawn(double tolerance) : tolerance_(tolerance) {}

  void Add(const Polyline& line) {
    for (std::size_t i = 1; i < line.size(); ++i) pieces_.push_back({line[i - 1], line[i]});
  }

  // What of the line is not drawn yet.
  std::vector<Polyline> Without(const Polyline& line) const;

 private:
  struct Piece {
    gp_XY from, to;
  };
  void AddCovered(const gp_XY& from, const gp_XY& to, double start, std::vector<Interval>& covered) const;

  double tolerance_;
  std::vector<Piece> pieces_;
};

// Adds where a piece that begins at `start` along its line lies on drawn ones.
void Drawn::AddCovered(const gp_XY& from, const gp_XY& to, double start,
                       std::vector<Interval>& covered) const {
  const Ruler ruler(from, to);
  const double low_x = std::min(from.X(), to.X()) - tolerance_,
               high_x = std::max(from.X(), to.X()) + tolerance_,
               low_y = std::min(from.Y(), to.Y()) - tolerance_,
               high_y = std::max(from.Y(), to.Y()) + tolerance_;
  for (const Piece& piece : pieces_) {
    if (std::max(piece.from.X(), piece.to.X()) < low_x || std::min(piece.from.X(), piece.to.X()) > high_x ||
        std::max(piece.from.Y(), piece.to.Y()) < low_y || std::min(piece.from.Y(), piece.to.Y()) > high_y)
      continue;
    const double a = ruler.PositionOf(piece.from), b = ruler.PositionOf(piece.to);
    const double low = std::max(0.0, std::min(a, b)), high = std::min(ruler.length(), std::max(a, b));
    if (!(high > low)) continue;
    const double offset = ruler.OffsetOf(piece.from);
    const double slope = (ruler.OffsetOf(piece.to) - offset) / (b - a);
    if (std::abs(offset + slope * (low - a)) <= tolerance_ &&
        std::abs(offset + slope * (high - a)) <= tolerance_)
      covered.emplace_back(start + low, start + high);
  }
}

Polyline Stretch(const Polyline& line, const Interval& interval) {
  Polyline stretch;
  double start = 0;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const double length = (line[i] - line[i - 1]).Modulus();
    const double low = std::max(interval.first, start), high = std::min(interval.second, start + length);
    if (high > low) {
      const auto at = [&](double position) {
        return line[i - 1] + (line[i] - line[i - 1]) * ((position - start) / length);
      };
      if (stretch.empty()) stretch.push_back(at(low));
      stretch.push_back(at(high));
    }
    start += length;
  }
  return stretch;
}

std::vector<Polyline> Drawn::Without(const Polyline& line) const {
  std::vector<Interval> covered;
  double length = 0;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const double step = (line[i] - line[i - 1]).Modulus();
    if (step > 0) AddCovered(line[i - 1], line[i], length, covered);
    length += step;
  }
  // A line that is crossed is not broken there, and no crumbs are left.
  const double least = 4 * tolerance_;
  std::ranges::sort(covered);
  std::vector<Interval> merged;
  for (const Interval& each : covered) {
    if (!merged.empty() && each.first <= merged.back().second + least)
      merged.back().second = std::max(merged.back().second, each.second);
    else
      merged.push_back(each);
  }
  std::erase_if(merged, [&](const Interval& each) {
    return each.second - each.first <= least && each.first > least && each.second < length - least;
  });
  if (merged.empty()) return {line};
  std::vector<Polyline> left;
  double free_from = 0;
  merged.emplace_back(length, length);
  for (const auto& [from, to] : merged) {
    if (from - free_from > least) left.push_back(Stretch(line, {free_from, from}));
    free_from = to;
  }
  return left;
}

// The lines joined and without those that can't be seen for shortness, the straight ones first.
std::vector<Polyline> Strokes(const std::vector<Polyline>& lines, double tolerance) {
  std::vector<Polyline> straight, curved;
  for (const Polyline& each : lines) {
    if (!(LengthOf(each) > tolerance)) continue;
    const Polyline line = Straightened(each, tolerance);
    (IsStraight(line) ? straight : curved).push_back(line);
  }
  straight = Joined(std::move(straight),
                    [=](const Polyline& a, const Polyline& b) { return InLine(a, b, tolerance); });
  curved = Joined(std::move(curved),
                  [=](const Polyline& a, const Polyline& b) { return Chained(a, b, tolerance); });
  straight.insert(straight.end(), curved.begin(), curved.end());
  return straight;
}

// Each line as far as it isn't drawn yet, and drawn then.
std::vector<Polyline> DrawnOnce(const std::vector<Polyline>& lines, Drawn& drawn) {
  std::vector<Polyline> left;
  for (const Polyline& line : lines)
    for (Polyline& rest : drawn.Without(line)) {
      drawn.Add(rest);
      left.push_back(std::move(rest));
    }
  return left;
}

}  // namespace

void Tidy(SeenLines& lines, double tolerance) {
  Drawn drawn(2 * tolerance);
  lines.visible = DrawnOnce(Strokes(lines.visible, tolerance), drawn);
  lines.hidden = DrawnOnce(Strokes(lines.hidden, tolerance), drawn);
}

}  // namespace bench::kernel
