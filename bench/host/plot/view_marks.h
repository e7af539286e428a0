// What a view bears of the views that were made from it: where they are cut and what they enlarge. And the
// words under a view.
#pragma once

#include <string>
#include <vector>

#include "bench/host/plot/svg_writer.h"

namespace bench {

// The letter of a detail: the first that no section of the drawing and no detail before it has.
std::wstring DetailLetter(const Drawing& drawing, const DrawingView& detail);

// The lines under a view: of sections and details their names, and the scale where it isn't the sheet's.
std::vector<std::wstring> LabelOf(const Drawing& drawing, const DrawingView& view, double sheet_scale);

// The line along which another view cuts this one, with arrows that look where it looks. `outline` is the
// view's room on the sheet. Gives the room that the two ends take; nothing, and nothing drawn, when the cut
// can't be seen as a line in this view.
std::vector<Rectangle> DrawSectionLine(const Drawing& drawing, const DrawingView& view,
                                       const DrawingView& section, const Rectangle& outline, SvgWriter& svg);

// The border of a detail on the view that it enlarges, with its letter beside it where nothing is taken yet.
// Gives the room of the letter.
Rectangle DrawDetailBorder(const Drawing& drawing, const DrawingView& view, const DrawingView& detail,
                           const std::vector<Rectangle>& taken, SvgWriter& svg);

}  // namespace bench
