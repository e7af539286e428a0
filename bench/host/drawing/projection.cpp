#include "bench/host/drawing/projection.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "bench/host/features/scene.h"
#include "bench/host/host.h"
#include "bench/host/kernel_link/kernel_answer.h"

namespace bench {
namespace {

using nlohmann::json;

json Question(const DrawingView& view, const std::optional<CutPlane>& cut, bool only_bounds) {
  json question = {{"view", json::array()}, {"only_bounds", only_bounds}};
  for (int row = 0; row < 3; ++row)
    question["view"].push_back(
        {view.orientation[row][0], view.orientation[row][1], view.orientation[row][2]});
  if (cut) question["cut"] = {{"origin", cut->origin}, {"normal", cut->normal}};
  return question;
}

Projection Read(const json& answer, bool only_bounds) {
  Projection projection;
  if (!answer.at("low").is_null())
    projection.bounds = Rectangle{answer.at("low").get<Vector2>(), answer.at("high").get<Vector2>()};
  if (only_bounds) return projection;
  answer.at("visible").get_to(projection.visible);
  answer.at("hidden").get_to(projection.hidden);
  for (const json& region : answer.at("section"))
    projection.section.push_back({IntegerAt(region, "body"), region.at("outer").get<Polyline>(),
                                  region.at("holes").get<std::vector<Polyline>>()});
  return projection;
}

Projection Ask(const Drawing& drawing, const DrawingView& view, const std::optional<CutPlane>& cut,
               bool only_bounds) {
  const Model* solid = drawing.SolidOf(view);
  if (!solid) return {};
  const std::string question = Question(view, cut, only_bounds).dump();
  const auto answer =
      TheHost().kernel.Ask("project", SceneFields(*solid) + "," + question.substr(1, question.size() - 2));
  if (!answer) throw NoProjection("the geometry kernel gives no answer");
  if (answer->contains("refused")) throw NoProjection(answer->value("refused", ""));
  try {
    return Read(*answer, only_bounds);
  } catch (const json::exception& exception) {
    throw NoProjection(std::string("the geometry kernel's answer can't be read: ") + exception.what());
  }
}

}  // namespace

std::optional<CutPlane> CutOf(const Drawing& drawing, const DrawingView& view) {
  if (view.type == ViewType::kDetail) return CutOf(drawing, *drawing.View(view.parent));
  const Model* solid = drawing.SolidOf(view);
  const CrossSection* section = solid ? FindCrossSection(*solid, view.section) : nullptr;
  auto plane = section ? PlaneOfSurface(*solid, section->surface) : std::nullopt;
  if (plane && Dot(plane->normal, view.Axis(2)) < 0) plane->normal = -1 * plane->normal;
  return plane;
}

Projection ProjectionOf(const Drawing& drawing, const DrawingView& view) {
  return Ask(drawing, view, CutOf(drawing, view), false);
}

std::optional<Rectangle> BoundsOf(const Drawing& drawing, const DrawingView& view) {
  return Ask(drawing, view, CutOf(drawing, view), true).bounds;
}

std::optional<Rectangle> UncutBoundsOf(const Drawing& drawing, const DrawingView& view) {
  return Ask(drawing, view, std::nullopt, true).bounds;
}

Rectangle OutlineOf(const Drawing& drawing, const DrawingView& view) {
  const auto box = view.detail ? BoxAround(view.detail->spline) : BoundsOf(drawing, view);
  if (!box) return {view.center, view.center};
  return {drawing.OnSheet(view, box->low), drawing.OnSheet(view, box->high)};
}

}  // namespace bench
