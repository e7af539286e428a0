#include "bench/host/plot/title_block.h"

#include <algorithm>

namespace bench {
namespace {

constexpr double kBlockWidth = 180, kBlockHeight = 24;

struct Cell {
  const wchar_t* label;
  std::wstring words;
  Rectangle box;
  double height;  // of the words
};

void DrawCell(const Cell& cell, SvgWriter& svg) {
  constexpr double kLabelHeight = 1.8, kMargin = 1.5;
  svg.Frame(cell.box, Pen::kNarrow);
  const double left = cell.box.low[0] + kMargin, room = cell.box.high[0] - left - kMargin;
  svg.Text({left, cell.box.high[1] - kMargin - kLabelHeight}, cell.label, {kLabelHeight, TextAnchor::kStart});
  // Long words are written smaller rather than over their cell's border.
  const double height = std::min(cell.height, cell.height * room / WidthOf(cell.words, cell.height));
  svg.Text({left, cell.box.low[1] + 2}, cell.words, {height, TextAnchor::kStart});
}

// The sign of third-angle projection: a cut cone from its small end, and the view from there to the left of
// the one from aside.
void DrawProjectionSign(const Rectangle& box, SvgWriter& svg) {
  constexpr double kSmall = 1.75, kLarge = 3.5, kHalfLength = 3.5, kApart = 5.5, kPast = 1.2;
  const auto [x, y] = box.Middle();
  const Vector2 end{x - kApart, y}, aside{x + kApart, y};
  svg.Circle(end, kSmall, Pen::kVisible);
  svg.Circle(end, kLarge, Pen::kVisible);
  const double left = aside[0] - kHalfLength, right = aside[0] + kHalfLength;
  svg.Lines({{{left, y - kSmall},
              {left, y + kSmall},
              {right, y + kLarge},
              {right, y - kLarge},
              {left, y - kSmall}}},
            Pen::kVisible);
  svg.Line({end[0] - kLarge - kPast, y}, {end[0] + kLarge + kPast, y}, Pen::kCentre);
  svg.Line({end[0], y - kLarge - kPast}, {end[0], y + kLarge + kPast}, Pen::kCentre);
  svg.Line({left - kPast, y}, {right + kPast, y}, Pen::kCentre);
}

}  // namespace

Rectangle FrameOf(const Sheet& sheet) {
  return {{sheet.border, sheet.border}, {sheet.width - sheet.border, sheet.height - sheet.border}};
}

Rectangle TitleBlockOf(const Sheet& sheet) {
  const Rectangle frame = FrameOf(sheet);
  const double width = std::min(kBlockWidth, frame.high[0] - frame.low[0]);
  return {{frame.high[0] - width, frame.low[1]}, {frame.high[0], frame.low[1] + kBlockHeight}};
}

void DrawFrame(const Sheet& sheet, SvgWriter& svg) {
  const Rectangle frame = FrameOf(sheet);
  svg.Frame(frame, Pen::kFrame);
  // Marks at the middle of each side, by which a copy is centred.
  constexpr double kInwards = 5;
  const auto [x, y] = frame.Middle();
  svg.Lines({{{x, 0}, {x, frame.low[1] + kInwards}},
             {{x, sheet.height}, {x, frame.high[1] - kInwards}},
             {{0, y}, {frame.low[0] + kInwards, y}},
             {{sheet.width, y}, {frame.high[0] - kInwards, y}}},
            Pen::kFrame);
}

void DrawTitleBlock(const Sheet& sheet, const TitleWords& words, SvgWriter& svg) {
  const Rectangle block = TitleBlockOf(sheet);
  // From the left, as parts of the width; from below, in rows.
  const auto at = [&](double part, int row) {
    return Vector2{block.low[0] + part * (block.high[0] - block.low[0]),
                   block.low[1] + row * (block.high[1] - block.low[1]) / 2};
  };
  constexpr double kFirst = 0.53, kSecond = 0.68, kThird = 0.83, kTall = 5, kUsual = 3.5;
  svg.BeginGroup("title", L"Title block");
  DrawCell({L"DRAWING", words.drawing, {at(0, 1), at(kFirst, 2)}, kTall}, svg);
  DrawCell({L"MODEL", words.model, {at(0, 0), at(kFirst, 1)}, kUsual}, svg);
  DrawCell({L"SCALE", words.scale, {at(kFirst, 1), at(kSecond, 2)}, kUsual}, svg);
  DrawCell({L"SHEET", words.sheet, {at(kFirst, 0), at(kSecond, 1)}, kUsual}, svg);
  DrawCell({L"SIZE", words.size, {at(kSecond, 1), at(kThird, 2)}, kUsual}, svg);
  DrawCell({L"UNIT", words.unit, {at(kSecond, 0), at(kThird, 1)}, kUsual}, svg);
  DrawProjectionSign({at(kThird, 0), at(1, 2)}, svg);
  svg.Frame(block, Pen::kFrame);
  svg.EndGroup();
}

std::wstring ScaleText(double scale) {
  return scale >= 1 ? NumberText(scale) + L":1" : L"1:" + NumberText(1 / scale);
}

}  // namespace bench
