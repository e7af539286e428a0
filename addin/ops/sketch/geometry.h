// The drawing operations: each adds entities to a sketch and commits it, so that a client sees the finished
// feature after every call. Lengths are millimetres, angles degrees.
#pragma once

#include <string_view>

#include "addin/ops/sketch/section_pen.h"

namespace vek::sketch {

// Ends a drawing operation: commits the sketch and reports what `pen` drew under `message`. When the commit
// fails the entities stay in the session, and the next commit tries them again.
CreoMcpOperationResult CommitDrawing(std::wstring_view operation, const std::wstring& arguments,
                                     const SectionPen& pen, std::wstring message);

// Enters a drawing step that succeeded in the history, from the sketch and the labels in its data, and passes
// the result on.
CreoMcpOperationResult FinishDrawResult(std::wstring_view operation, const std::wstring& arguments,
                                        CreoMcpOperationResult result);

CreoMcpOperationResult SketchPoint(const std::wstring& arguments);
CreoMcpOperationResult SketchLine(const std::wstring& arguments);
CreoMcpOperationResult SketchCircle(const std::wstring& arguments);
CreoMcpOperationResult SketchRectangle(const std::wstring& arguments);
CreoMcpOperationResult SketchArc(const std::wstring& arguments);
CreoMcpOperationResult SketchPolyline(const std::wstring& arguments);
CreoMcpOperationResult SketchSpline(const std::wstring& arguments);
CreoMcpOperationResult SketchEllipse(const std::wstring& arguments);
CreoMcpOperationResult SketchEllipseArc(const std::wstring& arguments);
CreoMcpOperationResult SketchSlot(const std::wstring& arguments);

}  // namespace vek::sketch
