// The rules that all visits follow.
#pragma once

#include <ProObjects.h>

#include <vector>

#include "bench/host/model/item_lookup.h"

namespace bench {

// Calls `action` for each item that `filter`, when there is one, doesn't answer with PRO_TK_CONTINUE; the
// filter's answer is handed to the action. The action's first answer other than 0 ends the visit and is
// returned. An item that an earlier action has deleted is left out. Nothing to visit is 0.
inline ProError Visit(std::vector<ProModelitem> items,
                      ProError (*action)(ProModelitem*, ProError, ProAppData),
                      ProError (*filter)(ProModelitem*, ProAppData), ProAppData data) {
  for (ProModelitem& item : items) {
    if (!ItemExists(item)) continue;
    const ProError filtered = filter ? filter(&item, data) : PRO_TK_NO_ERROR;
    if (filtered == PRO_TK_CONTINUE) continue;
    if (const ProError answer = action(&item, filtered, data)) return answer;
  }
  return PRO_TK_NO_ERROR;
}

}  // namespace bench
