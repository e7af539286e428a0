// Parts in the neutral formats.
#pragma once

#include <string>

#include "bench/kernel/named_shape.h"

namespace bench::kernel {

enum class ExportFormat { kStep, kIges, kStl };

// The bytes of a file that holds the body in millimetres under the product's name. STEP and IGES of no solids
// are files without geometry. Throws Refusal for an STL of no solids, and when a writer gives up.
std::string ExportBytes(ExportFormat format, const std::string& name, const NamedShape& body);

}  // namespace bench::kernel
