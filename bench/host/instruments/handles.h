// From the handles of callers to the models behind them.
#pragma once

#include <ProMdl.h>

#include "bench/host/host.h"

namespace bench {

// The model in session; a null handle is a bad input, one of no model in session an invalid pointer.
inline ProError Resolve(const void* handle, Model*& model) {
  if (!handle) return PRO_TK_BAD_INPUTS;
  model = TheHost().session.Find(handle);
  return model ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
}

inline bool IsModelType(int type) {
  return type == PRO_MDL_PART || type == PRO_MDL_ASSEMBLY || type == PRO_MDL_DRAWING;
}

}  // namespace bench
