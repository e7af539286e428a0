#include "addin/host/references.h"

namespace vek {

ProError MakeReference(const ProModelitem& item, OwnedReference& reference) {
  ProError status = ProReferenceAlloc(reference.out());
  if (status != PRO_TK_NO_ERROR) return status;
  ProModelitem target = item;
  status = ProReferenceSet(reference.get(), nullptr, &target);
  if (status != PRO_TK_NO_ERROR) reference.reset();
  return status;
}

}  // namespace vek
