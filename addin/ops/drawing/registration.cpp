#include "addin/ops/drawing/registration.h"

#include "addin/ops/drawing/base_view.h"
#include "addin/ops/drawing/detail_view.h"
#include "addin/ops/drawing/dimensions.h"
#include "addin/ops/drawing/documents.h"
#include "addin/ops/drawing/projected_view.h"
#include "addin/ops/drawing/section_view.h"
#include "addin/ops/drawing/view_listing.h"

namespace vek::drawing {

void RegisterDrawingOperations(CreoMcpProvider& provider) {
  RegisterDocumentOperations(provider);
  RegisterBaseViewOperation(provider);
  RegisterProjectedViewOperation(provider);
  RegisterSectionViewOperation(provider);
  RegisterDetailViewOperation(provider);
  RegisterDimensionOperation(provider);
  RegisterViewListingOperation(provider);
}

}  // namespace vek::drawing
