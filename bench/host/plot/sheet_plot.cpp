#include "bench/host/plot/sheet_plot.h"

#include <algorithm>
#include <iterator>

#include "bench/host/host.h"
#include "bench/host/model/units.h"
#include "bench/host/plot/dimension_plot.h"
#include "bench/host/plot/text_table.h"
#include "bench/host/plot/title_block.h"
#include "bench/host/plot/view_marks.h"
#include "bench/host/plot/view_plot.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr double kLabelHeight = 3.5, kLineApart = 6;
// Between what belongs to one view and what belongs to another.
constexpr double kViewsApart = 3;

Rectangle Grown(const Rectangle& box, double by) {
  return {{box.low[0] - by, box.low[1] - by}, {box.high[0] + by, box.high[1] + by}};
}

Rectangle Around(const Rectangle& a, const Rectangle& b) {
  return BoxAround({a.low, a.high, b.low, b.high});
}

// The boxes, and narrow ones around the pieces of the lines.
std::vector<Rectangle> WithLines(std::vector<Rectangle> boxes, const std::vector<Polyline>& lines) {
  constexpr double kNarrow = 0.5;
  for (const Polyline& line : lines)
    for (std::size_t i = 1; i < line.size(); ++i)
      boxes.push_back(Grown(BoxAround({line[i - 1], line[i]}), kNarrow));
  return boxes;
}

// A view that is drawn, with the room that it and all about it takes.
struct PlacedView {
  const DrawingView* view = nullptr;
  Rectangle outline;
  Rectangle taken;
  std::vector<Polyline> lines;  // the wide ones
  std::vector<ViewDimension> told;
};

class SheetPlot {
 public:
  explicit SheetPlot(const Model& model)
      : model_(model),
        drawing_(*model.drawing),
        sheet_(drawing_.sheets.at(drawing_.current_sheet - 1)),
        svg_(sheet_.width, sheet_.height) {}

  std::string Draw() {
    DrawFrame(sheet_, svg_);
    DrawTitleBlock(sheet_, Words(), svg_);
    for (const auto& view : drawing_.views)
      if (view->sheet == sheet_.number) AddView(*view);
    for (PlacedView& placed : views_) AddMarksAndDimensions(placed);
    for (PlacedView& placed : views_) AddLabel(placed);
    for (PlacedView& placed : views_) AddToldDimensions(placed);
    return svg_.Finished();
  }

 private:
  double SheetScale() const;
  TitleWords Words() const;
  void AddView(const DrawingView& view);
  void AddMarksAndDimensions(PlacedView& placed);
  void AddLabel(PlacedView& placed);
  void AddToldDimensions(const PlacedView& placed);
  std::vector<Vector2> PlacesFor(const TextTable& table, const PlacedView& placed) const;
  Rectangle FreeAround(const PlacedView& placed) const;
  bool IsClear(const Rectangle& box) const;

  const Model& model_;
  const Drawing& drawing_;
  const Sheet& sheet_;
  SvgWriter svg_;
  std::vector<PlacedView> views_;
  std::vector<Rectangle> words_;
};

// That of the first view that has one of its own to give.
double SheetPlot::SheetScale() const {
  for (const auto& view : drawing_.views)
    if (view->sheet == sheet_.number && view->type == ViewType::kGeneral) return drawing_.ScaleOf(*view);
  return sheet_.scale;
}

TitleWords SheetPlot::Words() const {
  TitleWords words;
  words.drawing = model_.name;
  words.unit = L"mm";
  for (const DrawnModel& drawn : drawing_.solids) {
    words.model += (words.model.empty() ? L"" : L", ") + NameOfDrawn(drawn);
    const Model* solid = drawn.model ? TheHost().session.Find(drawn.model) : nullptr;
    if (solid) words.unit = FromUtf8(Word(solid->length_unit));
  }
  words.scale = ScaleText(SheetScale());
  words.sheet = std::to_wstring(sheet_.number) + L"/" + std::to_wstring(drawing_.sheets.size());
  words.size = sheet_.size;
  return words;
}

void SheetPlot::AddView(const DrawingView& view) {
  try {
    if (!drawing_.SolidOf(view)) throw NoProjection("its model is not in session");
    const DrawingView* cut = &view;
    while (cut->detail) cut = drawing_.View(cut->parent);
    if (!cut->section.empty() && !CutOf(drawing_, *cut)) throw NoProjection("its cross-section has no plane");
    const Rectangle outline = OutlineOf(drawing_, view);
    views_.push_back({&view, outline, outline, DrawView(drawing_, view, svg_), {}});
  } catch (const NoProjection& failure) {
    Complain("the view " + ToUtf8(view.name) + " is left out of the plot: " + failure.what());
  }
}

// What no other view and no words stand in, straight to the left, right, above and below.
Rectangle SheetPlot::FreeAround(const PlacedView& placed) const {
  Rectangle free = FrameOf(sheet_);
  std::vector<Rectangle> others = words_;
  others.push_back(TitleBlockOf(sheet_));
  for (const PlacedView& other : views_)
    if (&other != &placed) others.push_back(other.taken);
  for (const Rectangle& each : others) {
    const Rectangle other = Grown(each, kViewsApart);
    for (int axis = 0; axis < 2; ++axis) {
      const int across = 1 - axis;
      const bool beside =
          other.low[across] < placed.taken.high[across] && placed.taken.low[across] < other.high[across];
      if (!beside) continue;
      if (other.low[axis] >= placed.taken.high[axis])
        free.high[axis] = std::min(free.high[axis], other.low[axis]);
      if (other.high[axis] <= placed.taken.low[axis])
        free.low[axis] = std::max(free.low[axis], other.high[axis]);
    }
  }
  return free;
}

void SheetPlot::AddMarksAndDimensions(PlacedView& placed) {
  const DrawingView& view = *placed.view;
  DimensionRoom room{placed.outline, {}, {}, {}};
  for (const PlacedView& other : views_)
    if (&other != &placed) room.others.push_back(other.taken);
  for (const auto& other : drawing_.views)
    if (other->section_parent == view.id && !other->section.empty())
      std::ranges::copy(DrawSectionLine(drawing_, view, *other, placed.outline, svg_),
                        std::back_inserter(room.taken));
  for (const auto& other : drawing_.views)
    if (other->detail && other->parent == view.id)
      room.taken.push_back(
          DrawDetailBorder(drawing_, view, *other, WithLines(room.taken, placed.lines), svg_));
  for (const Rectangle& box : room.taken) placed.taken = Around(placed.taken, box);
  room.free = FreeAround(placed);
  svg_.BeginGroup("dimensions", view.name);
  placed.told = DrawDimensions(drawing_, view, DimensionsOf(drawing_, view), room, svg_);
  svg_.EndGroup();
  for (const Rectangle& box : room.taken) placed.taken = Around(placed.taken, box);
}

void SheetPlot::AddLabel(PlacedView& placed) {
  constexpr double kBelow = 5;
  const std::vector<std::wstring> label = LabelOf(drawing_, *placed.view, SheetScale());
  const Vector2 middle = placed.outline.Middle();
  double base = placed.taken.low[1] - kBelow - kLabelHeight;
  for (const std::wstring& line : label) {
    const double half = WidthOf(line, kLabelHeight) / 2;
    svg_.Text({middle[0], base}, line, {kLabelHeight});
    placed.taken = Around(placed.taken, {{middle[0] - half, base}, {middle[0] + half, base + kLabelHeight}});
    base -= kLineApart;
  }
}

bool SheetPlot::IsClear(const Rectangle& box) const {
  const Rectangle frame = Grown(FrameOf(sheet_), -kViewsApart);
  if (box.low[0] < frame.low[0] || box.low[1] < frame.low[1] || box.high[0] > frame.high[0] ||
      box.high[1] > frame.high[1] || Overlap(box, TitleBlockOf(sheet_)))
    return false;
  return std::ranges::none_of(views_, [&](const PlacedView& view) { return Overlap(box, view.taken); }) &&
         std::ranges::none_of(words_, [&](const Rectangle& words) { return Overlap(box, words); });
}

// The values that no line shows stand in a list of their own, beside the view or else in a corner, in as few
// columns as find room.
void SheetPlot::AddToldDimensions(const PlacedView& placed) {
  if (placed.told.empty()) return;
  constexpr int kMostColumns = 6;
  for (int columns = 1; columns <= kMostColumns; ++columns) {
    const TextTable table(*placed.view, placed.told, columns);
    for (const Vector2& place : PlacesFor(table, placed)) {
      const Rectangle box = table.BoxAt(place);
      if (!IsClear(box)) continue;
      table.Draw(place, svg_);
      words_.push_back(box);
      return;
    }
  }
  Complain("there is no room on the sheet for " + std::to_string(placed.told.size()) +
           " dimensions of the view " + ToUtf8(placed.view->name));
}

// The upper left corners of places that suit a list, the best one first.
std::vector<Vector2> SheetPlot::PlacesFor(const TextTable& table, const PlacedView& placed) const {
  constexpr double kAway = 6;
  const Rectangle frame = Grown(FrameOf(sheet_), -kAway);
  const Rectangle &taken = placed.taken, &outline = placed.outline;
  return {{taken.high[0] + kAway, outline.high[1]},
          {taken.low[0] - kAway - table.width(), outline.high[1]},
          {outline.low[0], taken.low[1] - kAway},
          {outline.low[0], taken.high[1] + kAway + table.height()},
          {frame.high[0] - table.width(), frame.high[1]},
          {frame.low[0], frame.high[1]},
          {frame.low[0], frame.low[1] + table.height()}};
}

}  // namespace

std::string PlotSheet(const Model& drawing) {
  return SheetPlot(drawing).Draw();
}

}  // namespace bench
