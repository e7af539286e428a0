// Models in the neutral formats.
#pragma once

#include <string>

#include "bench/kernel/scene.h"

namespace bench::kernel {

enum class ExportFormat { kStep, kIges, kStl };

// The bytes of a file that holds all of the scene in place, in millimetres, under the name of its root. In
// STEP each model is one product, and each component an occurrence of one; the other formats hold the bodies
// alone. STEP and IGES of no solids are files without geometry. Throws Refusal for an STL of no solids, and
// when a writer gives up.
std::string ExportBytes(ExportFormat format, const Scene& scene);

}  // namespace bench::kernel
