// A model in session: a part, an assembly or a drawing.
#pragma once

#include <ProMdl.h>

#include <map>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "bench/host/model/dimension.h"
#include "bench/host/model/drawing.h"
#include "bench/host/model/feature.h"
#include "bench/host/model/parameter.h"
#include "bench/host/model/topology.h"

namespace bench {

struct Geometry;

// The length units that a principal unit system can have.
enum class LengthUnit { kMillimetre, kInch, kMetre };
double MillimetresPer(LengthUnit unit);

// How a window shows a new model: from between the positive axes, with y up. A model's point as a row times
// the matrix is a point of the screen: x to the right, y up, z towards the viewer.
constexpr Matrix StartView() {
  constexpr double third = std::numbers::inv_sqrt3, half = std::numbers::sqrt2 / 2;
  return {{{half, -half * third, third, 0},
           {0, 2 * half * third, third, 0},
           {-half, -half * third, third, 0},
           {0, 0, 0, 1}}};
}

struct Model {
  ProMdlType type = PRO_MDL_PART;
  std::wstring name;       // upper case
  std::wstring directory;  // where it was saved last or retrieved from; empty for one that never was
  bool renamed_since_save = false;
  bool modified = true;
  LengthUnit length_unit = LengthUnit::kMillimetre;
  double density = 1;                              // of a part: g/cm³
  Matrix view = StartView();                       // how its window shows it now; not kept in files
  std::vector<std::unique_ptr<Feature>> features;  // in the order of regeneration
  std::vector<Parameter> parameters;
  std::vector<Dimension> dimensions;  // in the order of their symbols
  int next_dimension = 0;
  int next_id = 1;  // features and their geometry share one count; ids are never reused
  std::map<std::string, int> ids_of_keys;  // every kernel key that was ever seen, so that ids stay
  Topology topology;
  std::vector<CrossSection> cross_sections;  // in the order in which they were made
  std::unique_ptr<Drawing> drawing;          // of drawings; null for all others
  std::shared_ptr<const Geometry> geometry;  // what the topology came of; null until the first regeneration
  std::size_t last_found = 0;                // the index at which FindFeature found something last

  Feature* FindFeature(int id);
  // The feature that owns the item of that type and id, or null.
  Feature* OwnerOf(ProType type, int id);
  const Feature* OwnerOf(ProType type, int id) const;
  GeometryItem* FindItem(ProType type, int id);
};

}  // namespace bench
