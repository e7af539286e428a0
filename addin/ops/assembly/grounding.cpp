#include "addin/ops/assembly/grounding.h"

#include "addin/text/format.h"

namespace vek::assembly {
namespace {

constexpr int kFixConstraint = 13;

}  // namespace

bool GatherConstraint(OwnedConstraint& constraint, OwnedConstraints& constraints) {
  OwnedArray<ProAsmcompconstraint> array;
  const bool gathered =
      array.Allocate(0) == PRO_TK_NO_ERROR && array.Append(constraint.get()) == PRO_TK_NO_ERROR;
  constraints = OwnedConstraints(array.release());
  if (gathered) constraint.release();
  return gathered;
}

CreoMcpOperationResult GroundComponent(const ProAsmcomp& comp) {
  OwnedConstraint fix;
  if (ProAsmcompconstraintAlloc(fix.out()) != PRO_TK_NO_ERROR || !fix)
    return MakeFailureResult(L"Failed to allocate FIX constraint.");
  if (ProAsmcompconstraintTypeSet(fix.get(), static_cast<ProAsmcompConstrType>(kFixConstraint)) !=
      PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to set FIX constraint type.");
  OwnedConstraints constraints;
  if (!GatherConstraint(fix, constraints)) return MakeFailureResult(L"Failed to build FIX constraint array.");
  ProAsmcomp component = comp;
  const ProError status = ProAsmcompConstraintsSet(nullptr, &component, constraints.get());
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to apply FIX constraint (status=%d).", status));
  return MakeSuccessResult();
}

}  // namespace vek::assembly
