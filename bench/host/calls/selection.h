// Selections: handles on items of models.
#pragma once

#include <ProSection.h>
#include <ProSelection.h>

#include "bench/host/model/section_data.h"

namespace bench {

// A part of an entity of a section, which a selection can name in place of an item.
struct SelectedPart {
  ProSection section = nullptr;
  SectionTarget target;
};

// A new selection of the item, in the ledger in the name of the call that is being made.
ProSelection NewSelection(const ProModelitem& item);
ProSelection NewSelection(const SelectedPart& part);
// The same of an item at the end of a component path.
ProSelection NewSelection(const ProModelitem& item, const ProAsmcomppath& path);

// The item that a selection names; null, and a violation, when it is no live selection. A null selection is
// no violation.
const ProModelitem* SelectedItem(ProSelection selection);

// The component path of a live selection; one without entries for an item of the model itself.
ProAsmcomppath PathSelected(ProSelection selection);

// The same for the part of a section's entity; also null, without a violation, for a selection of an item.
const SelectedPart* PartSelected(ProSelection selection);

}  // namespace bench
