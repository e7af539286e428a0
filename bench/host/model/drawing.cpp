#include "bench/host/model/drawing.h"

#include <algorithm>

#include "bench/host/host.h"
#include "bench/host/model/component.h"

namespace bench {
namespace {

// The first drawing in session of which that holds, or null.
template <typename Holds>
Model* FindDrawing(Holds&& holds) {
  for (Model* model : TheHost().session.All())
    if (model->drawing && holds(*model->drawing)) return model;
  return nullptr;
}

}  // namespace

std::wstring NameOfDrawn(const DrawnModel& drawn) {
  const Model* model = drawn.model ? TheHost().session.Find(drawn.model) : nullptr;
  return model ? model->name : drawn.name;
}

Rectangle BoxAround(const std::vector<Vector2>& points) {
  Rectangle box{points.front(), points.front()};
  for (const Vector2& point : points)
    for (int i = 0; i < 2; ++i) {
      box.low[i] = std::min(box.low[i], point[i]);
      box.high[i] = std::max(box.high[i], point[i]);
    }
  return box;
}

Vector3 DrawingView::Axis(int column) const {
  return {orientation[0][column], orientation[1][column], orientation[2][column]};
}

Vector2 DrawingView::Projected(const Vector3& point) const {
  return {Dot(Axis(0), point), Dot(Axis(1), point)};
}

DrawingView* Drawing::View(int id) const {
  const auto found = std::ranges::find(views, id, &DrawingView::id);
  return found == views.end() ? nullptr : found->get();
}

DrawingView* Drawing::ViewOf(const void* handle) const {
  const auto found = std::ranges::find(views, handle, &DrawingView::handle);
  return found == views.end() ? nullptr : found->get();
}

const Sheet& Drawing::SheetOf(const DrawingView& view) const {
  return sheets.at(view.sheet - 1);
}

double Drawing::ScaleOf(const DrawingView& view) const {
  const DrawingView* parent = view.type == ViewType::kProjected ? View(view.parent) : nullptr;
  return parent ? ScaleOf(*parent) : view.scale.value_or(SheetOf(view).scale);
}

Model* Drawing::SolidOf(const DrawingView& view) const {
  Model* model = solids.at(view.solid).model;
  return model ? TheHost().session.Find(model) : nullptr;
}

Vector2 Drawing::OnSheet(const DrawingView& view, const Vector2& projected) const {
  const double scale = ScaleOf(view);
  return {view.center[0] + scale * (projected[0] - view.anchor[0]),
          view.center[1] + scale * (projected[1] - view.anchor[1])};
}

Vector2 Drawing::OffSheet(const DrawingView& view, const Vector2& on_sheet) const {
  const double scale = ScaleOf(view);
  return {view.anchor[0] + (on_sheet[0] - view.center[0]) / scale,
          view.anchor[1] + (on_sheet[1] - view.center[1]) / scale};
}

Model* DrawingOf(const Model& model) {
  return FindDrawing([&](const Drawing& drawing) {
    return std::ranges::find(drawing.solids, &model, &DrawnModel::model) != drawing.solids.end();
  });
}

std::vector<Model*> ModelsDrawnIn(const Model& drawing) {
  std::vector<Model*> models;
  if (!drawing.drawing) return models;
  const auto add = [&](Model* model) {
    if (std::ranges::find(models, model) == models.end()) models.push_back(model);
  };
  for (const DrawnModel& drawn : drawing.drawing->solids) {
    Model* model = drawn.model ? TheHost().session.Find(drawn.model) : nullptr;
    if (!model) continue;
    std::ranges::for_each(ModelsPlacedIn(*model), add);
    add(model);
  }
  return models;
}

Model* DrawingWithView(const void* view) {
  return FindDrawing([&](const Drawing& drawing) { return drawing.ViewOf(view) != nullptr; });
}

}  // namespace bench
