// Which model a drawing is to show: the source of a new one, and what its first view draws.
#pragma once

#include <ProDrawing.h>

#include <string>

#include "addin/server/operation_result.h"

namespace vek::drawing {

// A new drawing holds no model yet: until its first view is made, this tells which one it was created from.
struct PendingDrawingSource {
  std::wstring drawing_name;
  ProMdl source = nullptr;  // null when none is pending
};

// The drawing last created. Main thread only; it outlives the operations.
PendingDrawingSource& PendingSource();

// The type of the model when it is a part or an assembly, else -1.
int SolidTypeOf(ProMdl model);

// Where the model lies, or its bare name.
std::wstring SourcePath(ProMdl model);

// The model that a new drawing is made of: that of `model_path`, or the active one.
CreoMcpOperationResult ResolveDrawingSource(const std::wstring& model_path, ProMdl& source);

// The model that a base view draws: that of `model_path`, else the pending source of the drawing, else the
// first model on it, else the first assembly in session, else the first part.
CreoMcpOperationResult ResolveBaseViewModel(ProDrawing drawing, const std::wstring& model_path,
                                            ProMdl& model);

}  // namespace vek::drawing
