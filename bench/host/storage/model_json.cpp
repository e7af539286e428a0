#include "bench/host/storage/model_json.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>
#include <utility>

#include "bench/host/host.h"
#include "bench/host/model/units.h"
#include "bench/host/storage/drawing_json.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/section_json.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr const char* kFormat = "creobench model";
constexpr int kFormatVersion = 1;
// No recipe of a feature is nearly as deep; a damaged file may be.
constexpr int kDeepestTree = 64;

template <typename... Visitors>
struct Overloaded : Visitors... {
  using Visitors::operator()...;
};

std::optional<ProMdlType> TypeOfWord(std::string_view word) {
  for (const ProMdlType type : {PRO_MDL_PART, PRO_MDL_ASSEMBLY, PRO_MDL_DRAWING})
    if (word == Word(type)) return type;
  return std::nullopt;
}

Json VectorToJson(const Vector3& vector) {
  return Json::array({NumberToJson(vector[0]), NumberToJson(vector[1]), NumberToJson(vector[2])});
}

Vector3 VectorFromJson(const Json& json) {
  return {NumberFromJson(json.at(0)), NumberFromJson(json.at(1)), NumberFromJson(json.at(2))};
}

Json ReferencesToJson(const std::vector<ItemReference>& references, const Model& model) {
  Json list = Json::array();
  for (const ItemReference& reference : references) {
    Json& json = list.emplace_back(Json{{"type", static_cast<int>(reference.type)},
                                        {"id", reference.id},
                                        {"owned", reference.owner != nullptr}});
    if (!reference.owner || reference.owner == &model) continue;
    const Model* owner = TheHost().session.Find(reference.owner);
    if (!owner) throw std::runtime_error("a feature refers to a model that is gone");
    json["model"] = ToUtf8(owner->name);
    json["model_type"] = Word(owner->type);
  }
  return list;
}

// The model that a reference names, if it is in session; without a name the reference is to the model itself.
ProMdl OwnerFromJson(const Json& reference, Model& model) {
  if (!reference.contains("model")) return &model;
  const auto type = TypeOfWord(reference.at("model_type").get<std::string>());
  if (!type) throw std::runtime_error("a reference names no model");
  return TheHost().session.FindByName(FromUtf8(reference.at("model").get<std::string>()), *type);
}

std::vector<ItemReference> ReferencesFromJson(const Json& json, Model& model) {
  std::vector<ItemReference> references;
  for (const Json& each : json)
    references.push_back({static_cast<ProType>(each.at("type").get<int>()), each.at("id").get<int>(),
                          each.at("owned").get<bool>() ? OwnerFromJson(each, model) : nullptr});
  return references;
}

Json CollectionToJson(const Collection& collection, const Model& model) {
  Json instructions = Json::array();
  for (const CollectionInstruction& instruction : collection.instructions)
    instructions.push_back({{"type", instruction.type},
                            {"include", instruction.include},
                            {"items", ReferencesToJson(instruction.items, model)}});
  return {{"of_surfaces", collection.of_surfaces}, {"instructions", std::move(instructions)}};
}

Collection CollectionFromJson(const Json& json, Model& model) {
  Collection collection{.of_surfaces = json.at("of_surfaces").get<bool>(), .instructions = {}};
  for (const Json& each : json.at("instructions"))
    collection.instructions.push_back({each.at("type").get<int>(), each.at("include").get<bool>(),
                                       ReferencesFromJson(each.at("items"), model)});
  return collection;
}

Json MatrixToJson(const Matrix& matrix) {
  Json rows = Json::array();
  for (const auto& row : matrix) {
    Json& numbers = rows.emplace_back(Json::array());
    for (const double number : row) numbers.push_back(NumberToJson(number));
  }
  return rows;
}

Matrix MatrixFromJson(const Json& json) {
  Matrix matrix{};
  for (std::size_t row = 0; row < matrix.size(); ++row)
    for (std::size_t column = 0; column < matrix[row].size(); ++column)
      matrix[row][column] = NumberFromJson(json.at(row).at(column));
  return matrix;
}

// A tree's section is mostly the feature's own, and must stay one and the same.
Json TreeToJson(const ElementNode& node, const Feature& feature, const Model& model) {
  Json json = {{"id", node.id}};
  std::visit(Overloaded{[](std::monostate) {}, [&](int value) { json["integer"] = value; },
                        [&](double value) { json["number"] = NumberToJson(value); },
                        [&](const std::wstring& value) { json["text"] = ToUtf8(value); },
                        [&](const std::vector<ItemReference>& value) {
                          json["references"] = ReferencesToJson(value, model);
                        },
                        [&](const Collection& value) { json["collection"] = CollectionToJson(value, model); },
                        [&](const Matrix& value) { json["matrix"] = MatrixToJson(value); },
                        [&](const std::shared_ptr<SectionData>& value) {
                          if (value && value == feature.section)
                            json["own_section"] = true;
                          else if (value)
                            json["section"] = SectionToJson(*value);
                        }},
             node.value);
  if (!node.children.empty()) {
    Json& children = json["children"] = Json::array();
    for (const auto& child : node.children) children.push_back(TreeToJson(*child, feature, model));
  }
  return json;
}

std::unique_ptr<ElementNode> TreeFromJson(const Json& json, const Feature& feature, Model& model, int depth) {
  if (depth > kDeepestTree) throw std::runtime_error("an element tree is too deep");
  auto node = std::make_unique<ElementNode>();
  node->id = json.at("id").get<int>();
  if (json.contains("integer")) node->value = json["integer"].get<int>();
  if (json.contains("number")) node->value = NumberFromJson(json["number"]);
  if (json.contains("text")) node->value = FromUtf8(json["text"].get<std::string>());
  if (json.contains("references")) node->value = ReferencesFromJson(json["references"], model);
  if (json.contains("collection")) node->value = CollectionFromJson(json["collection"], model);
  if (json.contains("matrix")) node->value = MatrixFromJson(json["matrix"]);
  if (json.contains("own_section")) node->value = feature.section;
  if (json.contains("section")) node->value = SectionFromJson(json["section"]);
  if (json.contains("children"))
    for (const Json& child : json["children"])
      node->children.push_back(TreeFromJson(child, feature, model, depth + 1));
  return node;
}

Json PlacedItemToJson(const std::optional<PlacedItem>& item) {
  if (!item) return nullptr;
  return {{"path", item->path}, {"type", static_cast<int>(item->type)}, {"id", item->id}};
}

std::optional<PlacedItem> PlacedItemFromJson(const Json& json) {
  if (json.is_null()) return std::nullopt;
  PlacedItem item{json.at("path").get<std::vector<int>>(), static_cast<ProType>(json.at("type").get<int>()),
                  json.at("id").get<int>()};
  if (item.path.size() > PRO_MAX_ASSEM_LEVEL) throw std::runtime_error("a component path is too deep");
  return item;
}

Json ComponentToJson(const Component& component) {
  Json constraints = Json::array();
  for (const ComponentConstraint& constraint : component.constraints)
    constraints.push_back({{"type", constraint.type},
                           {"on_assembly", PlacedItemToJson(constraint.on_assembly)},
                           {"on_component", PlacedItemToJson(constraint.on_component)},
                           {"offset", constraint.offset ? NumberToJson(*constraint.offset) : Json()}});
  return {{"model", ToUtf8(NameOfPlaced(component))},
          {"type", Word(component.type)},
          {"place", MatrixToJson(component.place)},
          {"placed", component.placed},
          {"constraints", std::move(constraints)}};
}

std::unique_ptr<Component> ComponentFromJson(const Json& json) {
  auto component = std::make_unique<Component>();
  component->name = FromUtf8(json.at("model").get<std::string>());
  const auto type = TypeOfWord(json.at("type").get<std::string>());
  if (!type || *type == PRO_MDL_DRAWING) throw std::runtime_error("a component is neither part nor assembly");
  component->type = *type;
  const auto place = PlaceIn(MatrixFromJson(json.at("place")));
  if (!place) throw std::runtime_error("a component has no possible place");
  component->place = *place;
  component->placed = json.at("placed").get<bool>();
  for (const Json& each : json.at("constraints")) {
    ComponentConstraint& constraint = component->constraints.emplace_back();
    constraint.type = each.at("type").get<int>();
    constraint.on_assembly = PlacedItemFromJson(each.at("on_assembly"));
    constraint.on_component = PlacedItemFromJson(each.at("on_component"));
    if (const Json& offset = each.at("offset"); !offset.is_null()) constraint.offset = NumberFromJson(offset);
  }
  return component;
}

Json FeatureToJson(const Feature& feature, const Model& model) {
  Json items = Json::array();
  for (const GeometryItem& item : feature.items)
    items.push_back({{"type", static_cast<int>(item.type)},
                     {"id", item.id},
                     {"key", item.key},
                     {"alive", item.alive},
                     {"name", ToUtf8(item.name)}});
  return {{"id", feature.id},
          {"type", feature.type},
          {"name", ToUtf8(feature.name)},
          {"status", static_cast<int>(feature.status)},
          {"incomplete", feature.incomplete},
          {"parents", feature.parents},
          {"members", feature.members},
          {"plane",
           {{"origin", VectorToJson(feature.plane.origin)},
            {"x", VectorToJson(feature.plane.x)},
            {"y", VectorToJson(feature.plane.y)}}},
          {"section", feature.section ? SectionToJson(*feature.section) : Json()},
          {"tree", feature.tree ? TreeToJson(*feature.tree, feature, model) : Json()},
          {"setup", feature.setup ? TreeToJson(*feature.setup, feature, model) : Json()},
          {"sketch", feature.sketch},
          {"imported", feature.imported ? Json(*feature.imported) : Json()},
          {"items", std::move(items)},
          {"component", feature.component ? ComponentToJson(*feature.component) : Json()}};
}

std::unique_ptr<Feature> FeatureFromJson(const Json& json, Model& model) {
  auto feature = std::make_unique<Feature>();
  feature->id = json.at("id").get<int>();
  feature->type = json.at("type").get<int>();
  feature->name = FromUtf8(json.at("name").get<std::string>());
  feature->status = static_cast<ProFeatStatus>(json.at("status").get<int>());
  feature->incomplete = json.at("incomplete").get<bool>();
  feature->parents = json.at("parents").get<std::vector<int>>();
  feature->members = json.at("members").get<std::vector<int>>();
  const Json& plane = json.at("plane");
  feature->plane = {VectorFromJson(plane.at("origin")), VectorFromJson(plane.at("x")),
                    VectorFromJson(plane.at("y"))};
  if (const Json& section = json.at("section"); !section.is_null())
    feature->section = SectionFromJson(section);
  if (const Json& tree = json.at("tree"); !tree.is_null())
    feature->tree = TreeFromJson(tree, *feature, model, 0);
  if (const Json& setup = json.at("setup"); !setup.is_null())
    feature->setup = TreeFromJson(setup, *feature, model, 0);
  feature->sketch = json.at("sketch").get<int>();
  for (const Json& item : json.at("items"))
    feature->items.push_back({static_cast<ProType>(item.at("type").get<int>()), item.at("id").get<int>(),
                              item.at("key").get<std::string>(), item.at("alive").get<bool>(),
                              FromUtf8(item.at("name").get<std::string>())});
  // Files from before there were imports and components have none.
  if (const auto shape = json.find("imported"); shape != json.end() && !shape->is_null())
    feature->imported = std::make_shared<const std::string>(shape->get<std::string>());
  if (const auto component = json.find("component"); component != json.end() && !component->is_null())
    feature->component = ComponentFromJson(*component);
  return feature;
}

Json ParameterToJson(const Parameter& parameter) {
  Json json = {
      {"name", ToUtf8(parameter.name)}, {"unit", ToUtf8(parameter.unit)}, {"locked", parameter.locked}};
  std::visit(
      Overloaded{[&](double value) { json["number"] = NumberToJson(value); },
                 [&](const std::wstring& value) { json["text"] = ToUtf8(value); },
                 [&](int value) { json["integer"] = value; }, [&](bool value) { json["truth"] = value; }},
      parameter.value);
  return json;
}

Parameter ParameterFromJson(const Json& json) {
  Parameter parameter;
  parameter.name = FromUtf8(json.at("name").get<std::string>());
  parameter.unit = FromUtf8(json.at("unit").get<std::string>());
  parameter.locked = json.at("locked").get<bool>();
  if (json.contains("number")) parameter.value = NumberFromJson(json["number"]);
  if (json.contains("text")) parameter.value = FromUtf8(json["text"].get<std::string>());
  if (json.contains("integer")) parameter.value = json["integer"].get<int>();
  if (json.contains("truth")) parameter.value = json["truth"].get<bool>();
  return parameter;
}

Json DimensionToJson(const Dimension& dimension) {
  return {{"id", dimension.id},
          {"feature", dimension.feature},
          {"element_path", dimension.source.element_path},
          {"section_dimension", dimension.source.section_dimension},
          {"is_angle", dimension.is_angle},
          {"relation_driven", dimension.relation_driven}};
}

Dimension DimensionFromJson(const Json& json) {
  return {json.at("id").get<int>(),
          json.at("feature").get<int>(),
          {json.at("element_path").get<std::vector<int>>(), json.at("section_dimension").get<int>()},
          json.at("is_angle").get<bool>(),
          json.at("relation_driven").get<bool>()};
}

// Files from before models had one hold none.
double ReadDensity(const Json& json) {
  if (!json.contains("density")) return Model{}.density;
  const double density = NumberFromJson(json["density"]);
  if (!(density > 0) || !std::isfinite(density)) throw std::runtime_error("it has an impossible density");
  return density;
}

// Files from before there were drawings have neither drawing nor cross-sections.
void ReadDrawingParts(const Json& json, Model& model) {
  if (const auto sections = json.find("cross_sections"); sections != json.end())
    for (const Json& section : *sections) model.cross_sections.push_back(CrossSectionFromJson(section));
  if (const auto drawing = json.find("drawing"); drawing != json.end() && !drawing->is_null())
    model.drawing = DrawingFromJson(*drawing);
  if (model.drawing && model.type != PRO_MDL_DRAWING)
    throw std::runtime_error("it holds sheets and is no drawing");
}

void CheckIds(const Model& model) {
  const auto check = [&model](int id) {
    if (id < 1 || id >= model.next_id) throw std::runtime_error("impossible id " + std::to_string(id));
  };
  std::set<int> features;
  for (const auto& feature : model.features) {
    check(feature->id);
    if (!features.insert(feature->id).second)
      throw std::runtime_error("two features with the id " + std::to_string(feature->id));
    for (const GeometryItem& item : feature->items) check(item.id);
  }
  for (const CrossSection& section : model.cross_sections) check(section.id);
  for (const auto& [key, id] : model.ids_of_keys) check(id);
}

ProMdlType ReadHead(const Json& json) {
  if (!json.is_object() || json.value("format", "") != kFormat)
    throw std::runtime_error("it is no model file");
  if (json.at("version").get<int>() != kFormatVersion)
    throw std::runtime_error("its format is of another version");
  const auto word = json.at("type").get<std::string>();
  const auto type = TypeOfWord(word);
  if (!type) throw std::runtime_error("it holds an unknown kind of model: " + word);
  return *type;
}

}  // namespace

std::string ModelToText(const Model& model) {
  Json features = Json::array(), parameters = Json::array(), dimensions = Json::array();
  for (const auto& feature : model.features) features.push_back(FeatureToJson(*feature, model));
  for (const Parameter& parameter : model.parameters) parameters.push_back(ParameterToJson(parameter));
  for (const Dimension& dimension : model.dimensions) dimensions.push_back(DimensionToJson(dimension));
  Json cross_sections = Json::array();
  for (const CrossSection& section : model.cross_sections)
    cross_sections.push_back(CrossSectionToJson(section));
  const Json json = {{"format", kFormat},
                     {"version", kFormatVersion},
                     {"type", Word(model.type)},
                     {"name", ToUtf8(model.name)},
                     {"length_unit", Word(model.length_unit)},
                     {"density", NumberToJson(model.density)},
                     {"next_id", model.next_id},
                     {"features", std::move(features)},
                     {"parameters", std::move(parameters)},
                     {"dimensions", std::move(dimensions)},
                     {"next_dimension", model.next_dimension},
                     {"cross_sections", std::move(cross_sections)},
                     {"drawing", model.drawing ? DrawingToJson(*model.drawing) : Json()},
                     {"ids_of_keys", model.ids_of_keys}};
  return json.dump(1) + "\n";
}

std::unique_ptr<Model> ModelFromText(std::string_view text) {
  const Json json = Json::parse(text);
  auto model = std::make_unique<Model>();
  model->type = ReadHead(json);
  model->name = FromUtf8(json.at("name").get<std::string>());
  const auto unit = LengthUnitOf(json.at("length_unit").get<std::string>());
  if (!unit) throw std::runtime_error("it has an unknown length unit");
  model->length_unit = *unit;
  model->density = ReadDensity(json);
  model->next_id = json.at("next_id").get<int>();
  for (const Json& feature : json.at("features")) model->features.push_back(FeatureFromJson(feature, *model));
  for (const Json& parameter : json.at("parameters"))
    model->parameters.push_back(ParameterFromJson(parameter));
  for (const Json& dimension : json.at("dimensions"))
    model->dimensions.push_back(DimensionFromJson(dimension));
  model->next_dimension = json.at("next_dimension").get<int>();
  ReadDrawingParts(json, *model);
  model->ids_of_keys = json.at("ids_of_keys").get<std::map<std::string, int>>();
  CheckIds(*model);
  model->modified = false;
  return model;
}

std::optional<ProMdlType> TypeInText(std::string_view text) {
  const Json json = Json::parse(text, nullptr, false);
  if (json.is_discarded()) return std::nullopt;
  try {
    return ReadHead(json);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace bench
