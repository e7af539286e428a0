// Making sketches and listing them.
#pragma once

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// `args` with `name` in it, so that running them again makes the sketch under the same name even when the
// client let the system choose one. Arguments that are no object come back as they are.
std::wstring AddNameToArgs(const std::wstring& args, const std::wstring& name);

CreoMcpOperationResult SketchCreate(const std::wstring& arguments);
CreoMcpOperationResult SketchList(const std::wstring& arguments);

}  // namespace vek::sketch
