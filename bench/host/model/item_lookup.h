// Whether what a caller's item record names is there.
#pragma once

#include <ProObjects.h>

#include "bench/host/model/model.h"

namespace bench {

// The part or assembly in session behind a handle, or null.
Model* LiveSolid(const void* handle);

// Whether the item's owner is in session and has the item: the model itself, a feature, or live geometry.
bool ItemExists(const ProModelitem& item);

// The feature that the record names, in a model in session; null when there is none.
Feature* FindFeature(const ProFeature* feature);

}  // namespace bench
