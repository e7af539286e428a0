// Quilts among each other, and what is told of them.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "bench/kernel/face_facts.h"
#include "bench/kernel/named_shape.h"

namespace bench::kernel {

// "88:quilt:1"
std::string KeyOf(const Quilt& quilt);

// Throws Refusal when there is none of that key.
const Quilt& FindQuilt(const std::vector<Quilt>& quilts, const std::string& key);

// Each set of faces that hang together by edges becomes a quilt; all the faces have names.
void AddQuilts(const TopoDS_Shape& faces, const FaceNames& names, const FeaturePlace& place,
               std::vector<Quilt>& quilts);

// Whether it bounds a room: each of its edges has a face on both sides.
bool IsClosed(const Quilt& quilt);

// [{"key", "feature", "faces", "area", "closed"}, …]
nlohmann::json DescribeQuilts(const std::vector<Quilt>& quilts, FaceFactsCache& cache);

}  // namespace bench::kernel
