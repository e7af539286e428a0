#include "bench/host/drawing/drawing_template.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <utility>

#include "bench/host/drawing/views.h"
#include "bench/host/host.h"
#include "bench/host/installation.h"
#include "bench/host/model/item_names.h"
#include "bench/host/storage/drawing_json.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/text.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFormat = "creobench drawing template";
constexpr int kFormatVersion = 1;

std::optional<std::wstring> FindFile(std::wstring_view name) {
  std::vector<fs::path> places{WorkingDirectory()};
  if (const fs::path installation = InstallationDirectory(); !installation.empty())
    places.push_back(installation / L"templates");
  for (const fs::path& place : places)
    if (const auto versions = VersionsOf(place.wstring(), name, PRO_MDL_DRAWING); !versions.empty())
      return versions.back().path;
  return std::nullopt;
}

TemplateView ViewFromJson(const Json& json) {
  TemplateView view;
  view.plane = FromUtf8(json.at("plane").get<std::string>());
  view.sheet = json.value("sheet", 1);
  view.at = {NumberFromJson(json.at("at").at(0)), NumberFromJson(json.at("at").at(1))};
  if (const auto scale = json.find("scale"); scale != json.end()) view.scale = NumberFromJson(*scale);
  return view;
}

DrawingTemplate FromText(const std::string& text) {
  const Json json = Json::parse(text);
  if (json.value("format", "") != kFormat || json.value("version", 0) != kFormatVersion)
    throw std::runtime_error("it is no drawing template");
  DrawingTemplate read;
  for (const Json& sheet : json.at("sheets"))
    read.sheets.push_back(SheetFromJson(sheet, static_cast<int>(read.sheets.size()) + 1));
  if (read.sheets.empty()) throw std::runtime_error("it has no sheets");
  for (const Json& view : json.at("views")) read.views.push_back(ViewFromJson(view));
  return read;
}

// The view onto the front of a datum plane, turned as the plane is.
std::optional<Matrix> LookingOnto(const Model& solid, std::wstring_view plane) {
  const auto id = FindByName(solid, PRO_DATUM_PLANE, plane);
  const Feature* owner = id ? solid.OwnerOf(PRO_DATUM_PLANE, *id) : nullptr;
  if (!owner) return std::nullopt;
  const Vector3 normal = owner->plane.Normal();
  Matrix orientation = kNoMove;
  for (int row = 0; row < 3; ++row) {
    orientation[row][0] = owner->plane.x[row];
    orientation[row][1] = owner->plane.y[row];
    orientation[row][2] = normal[row];
  }
  return orientation;
}

// What keeps the view from being made; empty when it was made.
std::string MakeView(Model& drawing, const TemplateView& wanted, Model& solid) {
  const auto orientation = LookingOnto(solid, wanted.plane);
  if (!orientation) return ToUtf8(solid.name) + " has no datum plane " + ToUtf8(wanted.plane);
  AddSolid(drawing, solid);
  DrawingView* view = nullptr;
  const ProError status =
      AddGeneralView(drawing, {&solid, wanted.sheet, wanted.at, wanted.scale, *orientation}, view);
  return status ? "the view of " + ToUtf8(wanted.plane) + " fails with " + std::to_string(status)
                : std::string();
}

}  // namespace

ProError ReadDrawingTemplate(std::wstring_view name, DrawingTemplate& found) {
  const auto path = FindFile(WithoutExtension(name, PRO_MDL_DRAWING));
  if (!path) return PRO_TK_E_NOT_FOUND;
  try {
    const auto text = ReadWholeFile(*path);
    if (!text) throw std::runtime_error("it can't be read");
    found = FromText(*text);
    return PRO_TK_NO_ERROR;
  } catch (const std::exception& failure) {
    Complain("the drawing template " + ToUtf8(*path) + " is refused: " + failure.what());
    return PRO_TK_INVALID_FILE;
  }
}

NewDrawing MakeDrawing(std::wstring name, const DrawingTemplate& from, Model& solid) {
  auto model = std::make_unique<Model>();
  model->type = PRO_MDL_DRAWING;
  model->name = std::move(name);
  model->drawing = std::make_unique<Drawing>();
  model->drawing->sheets = from.sheets;
  NewDrawing made{&TheHost().session.Add(std::move(model)), {}};
  for (const TemplateView& view : from.views)
    if (std::string problem = MakeView(*made.drawing, view, solid); !problem.empty())
      made.problems.push_back(std::move(problem));
  return made;
}

bool HasSolid(const Model& drawing, const Model& solid) {
  const auto& solids = drawing.drawing->solids;
  return std::ranges::find(solids, &solid, &DrawnModel::model) != solids.end();
}

void AddSolid(Model& drawing, Model& solid) {
  if (HasSolid(drawing, solid)) return;
  drawing.drawing->solids.push_back({&solid, solid.name, solid.type});
  drawing.modified = true;
}

}  // namespace bench
