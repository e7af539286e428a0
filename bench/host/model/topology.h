// The geometry that came of a model's recipes, as the kernel told it. Lengths in millimetres.
#pragma once

#include <optional>
#include <string>
#include <string_view>
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
  double minor_radius = 0;
  double half_angle_deg = 0;
  // The keys of the edges along each contour, the outer contour first.
  std::vector<std::vector<std::string>> contours{};
};

struct EdgeInfo {
  std::string key;
  int feature = -1;
  std::string faces[2];
  std::string type;
  Vector3 from{}, to{};
  double length = 0;
  // Of circles and arcs: about the axis they run right-handed from the one end to the other.
  Vector3 center{}, axis{};
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

  // Null when there is none of that key.
  const FaceInfo* Face(std::string_view key) const { return Find(faces, key); }
  const EdgeInfo* Edge(std::string_view key) const { return Find(edges, key); }

 private:
  template <typename Info>
  static const Info* Find(const std::vector<Info>& list, std::string_view key) {
    for (const Info& each : list)
      if (each.key == key) return &each;
    return nullptr;
  }
};

}  // namespace bench
