#include "bench/kernel/interfere.h"

#include <BRepAlgoAPI_Common.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepGProp.hxx>
#include <Bnd_OBB.hxx>
#include <GProp_GProps.hxx>
#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "bench/kernel/bounds.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

// Placing leaves faces that touch this far inside each other at most.
constexpr double kContact = 1e-5;  // mm

// One body with its box, which lies as the body does.
struct Candidate {
  const PlacedPart* body;
  Bnd_OBB box;
};

Bnd_OBB BoxAt(const Bounds& bounds, const gp_Trsf& place) {
  const gp_Pnt middle((bounds.low + bounds.high) / 2);
  const gp_XYZ half = (bounds.high - bounds.low) / 2;
  // Boxes that only touch are out of each other.
  const auto reach = [](double size) { return std::max(size - kContact / 2, 0.0); };
  return {middle.Transformed(place),
          gp_Dir(1, 0, 0).Transformed(place),
          gp_Dir(0, 1, 0).Transformed(place),
          gp_Dir(0, 0, 1).Transformed(place),
          reach(half.X()),
          reach(half.Y()),
          reach(half.Z())};
}

std::vector<Candidate> Candidates(const Scene& scene, const std::vector<PlacedPart>& bodies) {
  std::map<ModelIndex, Bounds> bounds;
  std::vector<Candidate> candidates;
  for (const PlacedPart& body : bodies) {
    const auto [entry, fresh] = bounds.try_emplace(body.model);
    if (fresh) entry->second = BoundsOf(scene.models[body.model].body.Compound());
    candidates.push_back({&body, BoxAt(entry->second, body.place)});
  }
  return candidates;
}

// Copies, for two occurrences of a part at one place would be one and the same shape.
TopTools_ListOfShape SolidsAt(const NamedShape& body, const gp_Trsf& place) {
  constexpr bool kCopyGeometry = true;
  TopTools_ListOfShape solids;
  for (const TopoDS_Solid& solid : body.solids)
    solids.Append(BRepBuilderAPI_Transform(solid, place, kCopyGeometry).Shape());
  return solids;
}

std::optional<NamedShape> CommonOf(const TopTools_ListOfShape& objects, const TopTools_ListOfShape& tools,
                                   double fuzzy) {
  BRepAlgoAPI_Common common;
  common.SetArguments(objects);
  common.SetTools(tools);
  common.SetNonDestructive(true);
  common.SetFuzzyValue(fuzzy);
  common.Build();
  if (!common.IsDone() || common.HasErrors()) return std::nullopt;
  NamedShape shape;
  shape.solids = SolidsIn(common.Shape());
  return shape;
}

// Of the solids one by one: what they share of their faces belongs to each.
double VolumeBeyondContact(const NamedShape& common) {
  double sum = 0;
  for (const TopoDS_Solid& solid : common.solids) {
    NamedShape alone;
    alone.solids = {solid};
    GProp_GProps skin;
    BRepGProp::SurfaceProperties(solid, skin);
    const double volume = VolumeOf(alone);
    if (volume > kContact * skin.Mass() / 2) sum += volume;
  }
  return sum;
}

// The room that two bodies share, 0 when they only touch.
double SharedVolume(const Scene& scene, const PlacedPart& first, const PlacedPart& second) {
  const NamedShape& fixed = scene.models[first.model].body;
  const NamedShape& other = scene.models[second.model].body;
  const TopTools_ListOfShape objects = SolidsAt(fixed, {});
  const TopTools_ListOfShape tools = SolidsAt(other, first.place.Inverted() * second.place);
  for (const double fuzzy : {0.0, kContact}) {
    const std::optional<NamedShape> common = CommonOf(objects, tools, fuzzy);
    if (common) return VolumeBeyondContact(*common);
  }
  throw Refusal("Two of the bodies can't be held against each other.");
}

}  // namespace

std::vector<Clash> ClashesOf(const Scene& scene) {
  std::vector<PlacedPart> bodies = scene.Bodies();
  std::stable_sort(bodies.begin(), bodies.end(),
                   [](const PlacedPart& a, const PlacedPart& b) { return a.path < b.path; });
  const std::vector<Candidate> candidates = Candidates(scene, bodies);
  std::vector<Clash> clashes;
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    for (std::size_t j = i + 1; j < candidates.size(); ++j) {
      const auto& [first, first_box] = candidates[i];
      const auto& [second, second_box] = candidates[j];
      if (first_box.IsOut(second_box)) continue;
      const double volume = SharedVolume(scene, *first, *second);
      if (volume > 0) clashes.push_back({first->path, second->path, volume});
    }
  }
  return clashes;
}

nlohmann::json DescribeClashes(const Scene& scene) {
  nlohmann::json list = nlohmann::json::array();
  for (const Clash& clash : ClashesOf(scene))
    list.push_back({{"first", clash.first}, {"second", clash.second}, {"volume", clash.volume}});
  return {{"clashes", std::move(list)}};
}

}  // namespace bench::kernel
