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
      // components
      {605, kCompound},  // constraints
      {611, kMatrix},    // initial position
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
      // sweep
      {5528, kInteger},
      {3165, kCompound},  // its trajectories
      {1176, kCompound},
      {15, kCompound},
      {725, kInteger},
      {726, kCompound},
      {2124, kCollection},
      {1159, kCompound},  // its frame
      {1170, kInteger},
      {1171, kInteger},
      {1649, kInteger},
      {1648, kCompound},
      {3164, kCompound},
      {1168, kInteger},
      {897, kCompound},
      {499, kInteger},
      {3252, kCompound},
      {3253, kReference},
      {3254, kInteger},  // directions
      // shell
      {73, kReferences},
      {74, kDouble},
      {2194, kInteger},
      // hole
      {1671, kCompound},
      {1672, kInteger},
      {3887, kInteger},
      {82, kDouble},
      {1684, kCompound},
      {1685, kCompound},
      {1686, kCompound},
      {1687, kInteger},
      {1688, kInteger},
      {1689, kInteger},
      {6053, kInteger},
      {1356, kInteger},
      {1358, kInteger},
      {1340, kCompound},  // its placement
      {1341, kReference},
      {696, kInteger},
      {1677, kReference},
      {6051, kReference},
      {6052, kInteger},
      // cosmetic thread
      {4974, kInteger},
      {4975, kInteger},
      {4976, kInteger},
      {4902, kReference},
      {4900, kDouble},
      {4901, kReference},
      {4903, kCompound},
      {4904, kInteger},
      {4905, kInteger},
      {4906, kDouble},
      // move
      {5471, kCompound},
      {2213, kCollection},
      {5400, kInteger},
      {4300, kCompound},
      {4301, kCompound},
      {4306, kCompound},
      {4307, kCompound},
      {4308, kInteger},
      {4309, kMatrix},
      // round and chamfer
      {2101, kCompound},
      {2102, kCompound},
      {2103, kInteger},
      {2104, kReference},
      {2106, kCompound},
      {2107, kCompound},
      {2108, kInteger},
      {2109, kDouble},
      {2113, kCompound},
      {2119, kInteger},
      {2121, kCompound},
      {2122, kCompound},
      {2123, kCompound},
      {2177, kCompound},
      {2178, kInteger},
      {2179, kInteger},
      {3042, kInteger},
      {3184, kInteger},
      // draft
      {3305, kInteger},
      {2154, kInteger},
      {2150, kInteger},
      {3177, kInteger},
      {2164, kCompound},
      {2167, kInteger},
      {2168, kDouble},
      {2171, kInteger},
      // datum plane
      {410, kCompound},
      {411, kCompound},
      {412, kInteger},
      {413, kReference},
      {414, kDouble},
      // datum axis
      {2015, kCompound},
      {2016, kCompound},
      {2017, kInteger},
      {2018, kReference},
      // patterns
      {604, kCompound},  // the tree
      {3124, kInteger},
      {3131, kInteger},
      {3129, kCompound},
      {3130, kCompound},
      {3133, kCompound},
      {3134, kInteger},
      {3135, kCompound},
      {3136, kInteger},
      {3273, kReference},
      {3274, kDouble},
      {3275, kDouble},
      {3276, kDouble},
      {3291, kCompound},
      {3292, kCompound},
      {3297, kDouble},
      {3307, kInteger},
      {3308, kInteger},
      {3309, kInteger},
      {4026, kInteger},
      {4027, kInteger},
      // geometry mirror and solidify
      {3161, kReferences},
      {3162, kReference},
      {3163, kInteger},
      {3182, kInteger},
      {3023, kReference},
  };
  const auto found = kinds.find(id);
  return found == kinds.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace bench
