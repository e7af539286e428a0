// A model with all that it places: what a request that looks at a whole model is about.
#pragma once

#include <cstddef>
#include <gp_Trsf.hxx>
#include <string>
#include <vector>

#include "bench/kernel/feature.h"
#include "bench/kernel/features/sketch.h"
#include "bench/kernel/json_fields.h"
#include "bench/kernel/named_shape.h"
#include "bench/kernel/regenerate.h"

namespace bench::kernel {

// An index into the scene's models.
using ModelIndex = std::size_t;

struct SceneComponent {
  int id = 0;  // of the component's feature
  ModelIndex model = 0;
  gp_Trsf place;  // in the assembly, without any scale
};

struct SceneModel {
  std::string name;
  bool is_assembly = false;
  std::vector<SceneComponent> components;  // of an assembly
  std::vector<Recipe> recipes;             // of a part, for Regenerator::Keys
  NamedShape body;                         // of a part: its solids in its own coordinates
  std::vector<SketchGeometry> sketches;    // of a part: those that a picture shows
};

// One occurrence of a part.
struct PlacedPart {
  std::vector<int> path;  // ids of components from the root down; empty for a root that is a part
  ModelIndex model = 0;
  gp_Trsf place;  // in the root's coordinates, without any scale
};

struct Scene {
  std::vector<SceneModel> models;  // each before those that place it
  ModelIndex root = 0;

  const SceneModel& Root() const { return models[root]; }
  // In the order of the components, depth first: of the parts that have solids, and of all.
  std::vector<PlacedPart> Bodies() const;
  std::vector<PlacedPart> Parts() const;
};

// Reads "models" and "root" of a request and builds each part once. Throws BadRequest.
Scene ReadScene(const Fields& request, Regenerator& regenerator);

}  // namespace bench::kernel
