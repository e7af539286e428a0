// What new drawings are made from: files of the bench's own, as text.
#pragma once

#include <ProMdl.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/host/model/model.h"

namespace bench {

// A view that every drawing of the template has of its model: it looks onto one of the model's datum planes.
struct TemplateView {
  std::wstring plane;
  int sheet = 1;
  Vector2 at{};
  std::optional<double> scale;
};

struct DrawingTemplate {
  std::vector<Sheet> sheets;
  std::vector<TemplateView> views;
};

// The template of that name from its highest version: of the working directory, or else of the
// installation's folder `templates`. -4 when there is none, -16, after a complaint, for a file that is no
// template.
ProError ReadDrawingTemplate(std::wstring_view name, DrawingTemplate& found);

struct NewDrawing {
  Model* drawing = nullptr;
  std::vector<std::string> problems;  // what the template asks for and the model doesn't let be made
};

// A drawing in session with the template's sheets and views. It shows `solid` once a view does. Throws
// nothing; a view that can't be made is a problem.
NewDrawing MakeDrawing(std::wstring name, const DrawingTemplate& from, Model& solid);

// Adds a solid; the drawing's list of them holds each once.
void AddSolid(Model& drawing, Model& solid);
bool HasSolid(const Model& drawing, const Model& solid);

}  // namespace bench
