// Screenshots: where they go, what the host is asked for, the window's view afterwards, and the picture
// inside the result as a decoder sees it that is not the add-in's.
#include <gmock/gmock.h>
#include <windows.h>

#include <wincodec.h>

#include <fstream>
#include <random>
#include <tuple>

#include "addin/ops/exchange/inline_picture.h"
#include "addin/ops/exchange/screenshot_path.h"
#include "addin/platform/temporary_file.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/kernel_link/base64.h"
#include "tests/support/operation_fixture.h"
#include "tests/support/scoped_environment.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kShot = L"api_export_screenshot";

template <typename T>
struct Release {
  void operator()(T* object) const { object->Release(); }
};
template <typename T>
using Com = std::unique_ptr<T, Release<T>>;

struct Decoded {
  unsigned width = 0, height = 0;
  GUID container{};
  std::size_t bytes = 0;
};

// The system's own codecs, which the add-in does not use.
Decoded Decode(const std::string& base64) {
  std::string bytes = bench::DecodeBase64(base64).value_or("");
  Decoded decoded;
  decoded.bytes = bytes.size();
  void* made = nullptr;
  if (FAILED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IWICImagingFactory, &made)))
    throw std::runtime_error("no codecs");
  const Com<IWICImagingFactory> factory(static_cast<IWICImagingFactory*>(made));
  IWICStream* stream = nullptr;
  factory->CreateStream(&stream);
  const Com<IWICStream> owned_stream(stream);
  stream->InitializeFromMemory(reinterpret_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()));
  IWICBitmapDecoder* decoder = nullptr;
  if (FAILED(factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand, &decoder)))
    return decoded;
  const Com<IWICBitmapDecoder> owned_decoder(decoder);
  decoder->GetContainerFormat(&decoded.container);
  IWICBitmapFrameDecode* frame = nullptr;
  if (FAILED(decoder->GetFrame(0, &frame))) return decoded;
  const Com<IWICBitmapFrameDecode> owned_frame(frame);
  std::vector<BYTE> row(4 * 20'000);
  frame->GetSize(&decoded.width, &decoded.height);
  const WICRect last{0, static_cast<INT>(decoded.height) - 1, static_cast<INT>(decoded.width), 1};
  EXPECT_TRUE(SUCCEEDED(
      frame->CopyPixels(&last, static_cast<UINT>(row.size()), static_cast<UINT>(row.size()), row.data())));
  return decoded;
}

class Screenshot : public OperationTest {
 protected:
  static void SetUpTestSuite() { ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  static void TearDownTestSuite() { ::CoUninitialize(); }

  void SetUp() override {
    OperationTest::SetUp();
    TemporaryDirectory(temporary_);
    bitmaps_ = Bitmaps();
  }
  // However a shot ends, the window shows what it showed and no bitmap is left.
  void TearDown() override {
    if (host().CurrentModel() != nullptr) {
      EXPECT_EQ(Current().view, bench::Model().view);
    }
    EXPECT_EQ(Bitmaps(), bitmaps_);
    OperationTest::TearDown();
  }
  std::size_t Bitmaps() const {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(temporary_))
      count += entry.path().filename().wstring().starts_with(L"vek") && entry.path().extension() == L".bmp";
    return count;
  }

  std::wstring Arguments(const std::wstring& file, const std::wstring& more = L"") const {
    return Format(LR"({"output_path":"%s"%s})", JsonPath(file), more);
  }

  std::wstring temporary_;

 private:
  std::size_t bitmaps_ = 0;
};

TEST_F(Screenshot, TurnsTheWindowForTheShotOnly) {
  NewPart();
  Block(40, 20, 10);
  const std::uint64_t mark = host().journal.Mark();
  const auto result =
      Run(kShot, Arguments(L"new\\deep\\a.PNG", LR"(,"view":" Top","width_px":320.9,"height_px":180)"));
  EXPECT_EQ(result.message, L"Screenshot captured (320x180, view=top).");
  const auto data = nlohmann::json::parse(EncodeUtf8(result.dataJson));
  EXPECT_EQ(data.at("output_path"), EncodeUtf8(Full(L"new\\deep\\a.PNG")));
  EXPECT_EQ(data.at("view"), "top");
  EXPECT_EQ(data.at("screenshot_media_type"), "image/png");
  const Decoded decoded = Decode(data.at("screenshot_base64"));
  EXPECT_EQ(std::pair(decoded.width, decoded.height), std::pair(321u, 180u));
  EXPECT_EQ(decoded.container, GUID_ContainerFormatPng);
  const std::vector<std::string> calls = {"ProViewMatrixGet",   "ProViewMatrixSet", "ProWindowRepaint",
                                          "ProRasterFileWrite", "ProViewMatrixSet", "ProWindowRepaint"};
  EXPECT_EQ(CallsSince(mark, calls), calls);
  EXPECT_TRUE(Bytes(L"new\\deep\\a.PNG").starts_with("\x89PNG\r\n\x1a\n"));
}

TEST_F(Screenshot, EachExtensionHasItsWriterAndASizeInInches) {
  NewPart();
  Block(40, 20, 10);
  // In inches of 100 pixels; the host is asked for one pixel at least.
  const std::tuple<const wchar_t*, int, int, const char*, const char*> cases[] = {
      {L"a.bMp", 0, 40, ", 2, 0.01, 0.4, 100, 0, ", "BM"},
      {L"a.Jpg", 64, 48, ", 2, 0.64, 0.48, 100, 3, ", "\xff\xd8"},
      {L"a.JPEG", 64, 48, ", 2, 0.64, 0.48, 100, 3, ", "\xff\xd8"},
      {L"a.tIF", 64, 48, ", 2, 0.64, 0.48, 100, 1, ", "II"},
      {L"a.TIFF", 64, 48, ", 2, 0.64, 0.48, 100, 1, ", "II"}};
  for (const auto& [name, width, height, call, head] : cases) {
    const std::uint64_t mark = host().journal.Mark();
    EXPECT_EQ(Run(kShot, Arguments(name, Format(LR"(,"width_px":%d,"height_px":%d)", width, height))).message,
              Format(L"Screenshot captured (%dx%d, view=iso).", width, height));
    for (const auto& entry : host().journal.Since(mark))
      if (entry.name == "ProRasterFileWrite") {
        EXPECT_THAT(entry.arguments, testing::HasSubstr(call));
      }
    EXPECT_TRUE(Bytes(name).starts_with(head)) << EncodeUtf8(name);
  }
}

TEST_F(Screenshot, ThePictureInTheResultIsAsSmallAsAsked) {
  NewPart();
  Block(40, 20, 10);
  // 1080 * 5 / 6 = 900; 100 * 180 / 320 = 56.25; nothing is enlarged; 0 counts as 1.
  const struct {
    const wchar_t *file, *sizes;
    unsigned width, height;
  } cases[] = {
      {L"a.png", L"", 1600, 900},
      {L"b.bmp", L",\"width_px\":320,\"height_px\":180,\"max_dim_px\":100.9", 100, 56},
      {L"c.jpg", L",\"width_px\":90,\"height_px\":160,\"max_dim_px\":200", 90, 160},
      {L"d.tif", L",\"width_px\":90,\"height_px\":160,\"max_dim_px\":0", 1, 1},
  };
  for (const auto& [file, sizes, width, height] : cases) {
    const auto data = Succeed(kShot, Arguments(file, sizes));
    const Decoded decoded = Decode(data.at("screenshot_base64"));
    EXPECT_EQ(std::pair(decoded.width, decoded.height), std::pair(width, height)) << EncodeUtf8(file);
    EXPECT_LE(decoded.bytes, 700'000u);
  }
}

// Noise takes three bytes a pixel as PNG and some 0.6 as JPEG: 1120² * 0.6 is above 750,000.
TEST_F(Screenshot, ANoisyPictureIsShrunkUntilItFitsOrLeftOut) {
  constexpr int kSide = 1120;
  BITMAPFILEHEADER file{0x4d42, 54 + 3 * kSide * kSide, 0, 0, 54};
  BITMAPINFOHEADER info{sizeof(BITMAPINFOHEADER), kSide, kSide, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
  std::string pixels(3 * kSide * kSide, '\0');
  std::mt19937 random(1);
  for (char& byte : pixels) byte = static_cast<char>(random());
  const std::wstring path = Full(L"noise.bmp");
  {
    std::ofstream stream(directory() / L"noise.bmp", std::ios::binary);
    stream.write(reinterpret_cast<char*>(&file), sizeof file)
        .write(reinterpret_cast<char*>(&info), sizeof info);
    stream << pixels;
  }
  std::wstring base64, media_type;
  exchange::BuildInlineImage(path, kSide, base64, media_type);
  EXPECT_EQ(media_type, L"image/jpeg");
  const Decoded decoded = Decode(EncodeUtf8(base64));
  EXPECT_EQ(decoded.container, GUID_ContainerFormatJpeg);
  EXPECT_LE(decoded.bytes, 700'000u);
  EXPECT_EQ(decoded.width, decoded.height);
  EXPECT_EQ(kSide % decoded.width, 0u);
  // Four halvings of this limit never reach the picture's own size.
  exchange::BuildInlineImage(path, kSide * 8, base64, media_type);
  EXPECT_TRUE(base64.empty() && media_type.empty());
}

TEST_F(Screenshot, APathIsAbsoluteOrStaysInTheScreenshotsFolder) {
  const std::wstring base = temporary_ + LR"(VekAI\Screenshots)";
  const std::wstring climbs =
      LR"(Relative screenshot output_path must stay under %TEMP%\\VekAI\\Screenshots (path traversal with '..' is not allowed).)";
  const std::wstring long_name(260, L'x');
  const struct {
    std::wstring path, resolved, error;
  } cases[] = {
      {L"a.png", base + L"\\a.png", L""},
      {L"sub/b\\a.png", base + L"\\sub\\b\\a.png", L""},
      {L"sub\\..\\a.png", base + L"\\a.png", L""},
      {L"..\\SCREENSHOTS\\a.png", temporary_ + L"VekAI\\SCREENSHOTS\\a.png", L""},
      {L"\\a.png", base + L"\\a.png", L""},
      {L"..\\..\\a.png", L"", climbs},
      {L"..\\Screenshots2\\a.png", L"", climbs},
      {LR"(C:\x\..\y\a.png)", LR"(C:\y\a.png)", L""},
      {LR"(\\host\share\x\..\a.png)", LR"(\\host\share\a.png)", L""},
      {L"", L"", L"'output_path' argument is required."},
      {long_name, L"", L"Failed to resolve screenshot output_path."},
      {L"C:\\" + long_name, L"", L"Failed to resolve absolute screenshot output_path."},
  };
  for (const auto& [path, expected, message] : cases) {
    std::wstring resolved, error;
    EXPECT_EQ(exchange::ResolveScreenshotPath(path, resolved, error), message.empty()) << EncodeUtf8(path);
    EXPECT_EQ(error, message);
    EXPECT_EQ(message.empty() ? resolved : L"", expected);
  }

  {
    const ScopedEnvironment endless(L"TMP", L"C:\\" + long_name);
    ExpectFailure(kShot, LR"({"output_path":"a.png"})",
                  L"Failed to resolve TEMP directory for screenshot output.");
  }

  // The folders are made on the way.
  NewPart();
  const std::wstring own = Format(L"vek_test_%lu", ::GetCurrentProcessId());
  EXPECT_TRUE(
      Run(kShot, Format(LR"({"output_path":"%s\\deep\\a.bmp","width_px":8,"height_px":8})", own)).success);
  const auto folder = std::filesystem::path(base) / own;
  EXPECT_TRUE(std::filesystem::exists(folder / L"deep\\a.bmp"));
  std::filesystem::remove_all(folder);
}

TEST_F(Screenshot, WhatIsRefusedTouchesNothing) {
  const std::uint64_t mark = host().journal.Mark();
  std::ofstream(directory() / L"taken.png") << "in the way";
  ExpectFailure(kShot, Arguments(L"a.gif"),
                L"output_path must end with .png, .bmp, .jpg, .jpeg, .tif, or .tiff.");
  ExpectFailure(kShot, Arguments(L"taken.png\\sub\\a.png"),
                L"Failed to create destination directory '" + Full(L"taken.png\\sub") + L"'.");
  ExpectFailure(
      kShot, Arguments(L"taken.png"),
      L"File already exists: '" + Full(L"taken.png") + L"'. Choose another path (overwrite is not allowed).");
  EXPECT_TRUE(CallsSince(mark).empty());

  NewPart().type = PRO_MDL_DRAWING;
  ExpectFailure(kShot, Arguments(L"a.png"),
                L"Screenshot export is currently supported for model windows only, not drawings.");
  Current().type = PRO_MDL_PART;
}

TEST_F(Screenshot, WhatFailsOnTheWayGivesTheViewBack) {
  NewPart();
  Block(40, 20, 10);
  const std::wstring small = LR"(,"view":"right","width_px":8,"height_px":8)";
  // The bitmap isn't there.
  faults().NoEffect("ProRasterFileWrite");
  ExpectFailure(kShot, Arguments(L"a.png", small), L"Screenshot was captured, but PNG conversion failed.");
  // Nor is the picture, which then isn't in the result.
  faults().NoEffect("ProRasterFileWrite");
  EXPECT_EQ(Succeed(kShot, Arguments(L"a.bmp", small)).size(), 2u);
  // The model's own window serves where none is current.
  faults().Fail("ProWindowCurrentGet", -1);
  EXPECT_EQ(Succeed(kShot, Arguments(L"b.bmp", small)).size(), 4u);
  // Where no temporary file can be, a bitmap has no room; other pictures need none.
  const ScopedEnvironment nowhere(L"TMP", Full(L"nowhere"));
  ExpectFailure(kShot, Arguments(L"d.png", small), L"Failed to allocate temporary BMP path.");
  Succeed(kShot, Arguments(L"d.bmp", small));
  // A view that couldn't be read can't be given back.
  const bench::Matrix before = Current().view;
  faults().Fail("ProViewMatrixGet", -1);
  Succeed(kShot, Arguments(L"c.bmp", small));
  EXPECT_NE(Current().view, before);
  Current().view = before;
}

}  // namespace
}  // namespace vek::support
