// The frame of a sheet and the block of words in its lower right corner.
#pragma once

#include <string>

#include "bench/host/model/drawing.h"
#include "bench/host/plot/svg_writer.h"

namespace bench {

struct TitleWords {
  std::wstring drawing, model, scale, sheet, size, unit;
};

// The room within the frame.
Rectangle FrameOf(const Sheet& sheet);

// The room that the title block takes.
Rectangle TitleBlockOf(const Sheet& sheet);

void DrawFrame(const Sheet& sheet, SvgWriter& svg);
void DrawTitleBlock(const Sheet& sheet, const TitleWords& words, SvgWriter& svg);

// "2:1", "1:2.5"
std::wstring ScaleText(double scale);

}  // namespace bench
