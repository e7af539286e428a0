#include "bench/kernel/scene.h"

#include <cmath>
#include <gp_Ax3.hxx>
#include <set>
#include <utility>

namespace bench::kernel {

using nlohmann::json;

namespace {

// The host lets rotations pass that are this far from one.
constexpr double kRotationTolerance = 1e-5;

ModelIndex ReadIndex(const Fields& fields, const char* key, std::size_t count) {
  const int index = fields.Integer(key);
  if (static_cast<std::size_t>(index) >= count)
    fields.Complain("'" + std::string(key) + "' must name a model that stands before");
  return static_cast<ModelIndex>(index);
}

gp_Trsf ReadPlace(const Fields& fields) {
  const json& numbers = fields.Array("place");
  if (numbers.size() != 12) fields.Complain("'place' must be of twelve numbers");
  for (const json& number : numbers)
    if (!number.is_number() || !std::isfinite(number.get<double>()))
      fields.Complain("'place' must be of finite numbers");
  const auto column = [&numbers](int at) {
    return gp_XYZ(numbers[at].get<double>(), numbers[at + 4].get<double>(), numbers[at + 8].get<double>());
  };
  const gp_XYZ x = column(0), y = column(1), z = column(2), origin = column(3);
  const double faults[] = {x.Modulus() - 1, y.Modulus() - 1, x.Dot(y), (x.Crossed(y) - z).Modulus()};
  for (const double fault : faults)
    if (!(std::abs(fault) <= kRotationTolerance)) fields.Complain("'place' must be a rigid motion");
  // Made of directions, for numbers taken as they are would bring a trace of scale along, which the toolkit
  // takes for no motion.
  gp_Trsf place;
  place.SetDisplacement(gp_Ax3(), gp_Ax3(gp_Pnt(origin), gp_Dir(z), gp_Dir(x)));
  return place;
}

std::vector<SceneComponent> ReadComponents(const json& entries, const std::string& where, std::size_t known) {
  std::vector<SceneComponent> components;
  for (const json& entry : entries) {
    const Fields fields(entry, where + ", component " + std::to_string(components.size() + 1));
    components.push_back({fields.Integer("id"), ReadIndex(fields, "model", known), ReadPlace(fields)});
  }
  return components;
}

// The features whose sketches a picture shows.
std::set<int> ReadShown(const Fields& fields) {
  std::set<int> features;
  if (!fields.Has("sketches")) return features;
  for (const json& feature : fields.Array("sketches"))
    features.insert(fields.AsInteger(feature, "each of 'sketches'"));
  return features;
}

SceneModel ReadModel(const json& entry, std::size_t known, Regenerator& regenerator) {
  const std::string where = "model " + std::to_string(known + 1);
  const Fields fields(entry, where);
  SceneModel model;
  model.name = fields.Text("name");
  model.is_assembly = fields.Has("components");
  if (model.is_assembly) {
    model.components = ReadComponents(fields.Array("components"), where, known);
  } else {
    model.recipes = ReadRecipes(fields.Array("recipes"));
    model.body = regenerator.Body(model.recipes);
    if (const std::set<int> shown = ReadShown(fields); !shown.empty())
      model.sketches = regenerator.Drawn(model.recipes, shown);
  }
  return model;
}

void AddParts(const Scene& scene, const PlacedPart& at, std::vector<PlacedPart>& parts) {
  const SceneModel& model = scene.models[at.model];
  if (!model.is_assembly) parts.push_back(at);
  for (const SceneComponent& component : model.components) {
    PlacedPart below{at.path, component.model, at.place * component.place};
    below.path.push_back(component.id);
    AddParts(scene, below, parts);
  }
}

}  // namespace

std::vector<PlacedPart> Scene::Bodies() const {
  std::vector<PlacedPart> parts = Parts();
  std::erase_if(parts, [this](const PlacedPart& part) { return models[part.model].body.IsEmpty(); });
  return parts;
}

std::vector<PlacedPart> Scene::Parts() const {
  std::vector<PlacedPart> parts;
  AddParts(*this, {{}, root, {}}, parts);
  return parts;
}

Scene ReadScene(const Fields& request, Regenerator& regenerator) {
  Scene scene;
  for (const json& entry : request.Array("models"))
    scene.models.push_back(ReadModel(entry, scene.models.size(), regenerator));
  scene.root = ReadIndex(request, "root", scene.models.size());
  return scene;
}

}  // namespace bench::kernel
