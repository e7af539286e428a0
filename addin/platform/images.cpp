#include "addin/platform/images.h"

#include <windows.h>

#include <objidl.h>
#include <shlwapi.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

// The library's headers take the names of these two for granted.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

namespace vek {
namespace {

// The library, as long as someone uses it.
class ImageLibrary {
 public:
  ImageLibrary() {
    const Gdiplus::GdiplusStartupInput input;
    started_ = Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
  }
  ~ImageLibrary() {
    if (started_) Gdiplus::GdiplusShutdown(token_);
  }
  ImageLibrary(const ImageLibrary&) = delete;
  ImageLibrary& operator=(const ImageLibrary&) = delete;

 private:
  ULONG_PTR token_ = 0;
  bool started_ = false;
};

std::shared_ptr<ImageLibrary> SharedLibrary() {
  static std::weak_ptr<ImageLibrary> shared;
  auto library = shared.lock();
  if (!library) shared = library = std::make_shared<ImageLibrary>();
  return library;
}

class OwnedBitmap {
 public:
  OwnedBitmap() = default;
  ~OwnedBitmap() {
    if (handle_) ::DeleteObject(handle_);
  }
  OwnedBitmap(const OwnedBitmap&) = delete;
  OwnedBitmap& operator=(const OwnedBitmap&) = delete;

  // An empty bitmap with its first row on top. `pixels` is where they stand. False when there is no room.
  bool Create(int width, int height, int bits, void*& pixels) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = static_cast<WORD>(bits);
    info.bmiHeader.biCompression = BI_RGB;
    handle_ = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    return handle_ != nullptr;
  }
  HBITMAP get() const { return handle_; }

 private:
  HBITMAP handle_ = nullptr;
};

// A device context of memory with a bitmap in it.
class BitmapContext {
 public:
  explicit BitmapContext(HBITMAP bitmap) : context_(::CreateCompatibleDC(nullptr)) {
    if (context_) before_ = ::SelectObject(context_, bitmap);
  }
  ~BitmapContext() {
    if (before_) ::SelectObject(context_, before_);
    if (context_) ::DeleteDC(context_);
  }
  BitmapContext(const BitmapContext&) = delete;
  BitmapContext& operator=(const BitmapContext&) = delete;

  explicit operator bool() const { return before_ != nullptr; }
  HDC get() const { return context_; }

 private:
  HDC context_;
  HGDIOBJ before_ = nullptr;
};

struct ReleaseStream {
  void operator()(IStream* stream) const { stream->Release(); }
};
using OwnedStream = std::unique_ptr<IStream, ReleaseStream>;

// The depth at which a bitmap holds such pixels. What a bitmap doesn't know becomes 32 bits.
int BitsOf(Gdiplus::PixelFormat format) {
  const int bits = static_cast<int>(Gdiplus::GetPixelFormatSize(format));
  return bits <= 8 || bits == 24 ? bits : 32;
}

Gdiplus::PixelFormat FormatOf(Gdiplus::PixelFormat format) {
  return BitsOf(format) == 32 ? PixelFormat32bppRGB : format;
}

int BytesOfRow(int width, int bits) {
  return (width * bits + 31) / 32 * 4;
}

// Gives the bitmap the colours of a picture whose pixels are numbers of colours.
bool CopyColors(Gdiplus::Bitmap& from, HBITMAP to) {
  const int size = from.GetPaletteSize();
  if (size < static_cast<int>(sizeof(Gdiplus::ColorPalette))) return false;
  std::vector<ULONG_PTR> memory(size / sizeof(ULONG_PTR) + 1);
  auto* const palette = reinterpret_cast<Gdiplus::ColorPalette*>(memory.data());
  if (from.GetPalette(palette, size) != Gdiplus::Ok) return false;
  std::vector<RGBQUAD> colors;
  for (UINT i = 0; i < palette->Count; ++i) {
    const Gdiplus::Color color(palette->Entries[i]);
    colors.push_back({color.GetBlue(), color.GetGreen(), color.GetRed(), 0});
  }
  const BitmapContext context(to);
  return context && ::SetDIBColorTable(context.get(), 0, static_cast<UINT>(colors.size()), colors.data()) > 0;
}

bool CopyPixels(Gdiplus::Bitmap& from, int width, int height, int bits, void* pixels) {
  const Gdiplus::Rect all(0, 0, width, height);
  const Gdiplus::PixelFormat format = FormatOf(from.GetPixelFormat());
  Gdiplus::BitmapData data{};
  data.Width = static_cast<UINT>(width);
  data.Height = static_cast<UINT>(height);
  data.Stride = BytesOfRow(width, bits);
  data.PixelFormat = format;
  data.Scan0 = pixels;
  constexpr UINT kIntoOurs = Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf;
  return from.LockBits(&all, kIntoOurs, format, &data) == Gdiplus::Ok &&
         from.UnlockBits(&data) == Gdiplus::Ok;
}

bool FindEncoder(const wchar_t* media_type, CLSID& encoder) {
  UINT count = 0, size = 0;
  if (Gdiplus::GetImageEncodersSize(&count, &size) != Gdiplus::Ok || count == 0) return false;
  std::vector<ULONG_PTR> memory(size / sizeof(ULONG_PTR) + 1);
  auto* const codecs = reinterpret_cast<Gdiplus::ImageCodecInfo*>(memory.data());
  if (Gdiplus::GetImageEncoders(count, size, codecs) != Gdiplus::Ok) return false;
  const auto found = std::find_if(codecs, codecs + count, [&](const Gdiplus::ImageCodecInfo& codec) {
    return std::wstring_view(codec.MimeType) == media_type;
  });
  if (found == codecs + count) return false;
  encoder = found->Clsid;
  return true;
}

// All that was written into the stream.
std::optional<std::string> BytesOf(IStream& stream) {
  if (FAILED(stream.Seek({}, STREAM_SEEK_SET, nullptr))) return std::nullopt;
  STATSTG facts{};
  if (FAILED(stream.Stat(&facts, STATFLAG_NONAME)) || facts.cbSize.HighPart != 0) return std::nullopt;
  std::string bytes(facts.cbSize.LowPart, '\0');
  ULONG count = 0;
  if (FAILED(stream.Read(bytes.data(), facts.cbSize.LowPart, &count)) || count != bytes.size())
    return std::nullopt;
  return bytes;
}

}  // namespace

struct Image::Bitmap {
  std::shared_ptr<ImageLibrary> library;
  OwnedBitmap handle;
  int width = 0;
  int height = 0;

  // Calls `write(Gdiplus::Bitmap&, const CLSID& encoder) -> Gdiplus::Status` with this bitmap.
  template <typename Write>
  bool EncodeWith(const wchar_t* media_type, Write&& write) const {
    CLSID encoder{};
    if (!FindEncoder(media_type, encoder)) return false;
    Gdiplus::Bitmap picture(handle.get(), nullptr);
    return picture.GetLastStatus() == Gdiplus::Ok && write(picture, encoder) == Gdiplus::Ok;
  }
};

Image::Image(std::unique_ptr<Bitmap> bitmap) : bitmap_(std::move(bitmap)) {}
Image::Image(Image&& other) noexcept = default;
Image& Image::operator=(Image&& other) noexcept = default;
Image::~Image() = default;

int Image::width() const {
  return bitmap_->width;
}

int Image::height() const {
  return bitmap_->height;
}

std::optional<Image> Image::Load(const std::wstring& path) {
  auto bitmap = std::make_unique<Bitmap>();
  bitmap->library = SharedLibrary();
  // It holds the file open, and so must be gone before anyone deletes that.
  Gdiplus::Bitmap source(path.c_str());
  if (source.GetLastStatus() != Gdiplus::Ok) return std::nullopt;
  bitmap->width = static_cast<int>(source.GetWidth());
  bitmap->height = static_cast<int>(source.GetHeight());
  const int bits = BitsOf(source.GetPixelFormat());
  void* pixels = nullptr;
  if (!bitmap->handle.Create(bitmap->width, bitmap->height, bits, pixels)) return std::nullopt;
  if (bits <= 8 && !CopyColors(source, bitmap->handle.get())) return std::nullopt;
  if (!CopyPixels(source, bitmap->width, bitmap->height, bits, pixels)) return std::nullopt;
  return Image(std::move(bitmap));
}

std::optional<Image> Image::Stretched(int width, int height) const {
  auto copy = std::make_unique<Bitmap>();
  copy->library = bitmap_->library;
  copy->width = width;
  copy->height = height;
  void* pixels = nullptr;
  if (!copy->handle.Create(width, height, 32, pixels)) return std::nullopt;
  {
    const BitmapContext from(bitmap_->handle.get()), to(copy->handle.get());
    if (!from || !to) return std::nullopt;
    ::SetStretchBltMode(to.get(), HALFTONE);
    ::SetBrushOrgEx(to.get(), 0, 0, nullptr);
    if (!::StretchBlt(to.get(), 0, 0, width, height, from.get(), 0, 0, bitmap_->width, bitmap_->height,
                      SRCCOPY))
      return std::nullopt;
  }
  return Image(std::move(copy));
}

bool Image::Save(const std::wstring& path, const wchar_t* media_type) const {
  return bitmap_->EncodeWith(media_type, [&](Gdiplus::Bitmap& picture, const CLSID& encoder) {
    return picture.Save(path.c_str(), &encoder, nullptr);
  });
}

std::optional<std::string> Image::Encode(const wchar_t* media_type) const {
  const OwnedStream stream(::SHCreateMemStream(nullptr, 0));
  if (!stream) return std::nullopt;
  const bool encoded = bitmap_->EncodeWith(media_type, [&](Gdiplus::Bitmap& picture, const CLSID& encoder) {
    return picture.Save(stream.get(), &encoder, nullptr);
  });
  return encoded ? BytesOf(*stream) : std::nullopt;
}

}  // namespace vek
