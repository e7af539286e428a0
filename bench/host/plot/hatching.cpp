#include "bench/host/plot/hatching.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace bench {
namespace {

// Along the hatching and across it.
Vector2 Turned(const Vector2& point) {
  return {(point[0] + point[1]) / std::numbers::sqrt2, (point[1] - point[0]) / std::numbers::sqrt2};
}
Vector2 TurnedBack(double along, double across) {
  return {(along - across) / std::numbers::sqrt2, (along + across) / std::numbers::sqrt2};
}

// Where the line at that height crosses the loops, in order.
std::vector<double> Crossings(const std::vector<Polyline>& loops, double height) {
  std::vector<double> crossings;
  for (const Polyline& loop : loops)
    for (std::size_t i = 0; i < loop.size(); ++i) {
      const Vector2 from = Turned(loop[i]), to = Turned(loop[(i + 1) % loop.size()]);
      if ((from[1] > height) == (to[1] > height)) continue;
      crossings.push_back(from[0] + (height - from[1]) / (to[1] - from[1]) * (to[0] - from[0]));
    }
  std::ranges::sort(crossings);
  return crossings;
}

std::vector<Polyline> Mirrored(std::vector<Polyline> lines) {
  for (Polyline& line : lines)
    for (Vector2& point : line) point[0] = -point[0];
  return lines;
}

std::vector<Polyline> Rising(const std::vector<Polyline>& loops, double apart) {
  double low = 0, high = 0;
  bool first = true;
  for (const Polyline& loop : loops)
    for (const Vector2& point : loop) {
      const double across = Turned(point)[1];
      low = first ? across : std::min(low, across);
      high = first ? across : std::max(high, across);
      first = false;
    }
  std::vector<Polyline> lines;
  // Heights that are the same for all loops of a sheet, so that neighbouring regions of a part match.
  for (double height = std::ceil(low / apart) * apart; height < high; height += apart) {
    const std::vector<double> crossings = Crossings(loops, height);
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
      if (crossings[i + 1] > crossings[i])
        lines.push_back({TurnedBack(crossings[i], height), TurnedBack(crossings[i + 1], height)});
  }
  return lines;
}

}  // namespace

std::vector<Polyline> Hatched(const std::vector<Polyline>& loops, int body) {
  constexpr double kApart[] = {3, 2, 4};  // millimetres on the sheet
  const double apart = kApart[body / 2 % std::size(kApart)];
  const bool falling = body % 2 == 1;
  return falling ? Mirrored(Rising(Mirrored(loops), apart)) : Rising(loops, apart);
}

}  // namespace bench
