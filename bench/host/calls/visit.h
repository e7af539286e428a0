// The rules that all visits follow.
#pragma once

#include <ProObjects.h>

#include <vector>

#include "bench/host/model/item_lookup.h"

namespace bench {

// Calls `action` for each item that `filter`, when there is one, doesn't answer with PRO_TK_CONTINUE; the
// filter's answer is handed to the action. The action's first answer other than 0 ends the visit and is
// returned. An item that is not there any more, since an earlier action has deleted it, is left out. Nothing
// to visit is 0.
template <typename Item, typename IsThere, typename Action, typename Filter>
ProError VisitEach(const std::vector<Item>& items, IsThere&& is_there, Action action, Filter filter,
                   ProAppData data) {
  for (const Item& item : items) {
    if (!is_there(item)) continue;
    const ProError filtered = filter ? filter(item, data) : PRO_TK_NO_ERROR;
    if (filtered == PRO_TK_CONTINUE) continue;
    if (const ProError answer = action(item, filtered, data)) return answer;
  }
  return PRO_TK_NO_ERROR;
}

// The same for items that visitors get by their address.
inline ProError Visit(std::vector<ProModelitem> items,
                      ProError (*action)(ProModelitem*, ProError, ProAppData),
                      ProError (*filter)(ProModelitem*, ProAppData), ProAppData data) {
  std::vector<ProModelitem*> addresses;
  for (ProModelitem& item : items) addresses.push_back(&item);
  return VisitEach(
      addresses, [](const ProModelitem* item) { return ItemExists(*item); }, action, filter, data);
}

}  // namespace bench
