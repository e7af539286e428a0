#include "addin/ops/drawing/documents.h"

#include "addin/ops/common/model_access.h"
#include "addin/ops/drawing/drawing_source.h"
#include "addin/ops/drawing/frame.h"
#include "addin/ops/drawing/templates.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

CreoMcpOperationResult CreateDrawing(const std::wstring& arguments) {
  const std::wstring model_path = JsonReadStringArgument(arguments, L"model_path");
  const std::wstring template_path = JsonReadStringArgument(arguments, L"template_path");
  ProMdl source = nullptr;
  if (auto resolved = ResolveDrawingSource(model_path, source); !resolved.success) return resolved;
  ProDrawing drawing = nullptr;
  std::wstring used_template;
  if (auto created = CreateDrawingFromTemplate(source, template_path, drawing, used_template);
      !created.success)
    return created;
  if (auto shown = ShowDrawing(drawing); !shown.success) return shown;
  if (auto activated = ActivateModel(drawing); !activated.success) return activated;

  const std::wstring path = ModelFullPath(drawing, kDrawingType);
  return LoggedSuccess(
      Format(L"Drawing document created (template: '%s').", used_template),
      Format(LR"({"drawing_path":"%s","model_path":"%s"})", JsonEscape(path.empty() ? L"(unsaved)" : path),
             JsonEscape(SourcePath(source))));
}

}  // namespace

void RegisterDocumentOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_drawing_create", CreateDrawing);
}

}  // namespace vek::drawing
