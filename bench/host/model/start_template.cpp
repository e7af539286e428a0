#include "bench/host/model/start_template.h"

#include <utility>

namespace bench {
namespace {

constexpr ProFeattype kDatumPlane = 923;
constexpr ProFeattype kCoordinateSystem = 979;

Feature& AddFeature(Model& model, ProFeattype type, std::wstring name) {
  auto feature = std::make_unique<Feature>();
  feature->id = model.next_id++;
  feature->type = type;
  feature->name = std::move(name);
  model.features.push_back(std::move(feature));
  return *model.features.back();
}

void AddPlane(Model& model, std::wstring name, const Vector3& x, const Vector3& y) {
  Feature& feature = AddFeature(model, kDatumPlane, std::move(name));
  feature.plane.x = x;
  feature.plane.y = y;
  // One plane under one id, which callers address as a surface or as a datum plane.
  const int id = model.next_id++;
  feature.items.push_back({.type = PRO_SURFACE, .id = id, .key = {}});
  feature.items.push_back({.type = PRO_DATUM_PLANE, .id = id, .key = {}});
}

}  // namespace

std::unique_ptr<Model> NewSolidFromTemplate(std::wstring name, ProMdlType type) {
  auto model = std::make_unique<Model>();
  model->type = type;
  model->name = std::move(name);
  AddPlane(*model, L"RIGHT", {0, 1, 0}, {0, 0, 1});
  AddPlane(*model, L"TOP", {0, 0, 1}, {1, 0, 0});
  AddPlane(*model, L"FRONT", {1, 0, 0}, {0, 1, 0});
  Feature& csys =
      AddFeature(*model, kCoordinateSystem, type == PRO_MDL_ASSEMBLY ? L"ASM_DEF_CSYS" : L"PRT_CSYS_DEF");
  csys.items.push_back({.type = PRO_CSYS, .id = model->next_id++, .key = {}});
  return model;
}

}  // namespace bench
