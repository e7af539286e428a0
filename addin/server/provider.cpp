#include "addin/server/provider.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "addin/platform/log.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr std::size_t kLoggedArguments = 800;
constexpr std::size_t kLoggedResult = 400;

// A batch that closes the document leaves its later operations nothing to stand on.
constexpr std::wstring_view kClosingOperation = L"api_document_close";

// Counted by hand, so that a name lost in editing doesn't compile.
constexpr std::size_t kExpectedCount = 81;

constexpr const wchar_t* kExpectedNames[kExpectedCount] = {
    L"api_document_info",
    L"api_document_list_open",
    L"api_document_activate",
    L"api_document_open",
    L"api_document_close",
    L"api_document_rebuild",
    L"api_document_new_part",
    L"api_document_new_assembly",
    L"api_document_save_as",
    L"api_document_undo",
    L"api_document_redo",
    L"api_document_get_history",
    L"api_export_file",
    L"api_export_batch",
    L"api_export_screenshot",
    L"api_import_step_base64",
    L"api_parameters_list",
    L"api_parameters_get",
    L"api_parameters_set",
    L"api_sketch_create",
    L"api_sketch_list",
    L"api_sketch_point",
    L"api_sketch_line_two_points",
    L"api_sketch_circle_center_radius",
    L"api_sketch_rectangle_two_points",
    L"api_sketch_arc",
    L"api_sketch_polyline",
    L"api_sketch_spline",
    L"api_sketch_ellipse_center_radii",
    L"api_sketch_ellipse_arc",
    L"api_sketch_slot",
    L"api_sketch_entity_delete",
    L"api_sketch_constraint_add",
    L"api_sketch_dimension_add",
    L"api_sketch_dimension_set_driven",
    L"api_sketch_text",
    L"api_sketch_text_native",
    L"api_feature_extrude",
    L"api_feature_extrude_advanced",
    L"api_feature_revolve",
    L"api_feature_sweep",
    L"api_feature_loft",
    L"api_feature_shell",
    L"api_feature_hole",
    L"api_feature_thread",
    L"api_feature_delete",
    L"api_feature_list",
    L"api_feature_suppress",
    L"api_feature_unsuppress",
    L"api_feature_transform_rotate",
    L"api_assembly_list_components",
    L"api_assembly_add_component",
    L"api_assembly_move_component",
    L"api_assembly_add_constraint",
    L"api_assembly_list_constraints",
    L"api_assembly_suppress_occurrence",
    L"api_assembly_unsuppress_occurrence",
    L"api_assembly_add_ir_constraint",
    L"api_drawing_create",
    L"api_drawing_add_base_view",
    L"api_drawing_add_projected_view",
    L"api_drawing_add_section_view",
    L"api_drawing_add_detail_view",
    L"api_drawing_add_dimensions",
    L"api_drawing_list_views",
    L"api_analysis_mass_properties",
    L"api_analysis_bounding_box",
    L"api_analysis_measure_distance",
    L"api_analysis_check_interference",
    L"api_analysis_draft_angle",
    L"api_macro_list",
    L"api_macro_run",
    L"api_macro_create",
    L"api_macro_get_code",
    L"api_macro_delete",
    L"api_edge_fillet",
    L"api_edge_chamfer",
    L"api_edge_draft",
    L"api_pattern_rectangular",
    L"api_pattern_circular",
    L"api_pattern_mirror",
};
static_assert(std::all_of(std::begin(kExpectedNames), std::end(kExpectedNames),
                          [](const wchar_t* name) { return name != nullptr; }));

std::wstring CutForLog(const std::wstring& text, std::size_t limit) {
  if (text.size() <= limit) return text;
  return text.substr(0, limit) + L"... <truncated>";
}

}  // namespace

std::span<const wchar_t* const> CreoMcpProvider::ExpectedNames() {
  return kExpectedNames;
}

void CreoMcpProvider::RegisterOperation(std::wstring name, Operation operation) {
  operations_.insert_or_assign(std::move(name), std::move(operation));
}

void CreoMcpProvider::FillMissingOperations() {
  for (const wchar_t* const expected : kExpectedNames) {
    std::wstring name = expected;
    if (operations_.contains(name)) continue;
    RegisterOperation(name, [name](const std::wstring&) {
      return MakeFailureResult(Format(L"Operation '%s' is not implemented by the Creo provider yet.", name));
    });
  }
}

std::vector<std::wstring> CreoMcpProvider::ListOperations() const {
  std::vector<std::wstring> names;
  names.reserve(operations_.size());
  for (const auto& [name, operation] : operations_) names.push_back(name);
  return names;
}

CreoMcpOperationResult CreoMcpProvider::Dispatch(const std::wstring& name,
                                                 const std::wstring& arguments) const {
  LogOperation(Format(L"MCP Dispatch BEGIN op='%s' args=%s", name, CutForLog(arguments, kLoggedArguments)));

  CreoMcpOperationResult result;
  const auto entry = operations_.find(name);
  if (entry == operations_.end()) {
    result = MakeFailureResult(Format(L"Operation '%s' is not implemented by this provider.", name));
  } else {
    try {
      result = entry->second(arguments);
    } catch (const std::exception& thrown) {
      result = MakeFailureResult(Format(L"Operation '%s' threw: %S", name, thrown.what()));
    } catch (...) {
      result = MakeFailureResult(Format(L"Operation '%s' threw an unknown exception.", name));
    }
  }

  LogOperation(Format(L"MCP Dispatch END   op='%s' success=%s message=%s data=%s", name,
                      result.success ? L"true" : L"false", CutForLog(result.message, kLoggedResult),
                      CutForLog(result.dataJson, kLoggedResult)));
  return result;
}

BatchResults CreoMcpProvider::ExecuteBatch(const OperationList& operations) const {
  BatchResults results;
  LogOperation(Format(L"MCP Batch BEGIN count=%d", static_cast<int>(operations.size())));
  bool document_closed = false;
  for (const auto& [name, arguments] : operations) {
    if (document_closed) {
      results[name] =
          MakeFailureResult(L"Skipped: api_document_close must be the last operation in a batch.");
      continue;
    }
    CreoMcpOperationResult result = Dispatch(name, arguments);
    if (result.success && EqualsIgnoreCase(name, kClosingOperation)) document_closed = true;
    results[name] = std::move(result);
  }
  LogOperation(L"MCP Batch END");
  return results;
}

}  // namespace vek
