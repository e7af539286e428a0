#include "addin/ops/assembly/constraints.h"

#include "addin/ops/assembly/constraint_creation.h"
#include "addin/ops/assembly/constraint_words.h"
#include "addin/ops/assembly/display.h"
#include "addin/ops/assembly/geometry_selection.h"
#include "addin/ops/assembly/grounding.h"
#include "addin/ops/assembly/occurrences.h"
#include "addin/ops/common/units.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::assembly {
namespace {

struct AddRequest {
  std::wstring type;  // lowered, otherwise as the client wrote it
  std::wstring occurrence1;
  std::wstring occurrence2;
  double offset_mm = 0;
  double angle_deg = 0;
};

AddRequest ReadAddRequest(const std::wstring& arguments) {
  AddRequest request;
  request.type = ToLower(JsonReadStringArgument(arguments, L"type"));
  if (request.type.empty()) request.type = L"ground";
  request.occurrence1 = JsonReadStringArgument(arguments, L"occurrence1");
  request.occurrence2 = JsonReadStringArgument(arguments, L"occurrence2");
  JsonReadNumber(arguments, L"offset_mm", request.offset_mm);
  JsonReadNumber(arguments, L"angle_deg", request.angle_deg);
  return request;
}

// What the host is asked for: a mate or flush that keeps a distance is another type than one that doesn't.
ConstraintRequest DecideOffset(ProMdl assembly, const ConstraintTypeSpec& type, const AddRequest& request) {
  if (type.is_angle) return {type.creo_type, request.angle_deg};
  const bool significant = IsSignificantOffset(request.offset_mm);
  if (!type.takes_offset && !significant) return {type.creo_type, std::nullopt};
  return {significant ? WithDistance(type.creo_type) : type.creo_type,
          MmToModelGuarded(assembly, request.offset_mm)};
}

// Puts the first fitting faces of the two against each other.
CreoMcpOperationResult AddBinaryConstraint(ProMdl assembly, const OccurrenceInfo& first,
                                           const OccurrenceInfo& second, int surface_type,
                                           const ConstraintRequest& request) {
  if (first.model == nullptr || second.model == nullptr)
    return MakeFailureResult(L"Constraint occurrences must reference loaded models.");
  OccurrenceFace moved{first};
  OccurrenceFace reference{second};
  for (OccurrenceFace* side : {&moved, &reference})
    if (!FindFaceOfKind(side->occurrence.model, surface_type, side->face))
      return MakeFailureResult(Format(L"No compatible face found on '%s'.", side->occurrence.name));
  return ConstrainOccurrence(
      assembly, moved, reference, request,
      {L"Failed to allocate component geometry selection.", L"Failed to allocate assembly constraint.",
       L"Failed to populate assembly constraint.", L"Failed to set constraint offset.",
       L"Failed to build constraint array.",
       Format(L"Failed to apply constraint between '%s' and '%s'", first.name, second.name)});
}

CreoMcpOperationResult Ground(ProMdl assembly, const AddRequest& request) {
  if (request.occurrence1.empty())
    return MakeFailureResult(L"'occurrence1' is required for ground constraint.");
  OccurrenceInfo occurrence;
  if (auto found = ResolveOccurrence(assembly, request.occurrence1, occurrence); !found.success) return found;
  if (auto grounded = GroundComponent(occurrence.comp); !grounded.success) return grounded;
  RefreshAssemblyDisplay(assembly);
  return MakeSuccessResult(Format(L"Occurrence '%s' grounded.", occurrence.name));
}

CreoMcpOperationResult Unground(ProMdl assembly, const AddRequest& request) {
  if (request.occurrence1.empty())
    return MakeFailureResult(L"'occurrence1' is required for unground constraint.");
  OccurrenceInfo occurrence;
  if (auto found = ResolveOccurrence(assembly, request.occurrence1, occurrence); !found.success) return found;
  const ProError status = ProAsmcompAllConstrRemove(&occurrence.comp);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Failed to unground occurrence '%s' (status=%d).", occurrence.name, status));
  RefreshAssemblyDisplay(assembly);
  return MakeSuccessResult(Format(L"Occurrence '%s' ungrounded (floated).", occurrence.name));
}

std::wstring AddedMessage(const AddRequest& request, const ConstraintTypeSpec& type, bool has_offset,
                          const std::wstring& first, const std::wstring& second) {
  if (type.is_angle)
    return Format(L"Angle constraint %g\u00b0 added between '%s' and '%s'.", request.angle_deg, first,
                  second);
  if (has_offset)
    return Format(L"%s constraint added between '%s' and '%s', offset=%g mm.", request.type, first, second,
                  request.offset_mm);
  return Format(L"%s constraint added between '%s' and '%s'.", request.type, first, second);
}

CreoMcpOperationResult ConstrainPair(ProMdl assembly, const AddRequest& request) {
  if (request.occurrence1.empty() || request.occurrence2.empty())
    return MakeFailureResult(L"'occurrence1' and 'occurrence2' are required for binary constraints.");
  const auto type = FindConstraintType(request.type);
  if (!type)
    return MakeFailureResult(
        Format(L"Unknown constraint type '%s'. Supported: ground, mate, flush, angle, tangent, insert, "
               L"coincident, concentric, distance, parallel, perpendicular, fixed, unground.",
               request.type));
  OccurrenceInfo first, second;
  if (auto found = ResolveOccurrence(assembly, request.occurrence1, first); !found.success) return found;
  if (auto found = ResolveOccurrence(assembly, request.occurrence2, second); !found.success) return found;

  const ConstraintRequest constraint = DecideOffset(assembly, *type, request);
  if (auto added = AddBinaryConstraint(assembly, first, second, type->surface_type, constraint);
      !added.success)
    return added;
  RefreshAssemblyDisplay(assembly);
  return MakeSuccessResult(
      AddedMessage(request, *type, constraint.offset.has_value(), first.name, second.name));
}

CreoMcpOperationResult AddConstraint(const std::wstring& arguments) {
  ProMdl assembly = nullptr;
  if (auto active = RequireActiveAssembly(assembly); !active.success) return active;
  const AddRequest request = ReadAddRequest(arguments);
  if (request.type == L"ground" || request.type == L"fixed") return Ground(assembly, request);
  if (request.type == L"unground" || request.type == L"float") return Unground(assembly, request);
  return ConstrainPair(assembly, request);
}

}  // namespace

void RegisterConstraintOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_assembly_add_constraint", AddConstraint);
}

}  // namespace vek::assembly
