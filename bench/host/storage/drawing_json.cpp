#include "bench/host/storage/drawing_json.h"

#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>

#include "bench/host/model/model.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/text.h"

namespace bench {
namespace {

double PositiveFrom(const Json& json, const char* what) {
  const double number = NumberFromJson(json);
  if (!(number > 0) || !std::isfinite(number)) throw std::runtime_error(std::string(what) + " isn't above 0");
  return number;
}

double FiniteFrom(const Json& json) {
  const double number = NumberFromJson(json);
  if (!std::isfinite(number)) throw std::runtime_error("a place on a drawing is no number");
  return number;
}

Json PointToJson(const Vector2& point) {
  return Json::array({NumberToJson(point[0]), NumberToJson(point[1])});
}

Vector2 PointFromJson(const Json& json) {
  return {FiniteFrom(json.at(0)), FiniteFrom(json.at(1))};
}

Json RotationToJson(const Matrix& matrix) {
  Json rows = Json::array();
  for (int row = 0; row < 3; ++row)
    rows.push_back(
        {NumberToJson(matrix[row][0]), NumberToJson(matrix[row][1]), NumberToJson(matrix[row][2])});
  return rows;
}

Matrix RotationFromJson(const Json& json) {
  Matrix matrix = kNoMove;
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) matrix[row][column] = NumberFromJson(json.at(row).at(column));
  if (!PlaceIn(matrix)) throw std::runtime_error("a view has no possible orientation");
  return matrix;
}

Json DetailToJson(const std::optional<DetailArea>& detail) {
  if (!detail) return nullptr;
  Json spline = Json::array();
  for (const Vector2& point : detail->spline) spline.push_back(PointToJson(point));
  return {{"point", PointToJson(detail->point)},
          {"spline", std::move(spline)},
          {"radius", NumberToJson(detail->radius)}};
}

std::optional<DetailArea> DetailFromJson(const Json& json) {
  if (json.is_null()) return std::nullopt;
  DetailArea area;
  area.point = PointFromJson(json.at("point"));
  for (const Json& point : json.at("spline")) area.spline.push_back(PointFromJson(point));
  if (area.spline.size() < 3) throw std::runtime_error("a detail has no border");
  area.radius = PositiveFrom(json.at("radius"), "a detail's radius");
  return area;
}

ViewType TypeFromJson(const Json& json) {
  const auto type = static_cast<ViewType>(json.get<int>());
  if (type != ViewType::kGeneral && type != ViewType::kProjected && type != ViewType::kDetail)
    throw std::runtime_error("it has a view of an unknown type");
  return type;
}

Json SheetToJson(const Sheet& sheet) {
  return {{"size", ToUtf8(sheet.size)},
          {"width", NumberToJson(sheet.width)},
          {"height", NumberToJson(sheet.height)},
          {"border", NumberToJson(sheet.border)},
          {"scale", NumberToJson(sheet.scale)}};
}

Json ViewToJson(const DrawingView& view) {
  return {{"id", view.id},
          {"name", ToUtf8(view.name)},
          {"type", static_cast<int>(view.type)},
          {"sheet", view.sheet},
          {"solid", view.solid},
          {"parent", view.parent},
          {"scale", view.scale ? NumberToJson(*view.scale) : Json()},
          {"orientation", RotationToJson(view.orientation)},
          {"center", PointToJson(view.center)},
          {"anchor", PointToJson(view.anchor)},
          {"section", ToUtf8(view.section)},
          {"section_parent", view.section_parent},
          {"detail", DetailToJson(view.detail)},
          {"shown_dimensions", view.shown_dimensions}};
}

// What a view refers to must stand before it.
std::unique_ptr<DrawingView> ViewFromJson(const Json& json, const Drawing& drawing) {
  auto view = std::make_unique<DrawingView>();
  view->id = json.at("id").get<int>();
  view->name = FromUtf8(json.at("name").get<std::string>());
  view->type = TypeFromJson(json.at("type"));
  view->sheet = json.at("sheet").get<int>();
  view->solid = json.at("solid").get<int>();
  view->parent = json.at("parent").get<int>();
  if (const Json& scale = json.at("scale"); !scale.is_null()) view->scale = PositiveFrom(scale, "a scale");
  view->orientation = RotationFromJson(json.at("orientation"));
  view->center = PointFromJson(json.at("center"));
  view->anchor = PointFromJson(json.at("anchor"));
  view->section = FromUtf8(json.at("section").get<std::string>());
  view->section_parent = json.at("section_parent").get<int>();
  view->detail = DetailFromJson(json.at("detail"));
  view->shown_dimensions = json.at("shown_dimensions").get<std::vector<int>>();

  const auto within = [](int number, std::size_t count) {
    return number >= 0 && static_cast<std::size_t>(number) < count;
  };
  const bool has_place =
      within(view->sheet - 1, drawing.sheets.size()) && within(view->solid, drawing.solids.size());
  const bool has_parent =
      view->type == ViewType::kGeneral ? view->parent == 0 : drawing.View(view->parent) != nullptr;
  const bool has_border = (view->type == ViewType::kDetail) == view->detail.has_value();
  if (view->id < 1 || view->id >= drawing.next_view || drawing.View(view->id) || !has_place || !has_parent ||
      !has_border)
    throw std::runtime_error("view " + std::to_string(view->id) + " is impossible");
  return view;
}

DrawnModel DrawnModelFromJson(const Json& json) {
  const auto word = json.at("type").get<std::string>();
  if (word != Word(PRO_MDL_PART) && word != Word(PRO_MDL_ASSEMBLY))
    throw std::runtime_error("it shows what is neither part nor assembly");
  return {nullptr, FromUtf8(json.at("model").get<std::string>()),
          word == Word(PRO_MDL_PART) ? PRO_MDL_PART : PRO_MDL_ASSEMBLY};
}

}  // namespace

Sheet SheetFromJson(const Json& json, int number) {
  Sheet sheet;
  sheet.number = number;
  sheet.size = FromUtf8(json.at("size").get<std::string>());
  sheet.width = PositiveFrom(json.at("width"), "a sheet's width");
  sheet.height = PositiveFrom(json.at("height"), "a sheet's height");
  sheet.border = FiniteFrom(json.at("border"));
  sheet.scale = PositiveFrom(json.at("scale"), "a sheet's scale");
  if (sheet.border < 0 || 2 * sheet.border >= std::min(sheet.width, sheet.height))
    throw std::runtime_error("a sheet's border leaves no room");
  return sheet;
}

Json DrawingToJson(const Drawing& drawing) {
  Json sheets = Json::array(), solids = Json::array(), views = Json::array();
  for (const Sheet& sheet : drawing.sheets) sheets.push_back(SheetToJson(sheet));
  for (const DrawnModel& solid : drawing.solids)
    solids.push_back({{"model", ToUtf8(NameOfDrawn(solid))}, {"type", Word(solid.type)}});
  for (const auto& view : drawing.views) views.push_back(ViewToJson(*view));
  return {{"sheets", std::move(sheets)},
          {"current_sheet", drawing.current_sheet},
          {"solids", std::move(solids)},
          {"next_view", drawing.next_view},
          {"views", std::move(views)}};
}

std::unique_ptr<Drawing> DrawingFromJson(const Json& json) {
  auto drawing = std::make_unique<Drawing>();
  for (const Json& sheet : json.at("sheets"))
    drawing->sheets.push_back(SheetFromJson(sheet, static_cast<int>(drawing->sheets.size()) + 1));
  drawing->current_sheet = json.at("current_sheet").get<int>();
  if (drawing->current_sheet < 1 || static_cast<std::size_t>(drawing->current_sheet) > drawing->sheets.size())
    throw std::runtime_error("it has no such current sheet");
  for (const Json& solid : json.at("solids")) drawing->solids.push_back(DrawnModelFromJson(solid));
  drawing->next_view = json.at("next_view").get<int>();
  for (const Json& view : json.at("views")) drawing->views.push_back(ViewFromJson(view, *drawing));
  return drawing;
}

Json CrossSectionToJson(const CrossSection& section) {
  return {{"id", section.id}, {"name", ToUtf8(section.name)}, {"surface", section.surface}};
}

CrossSection CrossSectionFromJson(const Json& json) {
  return {json.at("id").get<int>(), FromUtf8(json.at("name").get<std::string>()),
          json.at("surface").get<int>()};
}

}  // namespace bench
