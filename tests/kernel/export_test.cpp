#include <gtest/gtest.h>

#include <IGESControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "bench/kernel/measures.h"
#include "bench/kernel/requests.h"
#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

// A plate of 20 · 30 · 10 with a hole of radius 3.
Recipes Plate() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30)),
          Extrude(2, Front(), {Circle(1, 10, 10, 3)}, {.operation = "cut", .mode = "through_all"})};
}
constexpr double kPlate = 6000 - 90 * kPi;

json Export(const std::string& format, const Recipes& recipes, const std::string& name = "BRACKET") {
  Requests requests;
  const json request = {
      {"id", 1}, {"do", "export"}, {"format", format}, {"name", name}, {"recipes", recipes}};
  return json::parse(requests.Answer(request.dump())).at("ok");
}

std::string Decoded(const std::string& text) {
  static const std::string kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char letter : text) {
    if (letter == '=') break;
    bits = bits << 6 | static_cast<std::uint32_t>(kLetters.find(letter));
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xff);
  }
  return bytes;
}

std::string Bytes(const std::string& format, const Recipes& recipes, const std::string& name = "BRACKET") {
  const json answer = Export(format, recipes, name);
  EXPECT_TRUE(answer.contains("bytes")) << answer;
  return Decoded(answer.value("bytes", ""));
}

// What the reader makes of the bytes of a file.
template <typename Reader>
NamedShape ReadBack(const std::string& bytes) {
  const auto file = std::filesystem::path(::testing::TempDir()) / "kernel_export_test.part";
  std::ofstream(file, std::ios::binary) << bytes;
  Reader reader;
  EXPECT_EQ(reader.ReadFile(file.c_str()), IFSelect_RetDone);
  reader.TransferRoots();
  std::filesystem::remove(file);
  NamedShape shape;
  shape.solids = SolidsIn(reader.OneShape());
  return shape;
}

TEST(Step, ReadsBackAsTheSameSolid) {
  Bytes("step", Plate(), "FIRST");
  const std::string bytes = Bytes("step", Plate(), "SECOND'S");
  const NamedShape back = ReadBack<STEPControl_Reader>(bytes);
  ASSERT_EQ(back.solids.size(), 1u);
  ExpectClose(VolumeOf(back), kPlate);
  EXPECT_NE(bytes.find("PRODUCT('SECOND''S','SECOND''S'"), std::string::npos) << "each export has its name";
  EXPECT_NE(bytes.find("SI_UNIT(.MILLI.,.METRE.)"), std::string::npos);
}

TEST(Step, OfSeveralSolidsIsOneProduct) {
  Recipes recipes = Plate();
  recipes.push_back(Extrude(3, Front(), Rectangle(1, 50, 0, 5, 5)));
  const std::string bytes = Bytes("step", recipes);
  const NamedShape back = ReadBack<STEPControl_Reader>(bytes);
  EXPECT_EQ(back.solids.size(), 2u);
  ExpectClose(VolumeOf(back), kPlate + 250);
  const std::size_t first = bytes.find("= PRODUCT(");
  EXPECT_NE(first, std::string::npos);
  EXPECT_EQ(bytes.find("= PRODUCT(", first + 1), std::string::npos);
}

TEST(Iges, ReadsBackAsTheSameSolid) {
  const std::string bytes = Bytes("iges", Plate());
  const NamedShape back = ReadBack<IGESControl_Reader>(bytes);
  ASSERT_EQ(back.solids.size(), 1u);
  ExpectClose(VolumeOf(back), kPlate);
  EXPECT_NE(bytes.find("2HMM"), std::string::npos);
  EXPECT_NE(bytes.find("7HBRACKET"), std::string::npos);
}

TEST(Export, OfNoSolidIsAValidFileWithTheNameButForStl) {
  const std::string step = Bytes("step", {}, "EMPTY_ASM");
  EXPECT_TRUE(ReadBack<STEPControl_Reader>(step).IsEmpty());
  EXPECT_NE(step.find("PRODUCT('EMPTY_ASM'"), std::string::npos);
  const std::string iges = Bytes("iges", {}, "EMPTY");
  EXPECT_TRUE(ReadBack<IGESControl_Reader>(iges).IsEmpty());
  EXPECT_NE(iges.find("5HEMPTY"), std::string::npos);
  EXPECT_EQ(Export("stl", {})["refused"], "There is no solid to write as STL.");
}

float Number(const std::string& bytes, std::size_t at) {
  float number = 0;
  std::memcpy(&number, bytes.data() + at, sizeof number);
  return number;
}

// The volume that the facets of a binary file enclose: the sum of a · (b × c) / 6.
double FacetVolume(const std::string& bytes, std::uint32_t count) {
  double sum = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    double p[9];
    for (int k = 0; k < 9; ++k) p[k] = Number(bytes, 84 + 50 * i + 12 + 4 * k);
    sum += p[0] * (p[4] * p[8] - p[5] * p[7]) - p[1] * (p[3] * p[8] - p[5] * p[6]) +
           p[2] * (p[3] * p[7] - p[4] * p[6]);
  }
  return sum / 6;
}

std::uint32_t FacetCount(const std::string& bytes) {
  std::uint32_t count = 0;
  std::memcpy(&count, bytes.data() + 80, sizeof count);
  EXPECT_EQ(bytes.size(), 84 + 50 * std::size_t{count});
  return count;
}

TEST(Stl, OfABlockHasTwoFacetsASide) {
  const std::string bytes = Bytes("stl", {Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30))});
  EXPECT_EQ(FacetCount(bytes), 12u);
  ExpectClose(FacetVolume(bytes, 12), 6000);
  EXPECT_EQ(bytes.substr(0, 11), "STL BRACKET");
}

TEST(Stl, FollowsCurvedFacesAtAnySize) {
  for (const double r : {0.5, 50.0, 5000.0}) {
    const std::string bytes = Bytes("stl", {Extrude(1, Front(), {Circle(1, 0, 0, r)}, {.depth = r})});
    const double volume = FacetVolume(bytes, FacetCount(bytes));
    EXPECT_LT(volume, kPi * r * r * r);
    EXPECT_GT(volume, 0.99 * kPi * r * r * r) << r;
  }
}

TEST(Stl, LeavesThePartAsItWas) {
  Requests requests;
  const json regenerate = {{"id", 1}, {"do", "regenerate"}, {"recipes", Plate()}};
  const json write = {{"id", 1}, {"do", "export"}, {"format", "stl"}, {"name", "A"}, {"recipes", Plate()}};
  const std::string before = requests.Answer(regenerate.dump());
  requests.Answer(write.dump());
  EXPECT_EQ(requests.Answer(regenerate.dump()), before);
  EXPECT_EQ(requests.regenerator().features_built(), 2);
}

}  // namespace
}  // namespace bench::kernel::testing
