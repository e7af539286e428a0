#include "bench/host/plot/view_marks.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "bench/host/plot/dimension_plot.h"
#include "bench/host/plot/title_block.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr double kLetterHeight = 5;
// The sine below which directions count as parallel.
constexpr double kParallel = 1e-6;
// Millimetres on the sheet by which a line may miss a box and still run along its edge.
constexpr double kOnEdge = 1e-6;

Vector2 Plus(const Vector2& point, double factor, const Vector2& direction) {
  return {point[0] + factor * direction[0], point[1] + factor * direction[1]};
}

// Between which distances from a point on it a line runs through a box; low above high when it misses it.
struct Span {
  double low = -1e9, high = 1e9;
};
Span SpanWithin(const Rectangle& box, const Vector2& point, const Vector2& along) {
  Span span;
  for (int i = 0; i < 2; ++i) {
    if (std::abs(along[i]) < kParallel) {
      if (point[i] < box.low[i] - kOnEdge || point[i] > box.high[i] + kOnEdge) return {1, -1};
      continue;
    }
    const double one = (box.low[i] - point[i]) / along[i], other = (box.high[i] - point[i]) / along[i];
    span.low = std::max(span.low, std::min(one, other));
    span.high = std::min(span.high, std::max(one, other));
  }
  return span;
}

std::wstring Letter(int number) {
  constexpr int kLetters = 26;
  if (number < kLetters) return {static_cast<wchar_t>(L'A' + number)};
  return Letter(number % kLetters) + std::to_wstring(number / kLetters);
}

// Outside of a circle in a box, in the nearest of its corners where nothing is taken, or else in the first.
Rectangle RoomForLetter(const Rectangle& circle, double width, const std::vector<Rectangle>& taken) {
  constexpr double kDiagonal = 0.7071;
  const auto room_at = [&](int right, int up, double gap) {
    const double away_x = kDiagonal * (circle.high[0] - circle.low[0]) / 2 + gap + width / 2;
    const double away_y = kDiagonal * (circle.high[1] - circle.low[1]) / 2 + gap + kLetterHeight / 2;
    const Vector2 at{circle.Middle()[0] + right * away_x, circle.Middle()[1] + up * away_y};
    return Rectangle{{at[0] - width / 2, at[1] - kLetterHeight / 2},
                     {at[0] + width / 2, at[1] + kLetterHeight / 2}};
  };
  for (const double gap : {0.5, 3.0, 6.0})
    for (const auto& [right, up] : {std::pair{1, 1}, {-1, 1}, {1, -1}, {-1, -1}}) {
      const Rectangle room = room_at(right, up, gap);
      if (std::ranges::none_of(taken, [&](const Rectangle& other) { return Overlap(room, other); }))
        return room;
    }
  return room_at(1, 1, 0.5);
}

}  // namespace

std::wstring DetailLetter(const Drawing& drawing, const DrawingView& detail) {
  std::set<std::wstring> taken;
  for (const auto& view : drawing.views)
    if (!view->section.empty()) taken.insert(Upper(view->section));
  int number = 0;
  const auto next = [&] {
    while (taken.contains(Letter(number))) ++number;
    return Letter(number++);
  };
  for (const auto& view : drawing.views) {
    if (!view->detail) continue;
    const std::wstring letter = next();
    if (view.get() == &detail) return letter;
  }
  return next();
}

std::vector<std::wstring> LabelOf(const Drawing& drawing, const DrawingView& view, double sheet_scale) {
  std::vector<std::wstring> label;
  const double scale = drawing.ScaleOf(view);
  if (view.detail) {
    label.push_back(L"DETAIL " + DetailLetter(drawing, view) + L"  SCALE " + ScaleText(scale));
    return label;
  }
  if (!view.section.empty()) label.push_back(L"SECTION " + view.section + L"-" + view.section);
  constexpr double kSameScale = 1e-9;
  if (std::abs(scale - sheet_scale) > kSameScale * scale) label.push_back(L"SCALE " + ScaleText(scale));
  return label;
}

std::vector<Rectangle> DrawSectionLine(const Drawing& drawing, const DrawingView& view,
                                       const DrawingView& section, const Rectangle& outline, SvgWriter& svg) {
  const auto cut = CutOf(drawing, section);
  if (!cut || std::abs(Dot(cut->normal, view.Axis(2))) > kParallel) return {};
  const Vector2 normal{Dot(cut->normal, view.Axis(0)), Dot(cut->normal, view.Axis(1))};
  const Vector2 along{-normal[1], normal[0]};
  const Vector2 point = drawing.OnSheet(view, view.Projected(cut->origin));
  const Span span = SpanWithin(outline, point, along);
  if (span.low > span.high) return {};

  constexpr double kPast = 8, kWideEnd = 6, kArrowLength = 9;
  const Vector2 ends[] = {Plus(point, span.low - kPast, along), Plus(point, span.high + kPast, along)};
  svg.BeginGroup("section-line", L"Section " + section.section);
  svg.Line(Plus(ends[0], kWideEnd, along), Plus(ends[1], -kWideEnd, along), Pen::kCentre);
  std::vector<Rectangle> taken;
  for (const int end : {0, 1}) {
    const double inwards = end == 0 ? 1 : -1;
    svg.Line(ends[end], Plus(ends[end], inwards * kWideEnd, along), Pen::kFrame);
    // The normal points at the reader of the section, who looks against it. The arrow's tip touches the line.
    const Vector2 tail = Plus(ends[end], kArrowLength, normal);
    svg.Line(tail, Plus(ends[end], 1, normal), Pen::kNarrow);
    svg.Arrow(ends[end], {-normal[0], -normal[1]});
    const Vector2 letter = Plus(tail, 1 + kLetterHeight / 2, normal);
    svg.Text({letter[0], letter[1] - kLetterHeight / 2}, section.section, {kLetterHeight});
    taken.push_back(BoxAround({ends[end],
                               {letter[0] - kLetterHeight, letter[1] - kLetterHeight},
                               {letter[0] + kLetterHeight, letter[1] + kLetterHeight}}));
  }
  svg.EndGroup();
  return taken;
}

Rectangle DrawDetailBorder(const Drawing& drawing, const DrawingView& view, const DrawingView& detail,
                           const std::vector<Rectangle>& taken, SvgWriter& svg) {
  std::vector<Vector2> border;
  for (const Vector2& point : detail.detail->spline) border.push_back(drawing.OnSheet(view, point));
  const Rectangle box = BoxAround(border);
  const std::wstring letter = DetailLetter(drawing, detail);
  const Rectangle room = RoomForLetter(box, WidthOf(letter, kLetterHeight), taken);
  svg.BeginGroup("detail-border", L"Detail " + letter);
  svg.ClosedCurve(border, Pen::kNarrow);
  svg.Text({room.Middle()[0], room.low[1]}, letter, {kLetterHeight});
  svg.EndGroup();
  return room;
}

}  // namespace bench
