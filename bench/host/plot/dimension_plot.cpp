#include "bench/host/plot/dimension_plot.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <set>
#include <utility>

namespace bench {
namespace {

constexpr double kTextHeight = 3, kTextGap = 0.8;
constexpr double kArrowLength = 3;
constexpr double kFirstLane = 10, kLaneApart = 8;
constexpr int kLanes = 6;
// An extension line begins that far from what it measures and ends that far past the dimension line.
constexpr double kExtensionGap = 1, kExtensionPast = 2;

bool LiesIn(const Rectangle& inner, const Rectangle& outer) {
  return inner.low[0] >= outer.low[0] && inner.low[1] >= outer.low[1] && inner.high[0] <= outer.high[0] &&
         inner.high[1] <= outer.high[1];
}

bool IsFree(const Rectangle& box, const DimensionRoom& room) {
  const auto covers = [&](const Rectangle& other) { return Overlap(box, other); };
  return LiesIn(box, room.free) && std::ranges::none_of(room.others, covers) &&
         std::ranges::none_of(room.taken, covers);
}

// A linear measure on the sheet.
struct LinearOnSheet {
  int axis = 0;
  double from = 0, to = 0;
  Vector2 reach_at_from{}, reach_at_to{};
  std::wstring text;

  double Length() const { return to - from; }
  // Arrows stand inside and the text between them, or else both outside.
  bool IsTight() const { return Length() < std::max(3 * kArrowLength, WidthOf(text, kTextHeight) + 2); }
  bool IsSameAs(const LinearOnSheet& other) const {
    constexpr double kSame = 1e-3;
    return axis == other.axis && std::abs(from - other.from) < kSame && std::abs(to - other.to) < kSame;
  }
  // A point at that place along the measured axis and that level across it.
  Vector2 At(double along, double level) const {
    return axis == 0 ? Vector2{along, level} : Vector2{level, along};
  }
};

LinearOnSheet OnSheet(const Drawing& drawing, const DrawingView& view, const LinearMeasure& measure,
                      const std::wstring& text) {
  const auto along = [&](double level, int axis) { return drawing.OnSheet(view, {level, level})[axis]; };
  const auto reach = [&](const Vector2& places) {
    return Vector2{along(places[0], 1 - measure.axis), along(places[1], 1 - measure.axis)};
  };
  return {measure.axis,
          along(measure.from, measure.axis),
          along(measure.to, measure.axis),
          reach(measure.reach_at_from),
          reach(measure.reach_at_to),
          text};
}

// What the dimension line and its text take at a level across the measured axis.
Rectangle BoxAt(const LinearOnSheet& measure, double level) {
  double from = measure.from, to = measure.to;
  if (measure.IsTight()) {
    from -= 2 * kArrowLength;
    to += 2 * kArrowLength + WidthOf(measure.text, kTextHeight);
  }
  constexpr double kBelow = 1;
  // Text stands over a level line, and to the left of an upright one.
  const double over = kTextGap + kTextHeight;
  if (measure.axis == 0) return {{from, level - kBelow}, {to, level + over}};
  return {{level - over, from}, {level + kBelow, to}};
}

void DrawExtension(const LinearOnSheet& measure, double along, const Vector2& reach, double level,
                   SvgWriter& svg) {
  const bool upwards = level > reach[0];
  const double start = upwards ? reach[1] + kExtensionGap : reach[0] - kExtensionGap;
  const double end = upwards ? level + kExtensionPast : level - kExtensionPast;
  svg.Line(measure.At(along, start), measure.At(along, end), Pen::kNarrow);
}

void DrawLinear(const LinearOnSheet& measure, double level, SvgWriter& svg) {
  DrawExtension(measure, measure.from, measure.reach_at_from, level, svg);
  DrawExtension(measure, measure.to, measure.reach_at_to, level, svg);
  const Vector2 forward = measure.axis == 0 ? Vector2{1, 0} : Vector2{0, 1};
  const Vector2 backward{-forward[0], -forward[1]};
  const Vector2 from = measure.At(measure.from, level), to = measure.At(measure.to, level);
  const bool tight = measure.IsTight();
  svg.Arrow(from, tight ? forward : backward);
  svg.Arrow(to, tight ? backward : forward);
  double middle = (measure.from + measure.to) / 2;
  if (tight) {
    const double width = WidthOf(measure.text, kTextHeight), behind = measure.to + 2 * kArrowLength;
    svg.Line(measure.At(measure.from - 2 * kArrowLength, level), measure.At(behind + width, level),
             Pen::kNarrow);
    middle = behind + width / 2;
  } else {
    svg.Line(from, to, Pen::kNarrow);
  }
  const double text_level = measure.axis == 0 ? level + kTextGap : level - kTextGap;
  svg.Text(measure.At(middle, text_level), measure.text,
           {kTextHeight, TextAnchor::kMiddle, measure.axis == 1});
}

// The nearest free level beside the view: on the side to which the extension lines are shorter, else on the
// other one.
std::optional<double> FreeLevel(const LinearOnSheet& measure, const DimensionRoom& room) {
  const double low = room.outline.low[1 - measure.axis], high = room.outline.high[1 - measure.axis];
  const double to_low = measure.reach_at_from[0] + measure.reach_at_to[0] - 2 * low;
  const double to_high = 2 * high - measure.reach_at_from[1] - measure.reach_at_to[1];
  constexpr double kClearly = 1e-6;
  const bool low_first = to_low <= to_high + kClearly;
  for (const bool lower : {low_first, !low_first})
    for (int lane = 0; lane < kLanes; ++lane) {
      const double away = kFirstLane + lane * kLaneApart;
      const double level = lower ? low - away : high + away;
      if (IsFree(BoxAt(measure, level), room)) return level;
    }
  return std::nullopt;
}

// From the arc away from its centre, then level to the text.
struct Leader {
  Vector2 tip, elbow, end;
  Vector2 outwards;
  Rectangle text;
};

Leader LeaderAt(const Vector2& center, double radius, double angle, double length, double width) {
  const Vector2 outwards{std::cos(angle), std::sin(angle)};
  const auto at = [&](double away) {
    return Vector2{center[0] + away * outwards[0], center[1] + away * outwards[1]};
  };
  Leader leader{at(radius), at(radius + length), {}, outwards, {}};
  const double sense = outwards[0] < 0 ? -1 : 1;
  leader.end = {leader.elbow[0] + sense * width, leader.elbow[1]};
  leader.text = {{std::min(leader.elbow[0], leader.end[0]), leader.elbow[1] - 1},
                 {std::max(leader.elbow[0], leader.end[0]), leader.elbow[1] + kTextGap + kTextHeight}};
  return leader;
}

// The shortest leader whose text stands beside the view; none where all places are taken.
std::optional<Leader> FreeLeader(const RoundMeasure& measure, const Vector2& center, double radius,
                                 double width, const DimensionRoom& room) {
  constexpr double kShortest = 6, kLongest = 90, kStep = 2, kMargin = 1.5;
  Rectangle outline = room.outline;
  for (int i = 0; i < 2; ++i) {
    outline.low[i] -= kMargin;
    outline.high[i] += kMargin;
  }
  for (double length = kShortest; length <= kLongest; length += kStep)
    for (const double turn : {0.0, 0.5, 1.0, 1.5, 0.1, -0.1, 0.15, -0.15}) {
      const Leader leader = LeaderAt(center, radius, measure.angle + turn * std::numbers::pi, length, width);
      // Level and upright leaders would run along other lines.
      constexpr double kLeastSlope = 0.2;
      if (std::min(std::abs(leader.outwards[0]), std::abs(leader.outwards[1])) < kLeastSlope) continue;
      if (!Overlap(leader.text, outline) && IsFree(leader.text, room)) return leader;
    }
  return std::nullopt;
}

void DrawLeader(const Leader& leader, const std::wstring& text, SvgWriter& svg) {
  svg.Lines({{leader.tip, leader.elbow, leader.end}}, Pen::kNarrow);
  svg.Arrow(leader.tip, {-leader.outwards[0], -leader.outwards[1]});
  svg.Text({(leader.elbow[0] + leader.end[0]) / 2, leader.elbow[1] + kTextGap}, text, {kTextHeight});
}

bool DrawRound(const Drawing& drawing, const DrawingView& view, const RoundMeasure& measure,
               const std::wstring& text, DimensionRoom& room, SvgWriter& svg) {
  const double width = WidthOf(text, kTextHeight) + 1;
  const auto leader = FreeLeader(measure, drawing.OnSheet(view, measure.center),
                                 measure.radius * drawing.ScaleOf(view), width, room);
  if (!leader) return false;
  DrawLeader(*leader, text, svg);
  room.taken.push_back(leader->text);
  return true;
}

}  // namespace

bool Overlap(const Rectangle& a, const Rectangle& b) {
  return a.low[0] < b.high[0] && b.low[0] < a.high[0] && a.low[1] < b.high[1] && b.low[1] < a.high[1];
}

std::vector<ViewDimension> DrawDimensions(const Drawing& drawing, const DrawingView& view,
                                          const std::vector<ViewDimension>& dimensions, DimensionRoom& room,
                                          SvgWriter& svg) {
  // The shorter ones lie nearer to the view, so that their lines aren't crossed.
  std::vector<std::pair<LinearOnSheet, const ViewDimension*>> linear;
  for (const ViewDimension& dimension : dimensions)
    if (const auto* measure = std::get_if<LinearMeasure>(&dimension.measure))
      linear.emplace_back(OnSheet(drawing, view, *measure, dimension.text), &dimension);
  std::ranges::stable_sort(linear, {}, [](const auto& each) { return each.first.Length(); });
  std::vector<LinearOnSheet> drawn;
  std::set<const ViewDimension*> shown;
  for (const auto& [measure, dimension] : linear) {
    const auto is_same = [&](const LinearOnSheet& other) { return measure.IsSameAs(other); };
    if (std::ranges::any_of(drawn, is_same)) {
      shown.insert(dimension);
    } else if (const auto level = FreeLevel(measure, room)) {
      DrawLinear(measure, *level, svg);
      room.taken.push_back(BoxAt(measure, *level));
      drawn.push_back(measure);
      shown.insert(dimension);
    }
  }
  std::vector<ViewDimension> told;
  for (const ViewDimension& dimension : dimensions) {
    const auto* measure = std::get_if<RoundMeasure>(&dimension.measure);
    if (measure && DrawRound(drawing, view, *measure, dimension.text, room, svg)) shown.insert(&dimension);
    if (!shown.contains(&dimension)) told.push_back(dimension);
  }
  return told;
}

}  // namespace bench
