// Dimensions: the numbers of a model's features, under symbols that last.
#pragma once

#include <string>
#include <vector>

namespace bench {

// Where a dimension's number is kept: in the tree of its feature, or among the dimensions of its section.
struct DimensionSource {
  std::vector<int> element_path;  // from the root; empty for one of the section
  int section_dimension = 0;
  bool operator==(const DimensionSource&) const = default;
};

struct Dimension {
  int id = -1;  // d0 is 0
  int feature = -1;
  DimensionSource source;
  bool is_angle = false;
  bool relation_driven = false;

  std::wstring Symbol() const { return L"d" + std::to_wstring(id); }
};

}  // namespace bench
