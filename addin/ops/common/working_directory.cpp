#include "addin/ops/common/working_directory.h"

#include <ProUtil.h>

#include "addin/host/text_buffer.h"

namespace vek {

WorkingDirectoryGuard::WorkingDirectoryGuard(std::wstring_view wanted) {
  if (wanted.empty()) return;
  saved_ok_ = ProDirectoryCurrentGet(saved_) == PRO_TK_NO_ERROR;

  ProPath buffer;
  status_ = CopyWhole(buffer, wanted) ? ProDirectoryChange(buffer) : PRO_TK_BAD_INPUTS;
  changed_ = status_ == PRO_TK_NO_ERROR;
}

WorkingDirectoryGuard::~WorkingDirectoryGuard() {
  if (changed_ && saved_ok_) ProDirectoryChange(saved_);
}

}  // namespace vek
