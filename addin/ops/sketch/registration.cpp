#include "addin/ops/sketch/registration.h"

#include "addin/ops/sketch/constraints.h"
#include "addin/ops/sketch/create.h"
#include "addin/ops/sketch/dimensions.h"
#include "addin/ops/sketch/geometry.h"
#include "addin/ops/sketch/removal.h"
#include "addin/ops/sketch/text.h"
#include "addin/text/format.h"

namespace vek::sketch {
namespace {

struct SketchOperation {
  const wchar_t* name;
  CreoMcpOperationResult (*handler)(const std::wstring& arguments);
};

constexpr SketchOperation kOperations[] = {
    {L"api_sketch_create", SketchCreate},
    {L"api_sketch_list", SketchList},
    {L"api_sketch_point", SketchPoint},
    {L"api_sketch_line_two_points", SketchLine},
    {L"api_sketch_circle_center_radius", SketchCircle},
    {L"api_sketch_rectangle_two_points", SketchRectangle},
    {L"api_sketch_arc", SketchArc},
    {L"api_sketch_polyline", SketchPolyline},
    {L"api_sketch_spline", SketchSpline},
    {L"api_sketch_ellipse_center_radii", SketchEllipse},
    {L"api_sketch_ellipse_arc", SketchEllipseArc},
    {L"api_sketch_slot", SketchSlot},
    {L"api_sketch_entity_delete", SketchEntityDelete},
    {L"api_sketch_constraint_add", SketchConstraintAdd},
    {L"api_sketch_dimension_add", SketchDimensionAdd},
    {L"api_sketch_dimension_set_driven", SketchDimensionSetDriven},
    {L"api_sketch_text", SketchText},
    {L"api_sketch_text_native", SketchTextNative},
};

std::map<std::wstring, CreoMcpProvider::Operation>& Table() {
  static std::map<std::wstring, CreoMcpProvider::Operation> table;
  return table;
}

}  // namespace

const std::map<std::wstring, CreoMcpProvider::Operation>& SketchOperationTable() {
  return Table();
}

CreoMcpOperationResult ReplaySketchOperation(const std::wstring& name, const std::wstring& arguments) {
  const auto operation = Table().find(name);
  if (operation == Table().end()) return MakeFailureResult(Format(L"Unknown sketch operation '%s'.", name));
  return operation->second(arguments);
}

void RegisterSketchOperations(CreoMcpProvider& provider) {
  for (const SketchOperation& operation : kOperations) {
    provider.RegisterOperation(operation.name, operation.handler);
    Table().insert_or_assign(operation.name, operation.handler);
  }
}

}  // namespace vek::sketch
