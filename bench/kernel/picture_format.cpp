#include "bench/kernel/picture_format.h"

#include <tiffio.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

// Asks for the types of <cstdio> before it.
#include <jpeglib.h>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

std::size_t RowBytes(const Picture& picture) {
  return static_cast<std::size_t>(picture.width) * 3;
}

const std::uint8_t* Row(const Picture& picture, int row) {
  return picture.rgb.data() + static_cast<std::size_t>(row) * RowBytes(picture);
}

void AppendLittleEndian(std::string& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> 8 * i & 0xff);
}

// From the lowest row up, blue before green before red, each row filled up to a multiple of four bytes.
std::string BmpBytes(const Picture& picture, int dots_per_inch) {
  constexpr std::uint32_t kHeader = 14 + 40;
  const std::size_t row_bytes = (RowBytes(picture) + 3) / 4 * 4;
  const auto size = static_cast<std::uint32_t>(row_bytes * static_cast<std::size_t>(picture.height));
  const auto dots_per_metre = static_cast<std::uint32_t>(std::lround(dots_per_inch / 0.0254));
  std::string bytes = "BM";
  bytes.reserve(kHeader + size);
  const auto append = [&bytes](std::uint32_t value, int count) { AppendLittleEndian(bytes, value, count); };
  append(kHeader + size, 4);
  append(0, 4);
  append(kHeader, 4);
  append(40, 4);
  append(static_cast<std::uint32_t>(picture.width), 4);
  append(static_cast<std::uint32_t>(picture.height), 4);
  append(1, 2);   // planes
  append(24, 2);  // bits a pixel
  append(0, 4);   // not packed
  append(size, 4);
  append(dots_per_metre, 4);
  append(dots_per_metre, 4);
  append(0, 4);
  append(0, 4);
  std::string line(row_bytes, '\0');
  for (int row = picture.height - 1; row >= 0; --row) {
    const std::uint8_t* from = Row(picture, row);
    for (std::size_t i = 0; i < RowBytes(picture); i += 3) {
      line[i] = static_cast<char>(from[i + 2]);
      line[i + 1] = static_cast<char>(from[i + 1]);
      line[i + 2] = static_cast<char>(from[i]);
    }
    bytes += line;
  }
  return bytes;
}

// The library's way out of a failure is a jump back to where the work began.
struct JpegFailure {
  jpeg_error_mgr handler{};  // the first member: the library hands out its address
  jmp_buf back{};
};

[[noreturn]] void LeaveJpeg(j_common_ptr work) {
  longjmp(reinterpret_cast<JpegFailure*>(work->err)->back, 1);
}

// Nothing here has a destructor, for a jump would pass it over. Gives the bytes to the caller, who frees
// them.
bool WriteJpeg(const Picture& picture, int dots_per_inch, unsigned char** bytes, unsigned long* size) {
  constexpr int kQuality = 92;
  jpeg_compress_struct work{};
  JpegFailure failure;
  work.err = jpeg_std_error(&failure.handler);
  failure.handler.error_exit = LeaveJpeg;
  jpeg_create_compress(&work);
  if (setjmp(failure.back) != 0) {
    jpeg_destroy_compress(&work);
    return false;
  }
  jpeg_mem_dest(&work, bytes, size);
  work.image_width = static_cast<JDIMENSION>(picture.width);
  work.image_height = static_cast<JDIMENSION>(picture.height);
  work.input_components = 3;
  work.in_color_space = JCS_RGB;
  jpeg_set_defaults(&work);
  jpeg_set_quality(&work, kQuality, TRUE);
  // Dark edges on light surfaces blur when colours are kept for every second pixel only.
  work.comp_info[0].h_samp_factor = work.comp_info[0].v_samp_factor = 1;
  work.density_unit = 1;  // inches
  work.X_density = work.Y_density = static_cast<UINT16>(dots_per_inch);
  jpeg_start_compress(&work, TRUE);
  while (work.next_scanline < work.image_height) {
    JSAMPROW row = const_cast<JSAMPROW>(Row(picture, static_cast<int>(work.next_scanline)));
    jpeg_write_scanlines(&work, &row, 1);
  }
  jpeg_finish_compress(&work);
  jpeg_destroy_compress(&work);
  return true;
}

std::string JpegBytes(const Picture& picture, int dots_per_inch) {
  unsigned char* written = nullptr;
  unsigned long size = 0;
  const bool done = WriteJpeg(picture, dots_per_inch, &written, &size);
  const std::unique_ptr<unsigned char, void (*)(void*)> owner(written, std::free);
  if (!done) throw Refusal("The picture can't be written as JPEG.");
  return {reinterpret_cast<const char*>(written), size};
}

// A file in memory, as the library wants to write one.
struct TiffBuffer {
  std::string bytes;
  std::size_t at = 0;
};

TiffBuffer& Buffer(thandle_t handle) {
  return *static_cast<TiffBuffer*>(handle);
}

tmsize_t ReadTiff(thandle_t handle, void* into, tmsize_t size) {
  TiffBuffer& buffer = Buffer(handle);
  const std::size_t left = buffer.bytes.size() - std::min(buffer.at, buffer.bytes.size());
  const std::size_t count = std::min(static_cast<std::size_t>(size), left);
  std::memcpy(into, buffer.bytes.data() + buffer.at, count);
  buffer.at += count;
  return static_cast<tmsize_t>(count);
}

tmsize_t WriteTiff(thandle_t handle, void* from, tmsize_t size) {
  TiffBuffer& buffer = Buffer(handle);
  const auto count = static_cast<std::size_t>(size);
  if (buffer.bytes.size() < buffer.at + count) buffer.bytes.resize(buffer.at + count);
  std::memcpy(buffer.bytes.data() + buffer.at, from, count);
  buffer.at += count;
  return size;
}

toff_t SeekTiff(thandle_t handle, toff_t to, int whence) {
  TiffBuffer& buffer = Buffer(handle);
  const std::size_t start = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? buffer.at : buffer.bytes.size();
  return buffer.at = start + to;
}

int CloseTiff(thandle_t) {
  return 0;
}

toff_t SizeOfTiff(thandle_t handle) {
  return Buffer(handle).bytes.size();
}

std::string TiffBytes(const Picture& picture, int dots_per_inch) {
  TiffBuffer buffer;
  std::unique_ptr<TIFF, void (*)(TIFF*)> file(
      TIFFClientOpen("picture", "wl", &buffer, ReadTiff, WriteTiff, SeekTiff, CloseTiff, SizeOfTiff, nullptr,
                     nullptr),
      TIFFClose);
  if (!file) throw Refusal("The picture can't be written as TIFF.");
  TIFFSetField(file.get(), TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(picture.width));
  TIFFSetField(file.get(), TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(picture.height));
  TIFFSetField(file.get(), TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(file.get(), TIFFTAG_SAMPLESPERPIXEL, 3);
  TIFFSetField(file.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  TIFFSetField(file.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(file.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  TIFFSetField(file.get(), TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  TIFFSetField(file.get(), TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(file.get(), 0));
  TIFFSetField(file.get(), TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
  TIFFSetField(file.get(), TIFFTAG_XRESOLUTION, static_cast<double>(dots_per_inch));
  TIFFSetField(file.get(), TIFFTAG_YRESOLUTION, static_cast<double>(dots_per_inch));
  // The library packs a row in place when it has to.
  std::vector<std::uint8_t> line(RowBytes(picture));
  for (int row = 0; row < picture.height; ++row) {
    std::memcpy(line.data(), Row(picture, row), line.size());
    if (TIFFWriteScanline(file.get(), line.data(), static_cast<std::uint32_t>(row)) < 0)
      throw Refusal("The picture can't be written as TIFF.");
  }
  if (!TIFFFlush(file.get())) throw Refusal("The picture can't be written as TIFF.");
  file.reset();
  return std::move(buffer.bytes);
}

}  // namespace

std::string PictureBytes(const Picture& picture, PictureFormat format, int dots_per_inch) {
  switch (format) {
    case PictureFormat::kBmp:
      return BmpBytes(picture, dots_per_inch);
    case PictureFormat::kJpeg:
      return JpegBytes(picture, dots_per_inch);
    case PictureFormat::kTiff:
      return TiffBytes(picture, dots_per_inch);
  }
  throw Refusal("The format is unknown.");
}

}  // namespace bench::kernel
