// Drawings in model files: sheets, views and what they show, by name.
#pragma once

#include <memory>

#include "bench/host/model/drawing.h"
#include "bench/host/storage/section_json.h"

namespace bench {

Json DrawingToJson(const Drawing& drawing);
// The models that it shows have names only. Throws when the drawing makes no sense.
std::unique_ptr<Drawing> DrawingFromJson(const Json& json);

// One sheet, as drawings and their templates tell it.
Sheet SheetFromJson(const Json& json, int number);

Json CrossSectionToJson(const CrossSection& section);
CrossSection CrossSectionFromJson(const Json& json);

}  // namespace bench
