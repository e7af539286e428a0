// The console's command that draws a drawing.
#include "bench/host/console/console.h"
#include "bench/host/host.h"
#include "bench/host/plot/sheet_plot.h"
#include "bench/host/storage/whole_file.h"
#include "bench/host/text.h"

namespace bench {

void PlotCurrentDrawing(ConsoleWords arguments, const ConsoleSay&) {
  const Model* model = TheHost().CurrentModel();
  if (!model || !model->drawing) throw ConsoleError("the current model is no drawing");
  std::string path;
  for (const std::string& word : arguments) path += (path.empty() ? "" : " ") + word;
  if (!WriteWholeFile(FromUtf8(path), PlotSheet(*model)))
    throw ConsoleError("FILE can't be written: " + path);
}

}  // namespace bench
