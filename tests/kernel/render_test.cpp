#include <gtest/gtest.h>
#include <tiffio.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <jpeglib.h>

#include "bench/kernel/base64.h"
#include "tests/kernel/scenes.h"

namespace bench::kernel::testing {
namespace {

using Pixel = std::array<std::uint8_t, 3>;

struct Image {
  int width = 0, height = 0;
  std::vector<Pixel> pixels;  // rows from the top

  const Pixel& At(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
};

// What the model's x, y and z are on the screen: right, up, towards the viewer.
const json kFront = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
const json kTop = {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}};
const json kRight = {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}};
const double kHalf = std::sqrt(0.5), kSixth = 1 / std::sqrt(6), kThird = 1 / std::sqrt(3);
const json kSlanted = {{kHalf, -kHalf, 0}, {kSixth, kSixth, std::sqrt(2.0 / 3)}, {-kThird, -kThird, kThird}};

json Request(const json& view, int width, int height, const std::string& format = "bmp") {
  return {{"view", view}, {"width", width}, {"height", height}, {"format", format}};
}

std::string Bytes(const std::vector<json>& models, const json& request) {
  const json answer = Ask("render", models, request);
  EXPECT_TRUE(answer.contains("ok")) << answer;
  return FromBase64(answer["ok"]["bytes"].get<std::string>()).value_or("");
}

std::uint32_t Number(const std::string& bytes, std::size_t at, int size = 4) {
  std::uint32_t number = 0;
  for (int i = 0; i < size; ++i)
    number |= std::uint32_t{static_cast<std::uint8_t>(bytes[at + static_cast<std::size_t>(i)])} << 8 * i;
  return number;
}

Image ReadBmp(const std::string& bytes) {
  EXPECT_EQ(bytes.substr(0, 2), "BM");
  EXPECT_EQ(Number(bytes, 2), bytes.size());
  EXPECT_EQ(Number(bytes, 28, 2), 24u);
  Image image{static_cast<int>(Number(bytes, 18)), static_cast<int>(Number(bytes, 22)), {}};
  const std::size_t row_bytes = (static_cast<std::size_t>(image.width) * 3 + 3) / 4 * 4;
  for (int y = image.height - 1; y >= 0; --y)
    for (int x = 0; x < image.width; ++x) {
      const std::size_t at =
          Number(bytes, 10) + static_cast<std::size_t>(y) * row_bytes + static_cast<std::size_t>(x) * 3;
      image.pixels.push_back({static_cast<std::uint8_t>(bytes[at + 2]),
                              static_cast<std::uint8_t>(bytes[at + 1]),
                              static_cast<std::uint8_t>(bytes[at])});
    }
  return image;
}

Image ReadJpeg(const std::string& bytes) {
  jpeg_decompress_struct work{};
  jpeg_error_mgr errors{};
  work.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&work);
  jpeg_mem_src(&work, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  EXPECT_EQ(jpeg_read_header(&work, TRUE), JPEG_HEADER_OK);
  EXPECT_EQ(work.X_density, 300);
  jpeg_start_decompress(&work);
  Image image{static_cast<int>(work.output_width), static_cast<int>(work.output_height), {}};
  image.pixels.resize(static_cast<std::size_t>(image.width * image.height));
  while (work.output_scanline < work.output_height) {
    JSAMPROW row = image.pixels[work.output_scanline * work.output_width].data();
    jpeg_read_scanlines(&work, &row, 1);
  }
  jpeg_finish_decompress(&work);
  jpeg_destroy_decompress(&work);
  return image;
}

Image ReadTiff(const std::string& bytes) {
  const auto path = std::filesystem::path(::testing::TempDir()) / "kernel_render_test.tif";
  std::ofstream(path, std::ios::binary) << bytes;
  TIFF* file = TIFFOpen(path.c_str(), "r");
  if (!file) return {};
  std::uint32_t width = 0, height = 0;
  TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &width);
  TIFFGetField(file, TIFFTAG_IMAGELENGTH, &height);
  Image image{static_cast<int>(width), static_cast<int>(height), {}};
  image.pixels.resize(static_cast<std::size_t>(width) * height);
  EXPECT_EQ(TIFFScanlineSize(file), static_cast<tmsize_t>(width * 3));
  for (std::uint32_t y = 0; y < height; ++y) TIFFReadScanline(file, image.pixels[y * width].data(), y);
  TIFFClose(file);
  std::filesystem::remove(path);
  return image;
}

Image Shown(const std::vector<json>& models, const json& view, int width = 400, int height = 300) {
  return ReadBmp(Bytes(models, Request(view, width, height)));
}

// 20 · 30 · 10 with a corner in the origin.
json Block() {
  return PartOf({Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30))});
}

struct Drawn {
  int count = 0, left = 1 << 20, right = -1, top = 1 << 20, bottom = -1;
};

// The pixels that aren't background.
Drawn DrawnIn(const Image& image, const Image& background) {
  Drawn drawn;
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x) {
      if (image.At(x, y) == background.At(x, y)) continue;
      ++drawn.count;
      drawn.left = std::min(drawn.left, x);
      drawn.right = std::max(drawn.right, x);
      drawn.top = std::min(drawn.top, y);
      drawn.bottom = std::max(drawn.bottom, y);
    }
  return drawn;
}

TEST(Render, FitsTheSilhouetteIntoThePicture) {
  // 5 % of 400 by 300 at each side leave 360 by 270 pixels.
  const json disc = PartOf({Extrude(1, Front(), {Circle(1, 4, 5, 10)}, {.depth = 5})});
  const struct {
    const char* what;
    json part, view;
    double width, height;  // of the box around it, in pixels
    double area, outline;  // of the silhouette
  } kCases[] = {
      // 20 · 30, 9 pixels a millimetre
      {"front", Block(), kFront, 180, 270, 180 * 270, 900},
      // z to the right and x upwards: 10 · 20, 13.5 pixels a millimetre
      {"top", Block(), kTop, 135, 270, 135 * 270, 810},
      // y to the right and z upwards: 30 · 10, 12 pixels a millimetre
      {"right", Block(), kRight, 360, 120, 360 * 120, 960},
      // Seen from (0, √⅔, √⅓), it shows √⅔ of 20 · 10 and √⅓ of 20 · 30, 509.71 mm². Both ways it is
      // 20 √½ + 30 √⅙ + 10 √⅓ = 32.163 wide; 270 / 32.163 = 8.3947 pixels a millimetre. The outline is a
      // rectangle, 20 by 509.71 / 20.
      {"slanted", Block(), kSlanted, 270, 270, 509.71 * 8.3947 * 8.3947, 2 * 8.3947 * (20 + 509.71 / 20)},
      {"disc", disc, kFront, 270, 270, 135 * 135 * kPi, 270 * kPi},
  };
  for (const auto& c : kCases) {
    const Drawn drawn = DrawnIn(Shown({c.part}, c.view), Shown({PartOf({})}, c.view));
    // The outline itself is a line of a pixel's width, half of it outside, and touches the pixels beside it.
    EXPECT_GE(drawn.count, c.area - 0.01 * c.outline) << c.what;
    EXPECT_LE(drawn.count, c.area + 1.5 * c.outline) << c.what;
    EXPECT_NEAR(drawn.left, 200 - c.width / 2, 1.01) << c.what;
    EXPECT_NEAR(drawn.right + 1, 200 + c.width / 2, 1.01) << c.what;
    EXPECT_NEAR(drawn.top, 150 - c.height / 2, 1.01) << c.what;
    EXPECT_NEAR(drawn.bottom + 1, 150 + c.height / 2, 1.01) << c.what;
  }
}

TEST(Render, ShowsTheBackgroundThroughAHole) {
  const json plate =
      PartOf({Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30)),
              Extrude(2, Front(), {Circle(1, 10, 10, 3)}, {.operation = "cut", .mode = "through_all"})});
  const Image image = Shown({plate}, kFront), empty = Shown({PartOf({})}, kFront);
  // x = 10 lies in the middle; y = 10 lies 90 pixels above the lower side, which is at 285.
  EXPECT_EQ(image.At(200, 195), empty.At(200, 195));
  EXPECT_NE(image.At(200, 150), empty.At(200, 150));
  // The edge of the hole, 27 pixels beside its middle, is darker than the face.
  EXPECT_LT(image.At(227, 195)[0] + 40, image.At(240, 195)[0]);
}

TEST(Render, HidesWhatLiesBehind) {
  const json small = PartOf({Extrude(1, Front(), Rectangle(1, 0, 0, 5, 5))}, "SMALL");
  const auto both = [&](double z) {
    return Shown({Block(), small, AssemblyOf({Placed(1, 0, Shift(0, 0, 0)), Placed(2, 1, Shift(5, 5, z))})},
                 kFront);
  };
  const Image alone = Shown({Block()}, kFront);
  EXPECT_EQ(both(-20).pixels, alone.pixels);
  EXPECT_NE(both(20).pixels, alone.pixels);
}

// The part with the sketches of those features to be seen.
json Showing(json part, const std::vector<int>& sketches) {
  part["sketches"] = sketches;
  return part;
}

json SketchOn(const json& plane, const Entities& entities) {
  return Showing(PartOf({SketchRecipe(1, plane, entities)}), {1});
}

// Like nothing in a picture but what sketches draw.
bool IsBlue(const Pixel& pixel) {
  return pixel[2] > pixel[0] + 60;
}

int CountBlue(const Image& image) {
  return static_cast<int>(std::ranges::count_if(image.pixels, IsBlue));
}

TEST(Render, DrawsACircleWhereItLies) {
  // Seen from above the radius of 10 is half of 270 pixels, and the picture's middle is the circle's.
  const json circle = SketchOn(Top(), {Circle(1, 4, 5, 10)});
  const Image image = Shown({circle}, kTop), empty = Shown({PartOf({})}, kTop);
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x)
      if (image.At(x, y) != empty.At(x, y)) {
        // Half of the line's width of 1.4, and the way from a pixel's middle to its corner.
        ASSERT_NEAR(std::hypot(x + 0.5 - 200, y + 0.5 - 150), 135, 0.7 + 0.71) << x << ", " << y;
      }
  for (int degrees = 0; degrees < 360; ++degrees) {
    const double angle = degrees * kPi / 180;
    const int x = static_cast<int>(200 + 135 * std::cos(angle)),
              y = static_cast<int>(150 - 135 * std::sin(angle));
    EXPECT_TRUE(IsBlue(image.At(x, y))) << degrees;
  }
}

TEST(Render, FitsSketchesIntoThePicture) {
  const json circle = SketchOn(Front(), {Circle(1, 0, 0, 10)});
  const json text = {{"id", 1}, {"type", "text"}, {"from", {5, 5}}, {"to", {45, 15}}, {"text", "HEX"}};
  const json pattern = {
      {"feature", 2}, {"kind", "pattern"}, {"members", {1}}, {"motions", {Shift(30, 0, 0)}}};
  const struct {
    const char* what;
    std::vector<json> models;
    double width, height;  // of the box around what is drawn, in pixels
  } kCases[] = {
      {"a line", {SketchOn(Front(), {Line(1, 7, 3, 17, 3)})}, 360, 0},
      {"an arc", {SketchOn(Front(), {Arc(1, 0, 0, 10, 0, kPi)})}, 360, 180},
      {"an ellipse", {SketchOn(Front(), {Ellipse(1, 3, 3, 10, 20)})}, 135, 270},
      {"a spline", {SketchOn(Front(), {Spline(1, {{0, 0}, {20, 10}, {40, 0}})})}, 360, 90},
      {"the box of a text", {SketchOn(Front(), {text})}, 360, 90},
      {"beside a solid",
       {Showing(PartOf({Brick(), SketchRecipe(42, Front(), {Line(1, 0, -20, 40, -20)})}), {42})},
       // 40 by 20 + 30
       216,
       270},
      // 50 by 20
      {"two in an assembly",
       {circle, AssemblyOf({Placed(1, 0, Shift(0, 0, 0)), Placed(2, 0, Shift(30, 0, 0))})},
       360,
       144},
      {"repeated by a pattern",
       {Showing(PartOf({SketchRecipe(1, Front(), {Circle(1, 0, 0, 10)}), pattern}), {1, 2})},
       360,
       144},
      // Crosses reach 3.5 pixels from the points.
      {"two points", {SketchOn(Front(), {Point(1, 0, 0), Point(2, 20, 10)})}, 367, 187},
      {"a point", {SketchOn(Front(), {Point(1, 50, 60)})}, 7, 7},
      {"a line that is seen as a point", {SketchOn(Right(), {Line(1, 0, 0, 30, 0)})}, 0, 0},
  };
  for (const auto& c : kCases) {
    const Drawn drawn = DrawnIn(Shown(c.models, kFront), Shown({PartOf({})}, kFront));
    // Half of a line's width, and the rest of a pixel.
    EXPECT_NEAR(drawn.left, 200 - c.width / 2, 1.71) << c.what;
    EXPECT_NEAR(drawn.right + 1, 200 + c.width / 2, 1.71) << c.what;
    EXPECT_NEAR(drawn.top, 150 - c.height / 2, 1.71) << c.what;
    EXPECT_NEAR(drawn.bottom + 1, 150 + c.height / 2, 1.71) << c.what;
  }
}

TEST(Render, HidesSketchesBehindSolids) {
  const auto with_circle_at = [](double z) {
    const json sketch = SketchRecipe(2, FrontAt(z), {Circle(1, 10, 15, 5)});
    return Showing(PartOf({Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30)), sketch}), {2});
  };
  const Image alone = Shown({Block()}, kFront);
  EXPECT_EQ(Shown({with_circle_at(-1)}, kFront).pixels, alone.pixels);
  EXPECT_EQ(Shown({with_circle_at(9)}, kFront).pixels, alone.pixels);
  // On the upper face it is seen whole, from wherever that is seen. The block's middle is the picture's.
  const struct {
    const json& view;
    double scale;  // pixels a millimetre
  } kViews[] = {{kFront, 9}, {kSlanted, 8.3947}};
  for (const auto& [view, scale] : kViews) {
    const Image image = Shown({with_circle_at(10)}, view);
    for (int degrees = 0; degrees < 360; degrees += 3) {
      const double angle = degrees * kPi / 180, from_middle[] = {5 * std::cos(angle), 5 * std::sin(angle), 5};
      double across = 0, up = 0;
      for (std::size_t i = 0; i < 3; ++i) {
        across += from_middle[i] * view[i][0].get<double>();
        up += from_middle[i] * view[i][1].get<double>();
      }
      EXPECT_TRUE(
          IsBlue(image.At(static_cast<int>(200 + across * scale), static_cast<int>(150 - up * scale))))
          << degrees;
    }
  }
}

TEST(Render, DrawsNoSketchThatIsNotToBeShown) {
  const Recipes recipes = {SketchRecipe(1, Front(), {Circle(1, 50, 50, 50), Point(2, -50, 0)}),
                           Extrude(2, Front(), Rectangle(1, 0, 0, 20, 30))};
  const Image alone = Shown({Block()}, kSlanted);
  EXPECT_EQ(Shown({PartOf(recipes)}, kSlanted).pixels, alone.pixels);
  // A solid draws nothing of its own, nor does a feature that isn't there.
  EXPECT_EQ(Shown({Showing(PartOf(recipes), {2, 77})}, kSlanted).pixels, alone.pixels);
  EXPECT_GT(CountBlue(Shown({Showing(PartOf(recipes), {1})}, kSlanted)), 200);
  // Nothing but background.
  EXPECT_EQ(Shown({SketchOn(Front(), {})}, kFront).pixels, Shown({PartOf({})}, kFront).pixels);
}

TEST(Render, DrawsConstructionAndCenterlinesDashedAndPaler) {
  // 360 pixels of line; of dashes 6.3 and gaps 4.2 long, rounded ends included, some two thirds of it.
  const auto columns = [](const json& line) {
    const Image image = Shown({SketchOn(Front(), {line})}, kFront, 400, 301);
    int count = 0, darkest = 255;
    for (int x = 0; x < image.width; ++x) {
      count += IsBlue(image.At(x, 150));
      darkest = std::min<int>(darkest, image.At(x, 150)[0]);
    }
    return std::pair(count, darkest);
  };
  const auto [whole, dark] = columns(Line(1, 0, 0, 40, 0));
  EXPECT_NEAR(whole, 360, 3);
  for (const json& guide : {AsConstruction(Line(1, 0, 0, 40, 0)), Centerline(1, 0, 0, 40, 0)}) {
    const auto [dashed, pale] = columns(guide);
    EXPECT_GT(dashed, 360 * 0.55);
    EXPECT_LT(dashed, 360 * 0.8);
    EXPECT_GT(pale, dark + 40);
  }
}

TEST(Render, WritesEachFormatAtTheAskedSize) {
  json request = Request(kSlanted, 321, 123);
  const Image bmp = ReadBmp(Bytes({Block()}, request));
  request["format"] = "tiff";
  const Image tiff = ReadTiff(Bytes({Block()}, request));
  request["format"] = "jpeg";
  request["dots_per_inch"] = 300;
  const Image jpeg = ReadJpeg(Bytes({Block()}, request));
  for (const Image* image : {&bmp, &tiff, &jpeg}) {
    EXPECT_EQ(image->width, 321);
    EXPECT_EQ(image->height, 123);
  }
  EXPECT_EQ(tiff.pixels, bmp.pixels);
  double away = 0;
  for (std::size_t i = 0; i < bmp.pixels.size(); ++i) away += std::abs(bmp.pixels[i][1] - jpeg.pixels[i][1]);
  EXPECT_LT(away / static_cast<double>(bmp.pixels.size()), 2) << "levels of 255 a pixel";
  const Image least = Shown({Block()}, kFront, 1, 1);
  EXPECT_EQ(least.pixels.size(), 1u);
}

TEST(Render, OfSenselessRequestsIsAnError) {
  const json mirrored = {{1, 0, 0}, {0, 1, 0}, {0, 0, -1}}, scaled = {{2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
  const json kCases[] = {Request(kFront, 0, 100),      Request(kFront, 100, 10001),
                         Request(kFront, 9, 9, "png"), Request(mirrored, 100, 100),
                         Request(scaled, 100, 100),    Request({1, 0, 0}, 100, 100)};
  for (const json& request : kCases)
    EXPECT_TRUE(Ask("render", {Block()}, request).contains("error")) << request;
  json named = Block();
  named["sketches"] = {"S"};
  EXPECT_TRUE(Ask("render", {named}, Request(kFront, 100, 100)).contains("error"));
}

}  // namespace
}  // namespace bench::kernel::testing
