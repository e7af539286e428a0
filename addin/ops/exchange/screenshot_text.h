// What screenshots read out of a request and reckon, without host or disk: formats, path rules, sizes. All
// are pure.
#pragma once

#include <string>
#include <string_view>

namespace vek::exchange {

struct RasterFormat {
  const wchar_t* suffix;
  int raster_type;  // the host's number of the format that it writes
  bool direct;      // false when that has to be converted afterwards
};

// The format that the end of a path names, in any case; null for an end that names none.
const RasterFormat* FindRasterFormat(std::wstring_view path);

// The orientation's canonical word for the text of a client, blanks and case aside; empty for an unknown one.
std::wstring ScreenshotView(std::wstring_view text);

// Whether a path names its own root: a drive, or a machine of the network.
bool IsAbsolutePath(std::wstring_view path);

// Whether `path` is `folder` or lies below it. Both are full paths without steps back; case doesn't matter,
// and neither do separators at the end of the folder.
bool LiesInFolder(std::wstring_view folder, std::wstring_view path);

struct PictureSize {
  int width = 0;
  int height = 0;
  bool operator==(const PictureSize&) const = default;
};

// `size` with its longer side at most `limit`, which is above 0, and each side at least 1.
PictureSize ShrunkTo(PictureSize size, int limit);

// A number without its fraction; what lies beyond an integer becomes the nearest one, what is no number 0.
int CutToInteger(double number);

}  // namespace vek::exchange
