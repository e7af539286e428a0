#include "addin/ops/exchange/inline_picture.h"

#include <algorithm>

#include "addin/ops/exchange/screenshot_text.h"
#include "addin/platform/base64_encoding.h"
#include "addin/platform/images.h"

namespace vek::exchange {
namespace {

constexpr std::size_t kMostBytes = 700000;
constexpr int kUsualLimit = 1600;  // pixels
constexpr int kAttempts = 4;

// The picture in that encoding, when it fits.
bool EncodeWithin(const Image& image, const wchar_t* encoding, std::wstring& base64,
                  std::wstring& media_type) {
  const auto bytes = image.Encode(encoding);
  if (!bytes || bytes->size() > kMostBytes) return false;
  const auto text = EncodeBase64(*bytes);
  if (!text) return false;
  base64.assign(text->begin(), text->end());
  media_type = encoding;
  return true;
}

}  // namespace

void BuildInlineImage(const std::wstring& path, int limit, std::wstring& base64, std::wstring& media_type) {
  base64.clear();
  media_type.clear();
  const auto source = Image::Load(path);
  if (!source) return;
  if (limit <= 0) limit = kUsualLimit;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const PictureSize size = ShrunkTo({source->width(), source->height()}, limit);
    const auto shrunk = source->Stretched(size.width, size.height);
    if (!shrunk) return;
    if (EncodeWithin(*shrunk, kPngType, base64, media_type)) return;
    if (EncodeWithin(*shrunk, kJpegType, base64, media_type)) return;
    limit = std::max(limit / 2, 1);
  }
}

}  // namespace vek::exchange
