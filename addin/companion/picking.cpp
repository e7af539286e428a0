#include "addin/companion/picking.h"

#include <ProSelbuffer.h>
#include <ProSelection.h>

#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek {

ProError SelectionsInBuffer(OwnedSelections& selections, int& count) {
  count = 0;
  if (const ProError status = ProSelbufferSelectionsGet(selections.out()); status != PRO_TK_NO_ERROR) {
    LogShell(L"Failed to get current selections from buffer");
    return status;
  }
  if (ProArraySizeGet(selections.get(), &count) != PRO_TK_NO_ERROR) count = 0;
  LogShell(Format(L"Found %d objects in current selection buffer", count));
  if (count == 0) LogShell(L"No objects currently selected");
  return PRO_TK_NO_ERROR;
}

ProSelection FirstFace(const OwnedSelections& selections, int count, ProModelitem& item) {
  for (int i = 0; i < count; ++i) {
    const ProSelection selection = selections.get()[i];
    item = {};
    if (ProSelectionModelitemGet(selection, &item) != PRO_TK_NO_ERROR) continue;
    LogShell(Format(L"Selected Item type is %d", item.type));
    if (item.type == kSurfaceItem || item.type == kQuiltItem) return selection;
  }
  LogShell(L"No face-type objects found in current selections");
  return nullptr;
}

ProError AskForFace(OwnedSelections& selections, int& count) {
  // The toolkit takes the list as writable text.
  char kinds[] = "datum,surface,sldface,qltface,csys";
  count = 0;
  const ProError status = ProSelect(kinds, 1, nullptr, nullptr, nullptr, nullptr, selections.out(), &count);
  LogShell(Format(L"Selected %d Objects", count));
  return status;
}

}  // namespace vek
