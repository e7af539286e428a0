// Pictures of windows.
#pragma once

#include "ProToolkit.h"

// 2 is 24 bits a pixel.
typedef enum ProRasterDepths : int { PRORASTERDEPTH_24 = 2 } ProRasterDepth;
// 0 BMP, 1 TIFF, 3 JPEG.
typedef enum ProRasterTypes : int {
  PRORASTERTYPE_BMP = 0,
  PRORASTERTYPE_TIFF = 1,
  PRORASTERTYPE_JPEG = 3,
} ProRasterType;
// Dots an inch.
typedef enum ProRasterResolutions : int { PRORASTERDPI_100 = 100 } ProRasterDPI;

// The window as it is seen, `width` by `height` inches, written to the path as it stands.
PRO_TOOLKIT_CALL ProError ProRasterFileWrite(int window, ProRasterDepth depth, double width, double height,
                                             ProRasterDPI resolution, ProRasterType type, ProPath path);
