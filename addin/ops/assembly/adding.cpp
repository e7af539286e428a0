#include "addin/ops/assembly/adding.h"

#include <ProAsmcomp.h>

#include "addin/ops/assembly/component_files.h"
#include "addin/ops/assembly/display.h"
#include "addin/ops/assembly/grounding.h"
#include "addin/ops/assembly/occurrences.h"
#include "addin/ops/assembly/pose_arithmetic.h"
#include "addin/ops/assembly/pose_text.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/common/units.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::assembly {
namespace {

// A pose in model units, and what the client is told of it.
struct ComponentPose {
  Pose pose;
  std::wstring text;
};

Translation InModelUnits(ProMdl assembly, const Translation& mm) {
  return {MmToModelGuarded(assembly, mm.x), MmToModelGuarded(assembly, mm.y),
          MmToModelGuarded(assembly, mm.z)};
}

ComponentPose FullPose(ProMdl assembly, const TransformRows& rows) {
  const Translation mm{rows[0][3], rows[1][3], rows[2][3]};
  ComponentPose result;
  result.pose = TranslationInColumn(InModelUnits(assembly, mm));
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) result.pose.matrix[row][column] = rows[row][column];
  result.text = Format(L"transform=full4x4, T=(%g,%g,%g) mm", mm.x, mm.y, mm.z);
  return result;
}

// A transform that doesn't read as one is taken for none given.
ComponentPose ReadComponentPose(ProMdl assembly, const std::wstring& arguments) {
  Translation mm;
  JsonReadNumber(arguments, L"x_mm", mm.x);
  JsonReadNumber(arguments, L"y_mm", mm.y);
  JsonReadNumber(arguments, L"z_mm", mm.z);
  if (const auto rows = ReadTransformRows(JsonReadRaw(arguments, L"transform")))
    return FullPose(assembly, *rows);
  return {TranslationInColumn(InModelUnits(assembly, mm)),
          Format(L"transform=translation-only, T=(%g,%g,%g) mm, R=identity", mm.x, mm.y, mm.z)};
}

CreoMcpOperationResult AddComponent(const std::wstring& arguments) {
  ProMdl assembly = nullptr;
  if (auto active = RequireActiveAssembly(assembly); !active.success) return active;
  const std::wstring file_path = JsonReadStringArgument(arguments, L"file_path");
  if (file_path.empty()) return MakeFailureResult(L"'file_path' is required.");
  const std::wstring component_name = JsonReadStringArgument(arguments, L"component_name");
  const bool grounded = JsonReadBool(arguments, L"grounded", false);

  ProMdl model = nullptr;
  if (auto loaded = LoadComponentModel(assembly, file_path, model); !loaded.success) return loaded;
  ComponentPlace place;
  if (auto placed = PlaceBesideAssembly(assembly, model, place); !placed.success) return placed;
  ComponentPose at = ReadComponentPose(assembly, arguments);

  ProAsmcomp comp{};
  const ProError status = ProAsmcompAssemble(static_cast<ProSolid>(assembly), static_cast<ProSolid>(model),
                                             at.pose.matrix, &comp);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to insert component from '%s' (status=%d).", file_path, status));

  const std::wstring wanted = component_name.empty() ? ModelName(model) : component_name;
  const std::wstring occurrence = AssignOccurrenceName(assembly, comp, wanted);
  // An occurrence that could not be grounded is in the assembly all the same.
  if (grounded)
    if (auto ground = GroundComponent(comp); !ground.success)
      LogOperation(Format(L"WARNING: component inserted but grounding failed: %s", ground.message));
  ProAsmcompRegenerate(&comp, PRO_B_FALSE);
  RefreshAssemblyDisplay(assembly);

  std::wstring message =
      Format(L"Component '%s' -> occurrence '%s' inserted%s. %s%s", wanted, occurrence,
             place.copied ? L" (copied next to assembly)" : L"", at.text, grounded ? L" (grounded)" : L"");
  LogOperation(Format(L"[MCP] %s", message));
  return MakeSuccessResult(
      std::move(message),
      Format(LR"({"occurrence_name":"%s","local_path":"%s","copied_beside_assembly":%s})",
             JsonEscape(occurrence), JsonEscape(place.local_path), place.copied ? L"true" : L"false"));
}

}  // namespace

void RegisterAddingOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_assembly_add_component", AddComponent);
}

}  // namespace vek::assembly
