// Features that lie on geometry: they follow it when it moves.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "bench/host/features/feature_kind.h"

namespace bench {

// Whether where the feature lies depends on the geometry before it, and not on datum planes alone.
bool LiesOnGeometry(Model& model, const Feature& feature);

// Whether it is a datum plane that a feature made, or lies on such a one: these move with their numbers,
// while the geometry stays as it is.
bool LiesOnMadePlanes(Model& model, const Feature& feature);

// Places the feature anew, with `ground` as what the model's geometry is. It may be the model's own topology.
std::optional<TreeProblem> PlaceOn(Topology& ground, Model& model, Feature& feature);

// The id of the feature whose place among the others tells on what `feature` lies: that of the sketch that it
// was made of, also when that is gone, or its own.
int PlacedAs(const Feature& feature);

// Where features lie while that is being tried: all is set back at the end.
class TriedPlaces {
 public:
  explicit TriedPlaces(const std::vector<Feature*>& features);
  TriedPlaces(const TriedPlaces&) = delete;
  TriedPlaces& operator=(const TriedPlaces&) = delete;
  ~TriedPlaces();

 private:
  struct Place {
    Feature* feature;
    PlaneFrame plane;
    std::vector<int> parents;
  };
  std::vector<Place> before_;
};

}  // namespace bench
