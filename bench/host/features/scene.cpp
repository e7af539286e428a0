#include "bench/host/features/scene.h"

#include <nlohmann/json.hpp>
#include <unordered_map>

#include "bench/host/features/regeneration.h"
#include "bench/host/features/shown_sketches.h"
#include "bench/host/model/component.h"
#include "bench/host/text.h"

namespace bench {
namespace {

using nlohmann::json;

// Twelve numbers: the rows of the rotation, each with its part of the translation.
json PlaceOf(const Feature& component, LengthUnit unit) {
  const Matrix place = Scaled(component.component->place, MillimetresPer(unit));
  json numbers = json::array();
  for (int row = 0; row < 3; ++row)
    for (const double number : place[row]) numbers.push_back(number);
  return numbers;
}

// The models of a scene, each once, what is deeper first.
class ModelList {
 public:
  // The model's index in the list.
  std::size_t Add(const Model& model) {
    if (const auto known = indices_.find(&model); known != indices_.end()) return known->second;
    std::string entry = R"({"name":)" + json(ToUtf8(model.name)).dump();
    if (model.type == PRO_MDL_ASSEMBLY)
      entry += R"(,"components":)" + Components(model);
    else
      entry += R"(,"recipes":)" + (model.geometry ? model.geometry->recipes : "[]") + R"(,"sketches":)" +
               json(ShownSketches(model)).dump();
    text_ += (indices_.empty() ? "" : ",") + entry + '}';
    const std::size_t index = indices_.size();
    indices_[&model] = index;
    return index;
  }

  const std::string& Text() const { return text_; }

 private:
  std::string Components(const Model& assembly) {
    json components = json::array();
    for (const Feature* feature : ActiveComponents(assembly))
      components.push_back({{"id", feature->id},
                            {"model", Add(*PlacedModel(*feature->component))},
                            {"place", PlaceOf(*feature, assembly.length_unit)}});
    return components.dump();
  }

  std::string text_;
  std::unordered_map<const Model*, std::size_t> indices_;
};

}  // namespace

std::string SceneFields(const Model& model) {
  ModelList models;
  const std::size_t root = models.Add(model);
  return R"("models":[)" + models.Text() + R"(],"root":)" + std::to_string(root);
}

}  // namespace bench
