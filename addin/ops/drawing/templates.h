// New drawings from the host's templates.
#pragma once

#include <ProDrawing.h>

#include <string>

#include "addin/server/operation_result.h"

namespace vek::drawing {

// Creates a drawing of `source`, a part or assembly, from the template that `template_path` names, with or
// without a directory; from the first default template that serves when it is empty. `used_template` is the
// name of the one that served. The source is pending for the drawing's first view from then on.
CreoMcpOperationResult CreateDrawingFromTemplate(ProMdl source, const std::wstring& template_path,
                                                 ProDrawing& drawing, std::wstring& used_template);

}  // namespace vek::drawing
