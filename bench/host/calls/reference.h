// References: what element trees hold of items.
#pragma once

#include <ProReference.h>

#include <optional>

namespace bench {

// A new reference to the item, in the ledger in the name of the call that is being made.
ProReference NewReference(const ProModelitem& item);

// What a reference refers to; nothing when it was never set. A handle that is no live reference is a
// violation and gives PRO_TK_INVALID_PTR as the status.
struct ReferredItem {
  ProError status = PRO_TK_NO_ERROR;
  std::optional<ProModelitem> item;
};
ReferredItem ItemOf(ProReference reference);

}  // namespace bench
