// What all drawing operations share: the active drawing, its sheet, and their lines in the log.
#pragma once

#include <ProDrawing.h>

#include <string>
#include <string_view>

#include "addin/server/operation_result.h"

namespace vek::drawing {

// The active model, which must be a drawing.
CreoMcpOperationResult RequireActiveDrawing(ProDrawing& drawing);

// Displays the drawing and brings its window, if it has one, to the front.
CreoMcpOperationResult ShowDrawing(ProDrawing drawing);

// How every operation on views begins: the two above.
CreoMcpOperationResult OpenActiveDrawing(ProDrawing& drawing);

// The number of the sheet that is shown; 1 when the host doesn't tell.
int CurrentSheet(ProDrawing drawing);

// `value`, or the default when it is no number above 0 that is finite.
double PositiveOr(double value, double default_value);

// One line of the family's log.
void LogDrawing(std::wstring_view message);

// A success whose message is logged as well.
CreoMcpOperationResult LoggedSuccess(std::wstring message, std::wstring dataJson);

}  // namespace vek::drawing
