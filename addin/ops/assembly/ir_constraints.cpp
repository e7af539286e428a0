#include "addin/ops/assembly/ir_constraints.h"

#include <array>
#include <vector>

#include "addin/ops/assembly/constraint_creation.h"
#include "addin/ops/assembly/constraint_words.h"
#include "addin/ops/assembly/display.h"
#include "addin/ops/assembly/geometry_selection.h"
#include "addin/ops/assembly/grounding.h"
#include "addin/ops/assembly/ir_references.h"
#include "addin/ops/assembly/placement.h"
#include "addin/ops/assembly/pose_text.h"
#include "addin/ops/assembly/poses.h"
#include "addin/ops/common/units.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::assembly {
namespace {

struct IrRequest {
  std::wstring kind;
  std::vector<std::wstring> refs;
  std::wstring param;  // raw
};

CreoMcpOperationResult ReadIrRequest(const std::wstring& arguments, IrRequest& request) {
  request.kind = JsonReadStringArgument(arguments, L"kind");
  if (request.kind.empty()) return MakeFailureResult(L"'kind' is required.");
  if (!JsonReadStringArray(arguments, L"refs", request.refs) || request.refs.empty())
    return MakeFailureResult(L"'refs' must be a non-empty array.");
  request.param = JsonReadRaw(arguments, L"param");
  return MakeSuccessResult();
}

// The first three numbers of an array; what follows them isn't looked at, not even the closing bracket.
bool ReadParamVector(std::wstring_view param, std::array<double, 3>& vector) {
  const std::wstring text(Trim(param));
  if (text.empty() || text.front() != L'[') return false;
  std::size_t index = 1;
  for (double& number : vector)
    if (!ReadNextNumber(text, index, number)) return false;
  return true;
}

CreoMcpOperationResult ResolveReference(ProMdl assembly, const std::wstring& text, IrRef& reference,
                                        OccurrenceInfo& occurrence) {
  const auto parsed = ParseIrRef(text);
  if (!parsed) return MakeFailureResult(L"Invalid IR geometry reference.");
  reference = *parsed;
  return ResolveOccurrence(assembly, reference.occurrence, occurrence);
}

CreoMcpOperationResult GroundReferenced(ProMdl assembly, const IrRequest& request) {
  IrRef reference;
  OccurrenceInfo occurrence;
  if (auto found = ResolveReference(assembly, request.refs[0], reference, occurrence); !found.success)
    return found;
  if (auto grounded = GroundComponent(occurrence.comp); !grounded.success) return grounded;
  RefreshAssemblyDisplay(assembly);
  return MakeSuccessResult(Format(L"%s: occurrence '%s' grounded.", request.kind, occurrence.name));
}

// ---- poses

// An occurrence that is to get another pose, and the one that it has.
struct PosedOccurrence {
  OccurrenceInfo info;
  Pose pose;
};

CreoMcpOperationResult ReadPosedOccurrence(ProMdl assembly, const IrRequest& request,
                                           PosedOccurrence& posed) {
  IrRef reference;
  auto found = ResolveReference(assembly, request.refs[0], reference, posed.info);
  if (found.success) ReadComponentPosition(posed.info.comp, posed.pose);
  return found;
}

CreoMcpOperationResult SetPosition(ProMdl assembly, const IrRequest& request) {
  std::array<double, 3> position{};
  if (!ReadParamVector(request.param, position))
    return MakeFailureResult(L"'param' must be [x,y,z] mm for FixedPoint.");
  PosedOccurrence posed;
  if (auto read = ReadPosedOccurrence(assembly, request, posed); !read.success) return read;

  auto& [occurrence, pose] = posed;
  const std::wstring name = occurrence.name;
  for (int row = 0; row < 3; ++row) pose.matrix[row][3] = MmToModelGuarded(assembly, position[row]);
  if (auto persisted = PersistPose(assembly, occurrence, pose); !persisted.success) return persisted;
  RefreshAssemblyDisplay(assembly);
  return MakeSuccessResult(Format(L"FixedPoint: occurrence '%s' positioned at (%g,%g,%g) mm.", name,
                                  position[0], position[1], position[2]));
}

CreoMcpOperationResult SetRotation(ProMdl assembly, const IrRequest& request) {
  std::array<double, 3> angles{};
  if (!ReadParamVector(request.param, angles))
    return MakeFailureResult(L"'param' must be [rx,ry,rz] degrees for FixedRotation.");
  PosedOccurrence posed;
  if (auto read = ReadPosedOccurrence(assembly, request, posed); !read.success) return read;

  auto& [occurrence, pose] = posed;
  const std::wstring name = occurrence.name;
  const Rotation rotation = EulerRotation(angles);
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) pose.matrix[row][column] = rotation[row][column];
  if (auto persisted = PersistPose(assembly, occurrence, pose); !persisted.success) return persisted;
  RefreshAssemblyDisplay(assembly);
  return MakeSuccessResult(
      Format(L"FixedRotation: occurrence '%s' rotated by (%g\u00b0, %g\u00b0, %g\u00b0) Euler.", name,
             angles[0], angles[1], angles[2]));
}

// ---- faces against faces

// A selector is followed on faces only; every other reference means the occurrence's first plane.
CreoMcpOperationResult ResolveIrFace(const IrRef& reference, OccurrenceFace& side) {
  const OccurrenceInfo& occurrence = side.occurrence;
  if (!reference.selector.empty() && (reference.kind.empty() || reference.kind == L"faces")) {
    if (!FaceBySelector(occurrence.model, reference.selector, side.face))
      return MakeFailureResult(
          Format(L"No face matched selector '%s' on '%s'.", reference.selector, occurrence.name));
    return MakeSuccessResult();
  }
  if (!FindFaceOfKind(occurrence.model, kPlaneSurface, side.face))
    return MakeFailureResult(Format(L"No planar face found on '%s'.", occurrence.name));
  return MakeSuccessResult();
}

// The constraint that the kind means, and what the message calls it. All but a plane at a distance are plain
// mates, whatever their names say.
CreoMcpOperationResult ReadKind(ProMdl assembly, const IrRequest& request, ConstraintRequest& constraint,
                                std::wstring& label) {
  constraint = {kMate, std::nullopt};
  label = request.kind;
  if (request.kind == L"Plane") {
    double offset_mm = 0;
    if (!EqualsIgnoreCase(request.param, L"null")) offset_mm = ReadLeadingNumber(request.param);
    if (IsSignificantOffset(offset_mm)) constraint = {kMateOffset, MmToModelGuarded(assembly, offset_mm)};
    label = Format(L"Plane (offset=%g mm)", offset_mm);
    return MakeSuccessResult();
  }
  for (const wchar_t* kind : {L"Axis", L"Point", L"PointInPlane", L"PointOnLine"})
    if (request.kind == kind) return MakeSuccessResult();
  return MakeFailureResult(
      Format(L"Unknown IR constraint kind '%s'. Supported: Fixed, Axis, Plane, Point, PointInPlane, "
             L"PointOnLine, FixedAxis, FixedPoint, FixedRotation.",
             request.kind));
}

CreoMcpOperationResult ConstrainReferences(ProMdl assembly, const IrRequest& request) {
  if (request.refs.size() < 2)
    return MakeFailureResult(L"IR kinds Axis/Plane/Point/PointInPlane/PointOnLine require 2 refs.");
  IrRef first_ref, second_ref;
  OccurrenceInfo first, second;
  if (auto found = ResolveReference(assembly, request.refs[0], first_ref, first); !found.success)
    return found;
  if (auto found = ResolveReference(assembly, request.refs[1], second_ref, second); !found.success)
    return found;
  ConstraintRequest constraint;
  std::wstring label;
  if (auto read = ReadKind(assembly, request, constraint, label); !read.success) return read;

  OccurrenceFace moved{first};
  OccurrenceFace reference{second};
  if (auto found = ResolveIrFace(first_ref, moved); !found.success) return found;
  if (auto found = ResolveIrFace(second_ref, reference); !found.success) return found;
  if (auto added = ConstrainOccurrence(
          assembly, moved, reference, constraint,
          {L"Failed to allocate IR component selection.", L"Failed to allocate IR constraint.",
           L"Failed to populate IR constraint.", L"Failed to set IR constraint offset.",
           L"Failed to build IR constraint array.",
           Format(L"Failed to apply IR constraint '%s'", request.kind)});
      !added.success)
    return added;
  RefreshAssemblyDisplay(assembly);
  return MakeSuccessResult(
      Format(L"%s: constraint added between '%s' and '%s'.", label, first.name, second.name));
}

CreoMcpOperationResult AddIrConstraint(const std::wstring& arguments) {
  ProMdl assembly = nullptr;
  if (auto active = RequireActiveAssembly(assembly); !active.success) return active;
  IrRequest request;
  if (auto read = ReadIrRequest(arguments, request); !read.success) return read;
  if (request.kind == L"Fixed" || request.kind == L"FixedAxis") return GroundReferenced(assembly, request);
  if (request.kind == L"FixedPoint") return SetPosition(assembly, request);
  if (request.kind == L"FixedRotation") return SetRotation(assembly, request);
  return ConstrainReferences(assembly, request);
}

}  // namespace

void RegisterIrConstraintOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_assembly_add_ir_constraint", AddIrConstraint);
}

}  // namespace vek::assembly
