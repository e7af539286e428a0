// Pictures as files.
#pragma once

#include <string>

#include "bench/kernel/raster.h"

namespace bench::kernel {

enum class PictureFormat { kBmp, kJpeg, kTiff };

// The bytes of a file: of BMP 24 bits a pixel, of TIFF losslessly packed, each with the dots an inch, above
// 0. Throws Refusal when a writer gives up.
std::string PictureBytes(const Picture& picture, PictureFormat format, int dots_per_inch);

}  // namespace bench::kernel
