// Text in sketches: outlines that the client has worked out, and the host's own text entities.
#pragma once

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

CreoMcpOperationResult SketchText(const std::wstring& arguments);
CreoMcpOperationResult SketchTextNative(const std::wstring& arguments);

}  // namespace vek::sketch
