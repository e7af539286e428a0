#include "bench/host/plot/text_table.h"

#include <algorithm>

#include "bench/host/text.h"

namespace bench {
namespace {

constexpr double kLetterHeight = 2.5, kRowHeight = 4.5, kColumnGap = 4;

}  // namespace

TextTable::TextTable(const DrawingView& view, const std::vector<ViewDimension>& dimensions, int columns)
    : heading_(L"DIMENSIONS OF " + Upper(view.name)), view_(view.name) {
  for (const ViewDimension& dimension : dimensions)
    lines_.push_back(dimension.symbol + L" = " + dimension.text);
  for (const std::wstring& line : lines_)
    column_width_ = std::max(column_width_, WidthOf(line, kLetterHeight) + kColumnGap);
  rows_ = (lines_.size() + columns - 1) / columns;
  const std::size_t filled = (lines_.size() + rows_ - 1) / rows_;
  width_ = std::max(WidthOf(heading_, kLetterHeight), static_cast<double>(filled) * column_width_);
  height_ = static_cast<double>(rows_ + 1) * kRowHeight;
}

Rectangle TextTable::BoxAt(const Vector2& place) const {
  return {{place[0], place[1] - height_}, {place[0] + width_, place[1]}};
}

void TextTable::Draw(const Vector2& place, SvgWriter& svg) const {
  svg.BeginGroup("told-dimensions", view_);
  const double top = place[1] - kLetterHeight;
  svg.Text({place[0], top}, heading_, {kLetterHeight, TextAnchor::kStart});
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const Vector2 at{place[0] + static_cast<double>(i / rows_) * column_width_,
                     top - static_cast<double>(i % rows_ + 1) * kRowHeight};
    svg.Text(at, lines_[i], {kLetterHeight, TextAnchor::kStart});
  }
  svg.EndGroup();
}

}  // namespace bench
