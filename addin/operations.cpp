#include "addin/operations.h"

#include "addin/ops/document/documents.h"
#include "addin/ops/exchange/export.h"
#include "addin/ops/feature/registration.h"
#include "addin/ops/sketch/registration.h"

namespace vek {

CreoMcpProvider BuildProvider() {
  CreoMcpProvider provider;
  document::RegisterDocumentOperations(provider);
  exchange::RegisterExportOperations(provider);
  sketch::RegisterSketchOperations(provider);
  feature::RegisterFeatureOperations(provider);
  provider.FillMissingOperations();
  return provider;
}

}  // namespace vek
