#include "addin/ops/drawing/section_view.h"

#include "addin/host/text_buffer.h"
#include "addin/ops/drawing/cross_sections.h"
#include "addin/ops/drawing/frame.h"
#include "addin/ops/drawing/orientation.h"
#include "addin/ops/drawing/projected_view.h"
#include "addin/ops/drawing/views.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

// From the parent's centre, in the sheet's units.
constexpr double kSectionViewGap = 150;

constexpr double kScaleOfSheet = -1;
constexpr int kWholeView = 1;

CuttingLine ReadLine(const std::wstring& arguments) {
  CuttingLine line;
  JsonReadNumber(arguments, L"x1_mm", line.x1);
  JsonReadNumber(arguments, L"y1_mm", line.y1);
  JsonReadNumber(arguments, L"x2_mm", line.x2);
  JsonReadNumber(arguments, L"y2_mm", line.y2);
  return line;
}

// The view that is to be cut: one projected from the parent, or, when the host refuses that, one from the
// front.
CreoMcpOperationResult CreateHostView(ProDrawing drawing, ProView parent, ProSolid solid, ProView& view) {
  const SheetPoint at = Toward(L"right", ViewCentre(drawing, parent, kFallbackCentre), kSectionViewGap);
  if (CreateProjectedView(drawing, parent, at, view) == PRO_TK_NO_ERROR && view != nullptr)
    return MakeSuccessResult();

  ProMatrix front;
  std::wstring canonical;
  OrientationMatrix(L"front", front, canonical);
  SheetPosition position(at);
  view = nullptr;
  const ProError status = ProDrawingGeneralviewCreate(drawing, solid, CurrentSheet(drawing), PRO_B_FALSE,
                                                      position.coordinates, kScaleOfSheet, front, &view);
  if (status != PRO_TK_NO_ERROR || view == nullptr)
    return MakeFailureResult(Format(L"Failed to create section host view (status=%d).", status));
  return MakeSuccessResult();
}

CreoMcpOperationResult CutView(ProDrawing drawing, ProView view, const std::wstring& section,
                               ProView parent) {
  ProName name;
  CopyCut(name, section);
  const ProError status = ProDrawingView2DSectionSet(
      drawing, view, name, static_cast<ProDrawingViewSectionAreaType>(kWholeView), nullptr, nullptr, parent);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Created host view but failed to apply cross-section '%s' (status=%d).", section, status));
  return MakeSuccessResult();
}

CreoMcpOperationResult AddSectionView(const std::wstring& arguments) {
  ProDrawing drawing = nullptr;
  if (auto opened = OpenActiveDrawing(drawing); !opened.success) return opened;
  const CuttingLine line = ReadLine(arguments);
  std::wstring parent_name;
  ViewInfo parent;
  if (auto found = FindViewOfArgument(drawing, arguments, L"parent_view_name", parent_name, parent);
      !found.success)
    return found;
  ProSolid solid = nullptr;
  if (auto resolved = ResolveViewSolid(drawing, parent.view, solid); !resolved.success) return resolved;
  std::wstring section;
  if (auto made = CreateSectionCrossSection(drawing, parent.view, solid, line, section); !made.success)
    return made;
  ProView view = nullptr;
  if (auto made = CreateHostView(drawing, parent.view, solid, view); !made.success) return made;
  if (auto cut = CutView(drawing, view, section, parent.view); !cut.success) return cut;

  const std::wstring name = ViewName(drawing, view);
  return LoggedSuccess(Format(L"Section view '%s' added (cut %g,%g -> %g,%g, xsec '%s').", name, line.x1,
                              line.y1, line.x2, line.y2, section),
                       ViewNameData(name));
}

}  // namespace

void RegisterSectionViewOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_drawing_add_section_view", AddSectionView);
}

}  // namespace vek::drawing
