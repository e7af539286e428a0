// What kind of value the elements that the host knows can hold.
#pragma once

#include <optional>

namespace bench {

enum class ElementKind {
  kCompound,
  kInteger,
  kDouble,
  kText,
  kReference,
  kReferences,
  kCollection,
  kMatrix,
  kSection
};

// Nothing for an id that the host doesn't know: such an element takes any value, and no feature takes it.
std::optional<ElementKind> KindOfElement(int id);

}  // namespace bench
