// The geometry that came of a model's recipes, as the kernel told it. Lengths in millimetres.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/host/model/vector3.h"

namespace bench {

struct FaceInfo {
  std::string key;
  int feature = -1;
  std::string type;
  double area = 0;
  int orientation = 1;
  double u[2]{};
  double v[2]{};
  Vector3 origin{}, axis{}, x{}, point{}, normal{}, low{}, high{};
  double radius = 0;
  double half_angle_deg = 0;
};

struct EdgeInfo {
  std::string key;
  int feature = -1;
  std::string faces[2];
  std::string type;
  Vector3 from{}, to{};
  double length = 0;
};

struct Box {
  Vector3 low{}, high{};
};

struct MassProperties {
  double volume = 0;
  double area = 0;
  Vector3 center{};
  double inertia[3][3]{};
};

struct Topology {
  int bodies = 0;
  std::vector<FaceInfo> faces;
  std::vector<EdgeInfo> edges;
  std::optional<Box> outline;
  std::optional<MassProperties> mass;
};

}  // namespace bench
