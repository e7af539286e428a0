// Selections: handles on items of models.
#pragma once

#include <ProSection.h>
#include <ProSelection.h>

#include <array>
#include <optional>

#include "bench/host/model/section_data.h"
#include "bench/host/model/vector3.h"

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

// Ends a selection as ProSelectionFree does. False, and a violation, when it is no live one.
bool FreeSelection(ProSelection selection);

// The item that a selection names; null, and a violation, when it is no live selection. A null selection is
// no violation.
const ProModelitem* SelectedItem(ProSelection selection);

// The component path of a live selection; one without entries for an item of the model itself.
ProAsmcomppath PathSelected(ProSelection selection);

// Where an item was picked.
struct SelectionPlace {
  const void* view = nullptr;                         // a view of a drawing
  std::optional<Vector3> point;                       // on that drawing's sheet
  std::optional<std::array<double, 2>> parameters{};  // of the surface, as callers know them
};
// A new selection of a face that was picked at these parameters.
ProSelection NewSelection(const ProModelitem& item, const ProAsmcomppath& path,
                          const std::array<double, 2>& parameters);
// Of a live selection; without view and point until it is given them.
const SelectionPlace& PlaceSelected(ProSelection selection);

// The same for the part of a section's entity; also null, without a violation, for a selection of an item.
const SelectedPart* PartSelected(ProSelection selection);

}  // namespace bench
