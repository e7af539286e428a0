#include "bench/host/model/element_catalog.h"

#include <unordered_map>

namespace bench {

std::optional<ElementKind> KindOfElement(int id) {
  using enum ElementKind;
  static const std::unordered_map<int, ElementKind> kinds{
      // every feature
      {386, kCompound},  // the tree
      {387, kInteger},   // feature type
      {388, kInteger},   // form
      {1964, kText},     // name
      {1956, kInteger},  // solid or surface
      {2023, kInteger},  // material removal
      {3176, kInteger},  // thin
      {436, kInteger},   // direction
      // sections
      {447, kCompound},   // standard section
      {450, kCompound},   // setup
      {451, kReference},  // sketch plane
      {452, kInteger},    // view direction
      {454, kInteger},    // orientation direction
      {455, kReference},  // orientation reference
      {458, kSection},    // sketcher
      {511, kInteger},    // curve type
      // depth of an extrude
      {515, kCompound},
      {428, kCompound},
      {429, kCompound},
      {430, kInteger},
      {433, kInteger},
      {431, kDouble},
      {434, kDouble},
      {5096, kCompound},
      {5097, kInteger},
      {5098, kDouble},  // its draft
      // angle of a revolve
      {6, kCompound},
      {437, kCompound},
      {438, kCompound},
      {439, kInteger},
      {440, kInteger},
      {442, kDouble},
      {3280, kInteger},  // its axis
  };
  const auto found = kinds.find(id);
  return found == kinds.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace bench
