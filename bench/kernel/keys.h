// The keys under which a body's faces and edges are known outside.
#pragma once

#include <TopoDS_Edge.hxx>
#include <array>
#include <string>
#include <vector>

#include "bench/kernel/face_facts.h"
#include "bench/kernel/named_shape.h"

namespace bench::kernel {

struct KeyedFace {
  TopoDS_Face face;
  FaceName name;
  FactsOnDemand facts;
  std::string key;
};

struct KeyedEdge {
  TopoDS_Edge edge;
  const KeyedFace* first = nullptr;  // of its two faces the one whose key comes first
  const KeyedFace* second = nullptr;
  std::array<long long, 3> center{};  // in whole steps of a fine grid, where it was before the body was moved
  std::string key;
};

// Of the body as it is, with the facts from a cache that must live as long: what a later feature does to it
// may change which part of a face has which number.
class BodyKeys {
 public:
  BodyKeys(const NamedShape& body, FaceFactsCache& cache);
  BodyKeys(const BodyKeys&) = delete;
  BodyKeys& operator=(const BodyKeys&) = delete;

  // In the order of their features, ranks and centres; without seams and edges that have no length.
  const std::vector<KeyedFace>& faces() const { return faces_; }
  const std::vector<KeyedEdge>& edges() const { return edges_; }

  // Throws Refusal when the body has none of that key.
  const KeyedFace& Face(const std::string& key) const;
  const KeyedEdge& Edge(const std::string& key) const;

 private:
  std::vector<KeyedFace> faces_;
  std::vector<KeyedEdge> edges_;
};

}  // namespace bench::kernel
