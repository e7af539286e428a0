// From a caller's record of a component to the component.
#pragma once

#include <ProAsmcomp.h>

#include "bench/host/model/model.h"

namespace bench {

struct FoundComponent {
  Model* assembly = nullptr;
  Feature* feature = nullptr;
};

// The component that the record names, in an assembly in session.
ProError Resolve(const ProAsmcomp* record, FoundComponent& found);

// Whether a caller's path, if there is one, leads from the component's assembly to the component.
ProError CheckPath(const ProAsmcomppath* path, const FoundComponent& found);

}  // namespace bench
