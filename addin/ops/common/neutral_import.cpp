#include "addin/ops/common/neutral_import.h"

#include <ProIntfimport.h>

#include "addin/host/text_buffer.h"

namespace vek {

ProError ImportUnderFreeName(const std::wstring& path, const std::wstring& name, ProMdl& model,
                             const std::function<void()>& on_clash) {
  constexpr int kCandidates = 100;
  model = nullptr;
  ProPath file;
  CopyCut(file, path);
  ProMdlType source_type = PRO_MDL_UNUSED;
  if (ProIntfimportSourceTypeGet(file, PRO_INTF_IMPORT_STEP, &source_type) != PRO_TK_NO_ERROR)
    source_type = PRO_MDL_UNUSED;
  ProError status = PRO_TK_NO_ERROR;
  for (int taken = 0; taken < kCandidates; ++taken) {
    ProMdlName candidate;
    CopyCut(candidate, ImportCandidate(name, taken));
    status =
        ProIntfimportModelWithOptionsMdlnameCreate(file, nullptr, PRO_INTF_IMPORT_STEP, source_type,
                                                   PRO_IMPORTREP_MASTER, candidate, nullptr, nullptr, &model);
    if (status != PRO_TK_E_FOUND) break;
    if (on_clash) on_clash();
  }
  return status;
}

}  // namespace vek
