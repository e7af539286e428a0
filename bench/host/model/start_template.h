// What a new part or assembly is born with.
#pragma once

#include <memory>
#include <string>

#include "bench/host/model/model.h"

namespace bench {

// A model with the datum planes RIGHT, TOP, FRONT and a coordinate system, in millimetres. It is not in
// session yet.
std::unique_ptr<Model> NewSolidFromTemplate(std::wstring name, ProMdlType type);

}  // namespace bench
