#include "addin/ops/assembly/constraint_creation.h"

#include "addin/host/owned.h"
#include "addin/ops/assembly/geometry_selection.h"
#include "addin/ops/assembly/grounding.h"
#include "addin/text/format.h"

namespace vek::assembly {
namespace {

bool Populate(ProAsmcompconstraint constraint, int creo_type, ProSelection assembly_side,
              ProSelection component_side) {
  return ProAsmcompconstraintTypeSet(constraint, static_cast<ProAsmcompConstrType>(creo_type)) ==
             PRO_TK_NO_ERROR &&
         ProAsmcompconstraintAsmreferenceSet(constraint, assembly_side, PRO_DATUM_SIDE_NONE) ==
             PRO_TK_NO_ERROR &&
         ProAsmcompconstraintCompreferenceSet(constraint, component_side, PRO_DATUM_SIDE_NONE) ==
             PRO_TK_NO_ERROR;
}

}  // namespace

CreoMcpOperationResult ConstrainOccurrence(ProMdl assembly, OccurrenceFace& moved, OccurrenceFace& reference,
                                           const ConstraintRequest& request,
                                           const ConstraintFailures& failures) {
  OwnedSelection component_side;
  OwnedSelection assembly_side;
  if (auto built = BuildGeometrySelection(assembly, &reference.occurrence, &reference.face, assembly_side);
      !built.success)
    return built;
  // The moved occurrence's face is one of its model's: a path would name the place that it is to leave.
  if (ProSelectionAlloc(nullptr, &moved.face, component_side.out()) != PRO_TK_NO_ERROR || !component_side)
    return MakeFailureResult(failures.selection);

  OwnedConstraint constraint;
  if (ProAsmcompconstraintAlloc(constraint.out()) != PRO_TK_NO_ERROR || !constraint)
    return MakeFailureResult(failures.constraint);
  if (!Populate(constraint.get(), request.creo_type, assembly_side.get(), component_side.get()))
    return MakeFailureResult(failures.content);
  if (request.offset && ProAsmcompconstraintOffsetSet(constraint.get(), *request.offset) != PRO_TK_NO_ERROR)
    return MakeFailureResult(failures.offset);

  OwnedConstraints constraints;
  if (!GatherConstraint(constraint, constraints)) return MakeFailureResult(failures.array);
  ProAsmcomp component = moved.occurrence.comp;
  const ProError status = ProAsmcompConstraintsSet(nullptr, &component, constraints.get());
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"%s (status=%d).", failures.application, status));
  return MakeSuccessResult();
}

}  // namespace vek::assembly
