#include "addin/operations.h"

#include "addin/ops/assembly/registration.h"
#include "addin/ops/document/documents.h"
#include "addin/ops/document/undo_redo.h"
#include "addin/ops/drawing/registration.h"
#include "addin/ops/exchange/analysis.h"
#include "addin/ops/exchange/export.h"
#include "addin/ops/exchange/screenshot.h"
#include "addin/ops/exchange/step_import.h"
#include "addin/ops/feature/registration.h"
#include "addin/ops/macros/macros.h"
#include "addin/ops/parameters/parameters.h"
#include "addin/ops/sketch/registration.h"

namespace vek {

CreoMcpProvider BuildProvider() {
  CreoMcpProvider provider;
  document::RegisterDocumentOperations(provider);
  document::RegisterUndoRedoOperations(provider);
  exchange::RegisterExportOperations(provider);
  exchange::RegisterScreenshotOperations(provider);
  exchange::RegisterStepImportOperations(provider);
  parameters::RegisterParameterOperations(provider);
  sketch::RegisterSketchOperations(provider);
  feature::RegisterFeatureOperations(provider);
  assembly::RegisterAssemblyOperations(provider);
  drawing::RegisterDrawingOperations(provider);
  exchange::RegisterAnalysisOperations(provider);
  macros::RegisterMacroOperations(provider);
  provider.FillMissingOperations();
  return provider;
}

}  // namespace vek
