// Pictures in memory: loading, shrinking, encoding. Main thread only.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace vek {

// A picture's encoding, named as on the web.
inline constexpr const wchar_t* kPngType = L"image/png";
inline constexpr const wchar_t* kJpegType = L"image/jpeg";

// A device-independent bitmap.
class Image {
 public:
  // The picture in a file of any kind that the system knows, at its own depth. Nothing when it can't be read.
  static std::optional<Image> Load(const std::wstring& path);

  Image(Image&& other) noexcept;
  Image& operator=(Image&& other) noexcept;
  ~Image();

  int width() const;
  int height() const;

  // A copy of that size with 32 bits a pixel, stretched so that shrinking averages. Nothing when it fails.
  std::optional<Image> Stretched(int width, int height) const;

  // Writes a file, in the place of one that may be there. False when that fails.
  bool Save(const std::wstring& path, const wchar_t* media_type) const;

  // The bytes that the file would have, with the encoder's defaults. Nothing when that fails.
  std::optional<std::string> Encode(const wchar_t* media_type) const;

 private:
  struct Bitmap;
  explicit Image(std::unique_ptr<Bitmap> bitmap);
  std::unique_ptr<Bitmap> bitmap_;
};

}  // namespace vek
