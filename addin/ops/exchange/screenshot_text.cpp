#include "addin/ops/exchange/screenshot_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "addin/text/wide_text.h"

namespace vek::exchange {
namespace {

constexpr RasterFormat kRasterFormats[] = {
    {L".png", 0, false},  // the host's writer knows no PNG: it writes a BMP
    {L".bmp", 0, true},  {L".jpg", 3, true}, {L".jpeg", 3, true}, {L".tif", 1, true}, {L".tiff", 1, true},
};

constexpr struct {
  std::wstring_view word;
  const wchar_t* canonical;
} kViewWords[] = {{L"", L"iso"},        {L"home", L"iso"}, {L"iso", L"iso"},
                  {L"front", L"front"}, {L"top", L"top"},  {L"right", L"right"}};

int ScaledSide(int side, double ratio) {
  return std::max(CutToInteger(side * ratio + 0.5), 1);
}

}  // namespace

const RasterFormat* FindRasterFormat(std::wstring_view path) {
  const std::wstring lowered = ToLower(path);
  for (const RasterFormat& format : kRasterFormats)
    if (lowered.ends_with(format.suffix)) return &format;
  return nullptr;
}

std::wstring ScreenshotView(std::wstring_view text) {
  const std::wstring wanted = ToLower(Trim(text));
  for (const auto& [word, canonical] : kViewWords)
    if (word == wanted) return canonical;
  return {};
}

bool IsAbsolutePath(std::wstring_view path) {
  return (path.size() > 1 && path[1] == L':') || path.starts_with(LR"(\\)");
}

bool LiesInFolder(std::wstring_view folder, std::wstring_view path) {
  // npos + 1 is 0: nothing is left of a folder of separators only.
  folder = folder.substr(0, folder.find_last_not_of(L"\\/") + 1);
  if (!EqualsIgnoreCase(path.substr(0, folder.size()), folder)) return false;
  return path.size() == folder.size() || path[folder.size()] == L'\\';
}

PictureSize ShrunkTo(PictureSize size, int limit) {
  const int longer = std::max(size.width, size.height);
  if (longer <= limit) return size;
  const double ratio = static_cast<double>(limit) / longer;
  return {ScaledSide(size.width, ratio), ScaledSide(size.height, ratio)};
}

int CutToInteger(double number) {
  if (std::isnan(number)) return 0;
  constexpr double kLowest = std::numeric_limits<int>::min(), kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(number, kLowest, kHighest));
}

}  // namespace vek::exchange
