// Dimensions told in words, for those that no line can show.
#pragma once

#include <string>
#include <vector>

#include "bench/host/plot/measured.h"
#include "bench/host/plot/svg_writer.h"

namespace bench {

// A heading and below it `symbol = value` in that many columns, filled one after the other.
class TextTable {
 public:
  // `dimensions` is not empty.
  TextTable(const DrawingView& view, const std::vector<ViewDimension>& dimensions, int columns);

  double width() const { return width_; }
  double height() const { return height_; }
  // With its upper left corner there.
  Rectangle BoxAt(const Vector2& place) const;
  void Draw(const Vector2& place, SvgWriter& svg) const;

 private:
  std::wstring heading_;
  std::wstring view_;
  std::vector<std::wstring> lines_;
  std::size_t rows_ = 1;
  double column_width_ = 0;
  double width_ = 0;
  double height_ = 0;
};

}  // namespace bench
