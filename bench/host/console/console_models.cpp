// The console's commands on models.
#include <ProParameter.h>

#include <algorithm>
#include <charconv>
#include <utility>

#include "bench/host/console/console.h"
#include "bench/host/features/regeneration.h"
#include "bench/host/host.h"
#include "bench/host/model/component.h"
#include "bench/host/model/extent.h"
#include "bench/host/model/surface_types.h"
#include "bench/host/model/units.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kDigitsShown = 9;

std::string Show(double number) {
  char text[40];
  const auto end =
      std::to_chars(text, text + sizeof text, number, std::chars_format::general, kDigitsShown).ptr;
  return {text, end};
}

std::string Show(const Vector3& vector, const char* separator) {
  return Show(vector[0]) + separator + Show(vector[1]) + separator + Show(vector[2]);
}

Model& RequireCurrentModel() {
  Model* model = TheHost().CurrentModel();
  if (!model) throw ConsoleError("no model is current");
  return *model;
}

void ShowModels(ConsoleWords, const ConsoleSay& say) {
  const Host& host = TheHost();
  for (const Model* model : host.session.All()) {
    std::string line = std::string(Word(model->type)) + " " + ToUtf8(model->name);
    if (const auto window = host.windows.WindowOf(*model)) line += ", window " + std::to_string(*window);
    if (model == host.windows.CurrentModel()) line += ", current";
    if (model->modified) line += ", modified";
    const Extent extent = ExtentOf(*model);
    if (extent.weight) line += ", volume " + Show(extent.weight->volume) + " mm³";
    if (const auto& box = extent.outline) {
      const Vector3 size{box->high[0] - box->low[0], box->high[1] - box->low[1], box->high[2] - box->low[2]};
      line += ", size " + Show(size, " x ") + " mm";
    }
    say(line);
  }
}

std::string StateOf(const Feature& feature) {
  if (feature.incomplete) return "incomplete";
  switch (feature.status) {
    case PRO_FEAT_ACTIVE:
      return "active";
    case PRO_FEAT_INACTIVE:
      return "inactive";
    case PRO_FEAT_SUPPRESSED:
      return "suppressed";
    case PRO_FEAT_UNREGENERATED:
      return "not regenerated";
  }
  return "status " + std::to_string(feature.status);
}

void ShowTree(ConsoleWords, const ConsoleSay& say) {
  for (const auto& feature : RequireCurrentModel().features) {
    const std::string name = feature->name.empty() ? "unnamed" : '"' + ToUtf8(feature->name) + '"';
    say(std::to_string(feature->id) + ", type " + std::to_string(feature->type) + ", " + name + ", " +
        StateOf(*feature));
  }
}

// A line for each face of the model itself, in the order of the ids.
std::vector<std::pair<int, std::string>> FaceLines(const Model& model) {
  std::vector<std::pair<int, std::string>> lines;
  for (const FaceInfo& face : model.topology.faces) {
    const auto id = model.ids_of_keys.find(face.key);
    if (id == model.ids_of_keys.end()) continue;
    lines.emplace_back(id->second, std::to_string(id->second) + ", type " +
                                       std::to_string(SurfaceTypeNumber(face.type)) + ", area " +
                                       Show(face.area) + " mm², at " + Show(face.point, " ") +
                                       " mm, feature " + std::to_string(face.feature));
  }
  std::ranges::sort(lines);
  return lines;
}

void ShowFaces(ConsoleWords, const ConsoleSay& say) {
  const Model& model = RequireCurrentModel();
  for (const Feature* feature : ActiveComponents(model))
    for (const auto& [id, line] : FaceLines(*PlacedModel(*feature->component)))
      say(std::to_string(feature->id) + "/" + line);
  for (const auto& [id, line] : FaceLines(model)) say(line);
}

// A unit that is tried on a model, and set back unless it is kept.
class TriedUnit {
 public:
  TriedUnit(Model& model, LengthUnit unit)
      : model_(&model), before_(std::exchange(model.length_unit, unit)) {}
  TriedUnit(const TriedUnit&) = delete;
  TriedUnit& operator=(const TriedUnit&) = delete;
  ~TriedUnit() {
    if (model_) model_->length_unit = before_;
  }
  void Keep() { model_ = nullptr; }

 private:
  Model* model_;
  LengthUnit before_;
};

void SetUnits(ConsoleWords arguments, const ConsoleSay&) {
  Model& model = RequireCurrentModel();
  const auto unit = LengthUnitOf(arguments[0]);
  if (!unit) throw ConsoleError("the units are mm, inch and m, not " + arguments[0]);
  if (model.type == PRO_MDL_DRAWING) throw ConsoleError("a drawing has no unit system");
  TriedUnit tried(model, *unit);
  // The numbers stay as they are, so the geometry they stand for grows or shrinks.
  if (const ProError status = model.type == PRO_MDL_PART ? Regenerate(model) : PRO_TK_NO_ERROR)
    throw ConsoleError("the model does not regenerate in these units (status " + std::to_string(status) +
                       ")");
  tried.Keep();
  model.modified = true;
}

// Reads the value of a new parameter; `type` is a word of the command's.
std::variant<double, std::wstring, int, bool> ReadParameterValue(const std::string& type,
                                                                 const std::string& text) {
  const char* const end = text.data() + text.size();
  const auto read_number = [&](auto number) {
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc{} || stop != end) throw ConsoleError("VALUE is no " + type + ": " + text);
    return number;
  };
  if (type == "double") return read_number(0.0);
  if (type == "integer") return read_number(0);
  if (type == "string") return FromUtf8(text);
  if (type != "bool") throw ConsoleError("the types are double, string, integer and bool, not " + type);
  if (text != "true" && text != "false") throw ConsoleError("VALUE is neither true nor false: " + text);
  return text == "true";
}

void SetParameter(ConsoleWords arguments, const ConsoleSay&) {
  Model& model = RequireCurrentModel();
  Parameter parameter{FromUtf8(arguments[0]), ReadParameterValue(arguments[1], arguments[2]), {}, false};
  if (parameter.name.size() >= PRO_NAME_SIZE) throw ConsoleError("NAME is too long");
  const auto* text = std::get_if<std::wstring>(&parameter.value);
  if (text && text->size() >= PRO_LINE_SIZE) throw ConsoleError("VALUE is too long");
  for (const std::string& word : arguments.subspan(3)) {
    if (word == "locked") {
      parameter.locked = true;
      continue;
    }
    const Unit* unit = FindUnit(FromUtf8(word));
    if (!unit || !std::holds_alternative<double>(parameter.value))
      throw ConsoleError("there is no unit " + word + " for that");
    parameter.unit = unit->name;
  }
  std::erase_if(model.parameters,
                [&](const Parameter& each) { return EqualsIgnoringCase(each.name, parameter.name); });
  model.parameters.push_back(std::move(parameter));
  model.modified = true;
}

void DriveByRelation(ConsoleWords arguments, const ConsoleSay&) {
  Model& model = RequireCurrentModel();
  const std::wstring symbol = FromUtf8(arguments[0]);
  const auto dimension = std::ranges::find_if(
      model.dimensions, [&](const Dimension& each) { return EqualsIgnoringCase(each.Symbol(), symbol); });
  if (dimension == model.dimensions.end()) throw ConsoleError("there is no dimension " + arguments[0]);
  dimension->relation_driven = true;
  model.modified = true;
}

constexpr ConsoleCommand kModelCommands[] = {
    {"models", "the models in session, with their windows, and the solids' volume and size", ShowModels},
    {"tree", "the features of the current model: id, type, name, state", ShowTree},
    {"faces", "the faces of the current model: id, surface type, area, a point, the feature's id", ShowFaces},
    {"units mm|inch|m", "gives the current model that unit system; its numbers stay as they are", SetUnits, 1,
     1},
    {"parameter NAME double|string|integer|bool VALUE [UNIT] [locked]",
     "adds a parameter to the current model, or sets it", SetParameter, 3, 5},
    {"relation SYMBOL", "makes that dimension of the current model relation-driven", DriveByRelation, 1, 1},
};

}  // namespace

std::span<const ConsoleCommand> ModelCommands() {
  return kModelCommands;
}

}  // namespace bench
