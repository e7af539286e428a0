// A feature of a model: its recipe and what geometry came of it.
#pragma once

#include <ProFeature.h>

#include <memory>
#include <string>
#include <vector>

#include "bench/host/model/component.h"
#include "bench/host/model/element_tree.h"
#include "bench/host/model/vector3.h"

namespace bench {

// A place in space with two axes; its normal is x × y. Lengths in model units.
struct PlaneFrame {
  Vector3 origin{0, 0, 0};
  Vector3 x{1, 0, 0};
  Vector3 y{0, 1, 0};
  Vector3 Normal() const { return Cross(x, y); }
  bool operator==(const PlaneFrame&) const = default;
};

// A surface, curve, point, axis or datum plane of a feature, under its id in the model.
struct GeometryItem {
  ProType type = PRO_TYPE_UNUSED;
  int id = -1;
  std::string key;      // its name in the kernel's answers; empty for datums
  bool alive = true;    // false while the geometry that came of the feature no longer has it
  std::wstring name{};  // empty: unnamed
};

struct Feature {
  int id = -1;
  ProFeattype type = 0;  // 923 datum plane, 979 coordinate system, 949 curve, 916 cut, 917 protrusion …
  std::wstring name;     // empty: unnamed
  ProFeatStatus status = PRO_FEAT_ACTIVE;
  bool incomplete = false;
  std::unique_ptr<ElementNode> tree;     // null for the datums of the start template
  std::shared_ptr<SectionData> section;  // of sketches: their own; of what was made of one: its copy
  std::unique_ptr<ElementNode> setup;    // of what was made of a sketch: how that one was set up,
  int sketch = -1;                       // and its id, also when it is gone
  PlaneFrame plane;          // of datum planes: their own; of sketched features: the sketch plane's
  std::vector<int> parents;  // ids of the features that it stands on
  std::vector<int> members;  // of a group: its features; of a pattern: the feature or group that leads it
  std::vector<GeometryItem> items;
  std::shared_ptr<const std::string> imported;  // of imported features: their shape, in the kernel's words
  std::unique_ptr<Component> component;         // of component features: what they place; null for all others
};

}  // namespace bench
