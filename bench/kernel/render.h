// A picture of a scene as the window of a CAD system shows it: shaded, with its edges and sketches.
#pragma once

#include <nlohmann/json.hpp>

#include "bench/kernel/json_fields.h"
#include "bench/kernel/raster.h"
#include "bench/kernel/scene.h"
#include "bench/kernel/sight.h"

namespace bench::kernel {

// Solids and sketches fill the middle of the picture up to a margin, the same on both sides of the one way
// that they reach further. Both sides above 0.
Picture PictureOf(const Scene& scene, const Sight& sight, int width, int height);

// The answer to "render". Throws BadRequest, and Refusal when the file can't be written.
nlohmann::json AnswerRender(const Fields& request, const Scene& scene);

}  // namespace bench::kernel
