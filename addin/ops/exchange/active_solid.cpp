#include "addin/ops/exchange/active_solid.h"

#include "addin/ops/common/model_access.h"

namespace vek::exchange {

CreoMcpOperationResult RequireActiveSolid(const wchar_t* wrong_type, ProMdl& model, int& type) {
  model = nullptr;
  ProMdl current = nullptr;
  if (ProMdlCurrentGet(&current) != PRO_TK_NO_ERROR || current == nullptr)
    return MakeFailureResult(L"No active document.");
  ProMdlType current_type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(current, &current_type) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to read active document type.");
  if (current_type != kAssemblyType && current_type != kPartType) return MakeFailureResult(wrong_type);
  model = current;
  type = current_type;
  return MakeSuccessResult();
}

}  // namespace vek::exchange
