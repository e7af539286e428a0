// Selections: handles on items of models.
#pragma once

#include <ProSelection.h>

namespace bench {

// A new selection of the item, in the ledger in the name of the call that is being made.
ProSelection NewSelection(const ProModelitem& item);

// The item that a selection names; null, and a violation, when it is no live selection. A null selection is
// no violation.
const ProModelitem* SelectedItem(ProSelection selection);

}  // namespace bench
