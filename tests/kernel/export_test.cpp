#include <gtest/gtest.h>
#include <unistd.h>

#include <IGESControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <TCollection_HAsciiString.hxx>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "bench/kernel/bounds.h"
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

json PartModel(const std::string& name, const Recipes& recipes) {
  return {{"name", name}, {"recipes", recipes}};
}

// The models of a scene; the last one is the root.
using Models = std::vector<json>;

json ExportRequest(const std::string& format, const Models& models) {
  return {{"id", 1}, {"do", "export"}, {"format", format}, {"models", models}, {"root", models.size() - 1}};
}

json Export(const std::string& format, const Models& models) {
  Requests requests;
  return json::parse(requests.Answer(ExportRequest(format, models).dump()));
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

std::string Bytes(const std::string& format, const Models& models) {
  const json answer = Export(format, models);
  EXPECT_TRUE(answer.contains("ok") && answer["ok"].contains("bytes")) << answer;
  return Decoded(answer["ok"].value("bytes", ""));
}

std::string Bytes(const std::string& format, const Recipes& recipes, const std::string& name) {
  return Bytes(format, {PartModel(name, recipes)});
}

// What the reader makes of the bytes of a file.
template <typename Reader>
NamedShape ReadBack(const std::string& bytes) {
  // Suites run side by side.
  const auto file =
      std::filesystem::path(::testing::TempDir()) / ("kernel_export_test." + std::to_string(getpid()));
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
  const std::string bytes = Bytes("step", recipes, "TWO");
  const NamedShape back = ReadBack<STEPControl_Reader>(bytes);
  EXPECT_EQ(back.solids.size(), 2u);
  ExpectClose(VolumeOf(back), kPlate + 250);
  const std::size_t first = bytes.find("= PRODUCT(");
  EXPECT_NE(first, std::string::npos);
  EXPECT_EQ(bytes.find("= PRODUCT(", first + 1), std::string::npos);
}

TEST(Iges, ReadsBackAsTheSameSolid) {
  const std::string bytes = Bytes("iges", Plate(), "BRACKET");
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
  EXPECT_EQ(Export("stl", {PartModel("EMPTY", {})})["ok"]["refused"], "There is no solid to write as STL.");
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
  const std::string bytes = Bytes("stl", {Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30))}, "BRACKET");
  EXPECT_EQ(FacetCount(bytes), 12u);
  ExpectClose(FacetVolume(bytes, 12), 6000);
  EXPECT_EQ(bytes.substr(0, 11), "STL BRACKET");
}

TEST(Stl, FollowsCurvedFacesAtAnySize) {
  for (const double r : {0.5, 50.0, 5000.0}) {
    const std::string bytes = Bytes("stl", {Extrude(1, Front(), {Circle(1, 0, 0, r)}, {.depth = r})}, "ROD");
    const double volume = FacetVolume(bytes, FacetCount(bytes));
    EXPECT_LT(volume, kPi * r * r * r);
    EXPECT_GT(volume, 0.99 * kPi * r * r * r) << r;
  }
}

TEST(Stl, LeavesThePartAsItWas) {
  Requests requests;
  const json regenerate = {{"id", 1}, {"do", "regenerate"}, {"recipes", Plate()}};
  const json write = ExportRequest("stl", {PartModel("A", Plate())});
  const std::string before = requests.Answer(regenerate.dump());
  requests.Answer(write.dump());
  EXPECT_EQ(requests.Answer(regenerate.dump()), before);
  EXPECT_EQ(requests.regenerator().features_built(), 2);
}

// A quarter turn about Z, then the shift: x' = -y + dx, y' = x + dy, z' = z + dz.
std::vector<double> TurnedTo(double dx, double dy, double dz) {
  return {0, -1, 0, dx, 1, 0, 0, dy, 0, 0, 1, dz};
}
std::vector<double> ShiftedTo(double dx, double dy, double dz) {
  return {1, 0, 0, dx, 0, 1, 0, dy, 0, 0, 1, dz};
}
json Component(int id, int model, const std::vector<double>& place) {
  return {{"id", id}, {"model", model}, {"place", place}};
}

// Two like parts of 20 · 30 · 10, a pair of the first turned and shifted, and a machine of the pair twice,
// the copy in place, twins of it, what is empty, and the pair again at a quarter turn.
Models Machine() {
  const Recipes block = {Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30))};
  const json pair = Entities{Component(5, 0, ShiftedTo(0, 0, 0)), Component(6, 0, TurnedTo(100, 0, 5))};
  const json machine = Entities{Component(11, 3, ShiftedTo(0, 0, 50)), Component(12, 1, ShiftedTo(0, 0, 0)),
                                Component(13, 1, ShiftedTo(0, 0, 0)),  Component(14, 2, ShiftedTo(9, 9, 9)),
                                Component(15, 3, TurnedTo(0, 200, 0)), Component(16, 4, ShiftedTo(1, 1, 1))};
  return {PartModel("BLOCK", block),
          PartModel("COPY", block),
          PartModel("NOTHING", {}),
          {{"name", "PAIR"}, {"components", pair}},
          {{"name", "BARE"}, {"components", json::array()}},
          {{"name", "MACHINE"}, {"components", machine}}};
}

// The boxes of the machine's solids, worked out from the corners (0, 0, 0) and (20, 30, 10) of a block.
const std::vector<std::vector<double>> kMachineBoxes = {
    {0, 0, 50, 20, 30, 60},      // 11, 5
    {70, 0, 55, 100, 20, 65},    // 11, 6: x from 100 - 30 to 100, y from 0 to 20, z from 5; then 50 up
    {0, 0, 0, 20, 30, 10},       // 12
    {0, 0, 0, 20, 30, 10},       // 13
    {-30, 200, 0, 0, 220, 10},   // 15, 5: x from -30 to 0, y from 200 to 220
    {-20, 270, 5, 0, 300, 15}};  // 15, 6: x from -20 to 0, y from 200 + 70 to 200 + 100

std::vector<double> Numbers(const Bounds& bounds) {
  return {bounds.low.X(), bounds.low.Y(), bounds.low.Z(), bounds.high.X(), bounds.high.Y(), bounds.high.Z()};
}

void ExpectMachine(const NamedShape& shape) {
  std::vector<std::vector<double>> boxes;
  for (const TopoDS_Solid& solid : shape.solids) boxes.push_back(Numbers(BoundsOf(solid)));
  ASSERT_EQ(boxes.size(), kMachineBoxes.size());
  for (const auto& expected : kMachineBoxes) {
    const auto found = std::ranges::find_if(boxes, [&](const auto& box) {
      return std::ranges::equal(box, expected, [](double a, double b) { return std::abs(a - b) < 1e-6; });
    });
    if (found == boxes.end()) {
      ADD_FAILURE() << "no solid at " << json(expected) << " among " << json(boxes);
      return;
    }
    boxes.erase(found);
  }
}

TEST(Step, OfAnAssemblyHasEachSolidInPlace) {
  ExpectMachine(ReadBack<STEPControl_Reader>(Bytes("step", Machine())));
}

TEST(Step, OfAnAssemblyNestsProductsThatAreEachThereOnce) {
  const auto file = std::filesystem::path(::testing::TempDir()) / "kernel_export_test.stp";
  std::ofstream(file, std::ios::binary) << Bytes("step", Machine());
  STEPControl_Reader reader;
  ASSERT_EQ(reader.ReadFile(file.c_str()), IFSelect_RetDone);
  std::filesystem::remove(file);
  std::vector<std::string> products, uses;
  for (int i = 1; i <= reader.StepModel()->NbEntities(); ++i) {
    const auto entity = reader.StepModel()->Value(i);
    if (const auto product = Handle(StepBasic_Product)::DownCast(entity); !product.IsNull())
      products.push_back(product->Name()->ToCString());
    const auto use = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(entity);
    if (use.IsNull()) continue;
    const auto name = [](const auto& definition) { return definition->Formation()->OfProduct()->Name(); };
    uses.push_back(std::string(name(use->RelatingProductDefinition())->ToCString()) + " " +
                   use->Id()->ToCString() + " " + name(use->RelatedProductDefinition())->ToCString());
  }
  std::ranges::sort(products);
  std::ranges::sort(uses);
  EXPECT_EQ(products, (std::vector<std::string>{"BARE", "BLOCK", "COPY", "MACHINE", "NOTHING", "PAIR"}));
  EXPECT_EQ(uses, (std::vector<std::string>{"MACHINE 11 PAIR", "MACHINE 12 COPY", "MACHINE 13 COPY",
                                            "MACHINE 14 NOTHING", "MACHINE 15 PAIR", "MACHINE 16 BARE",
                                            "PAIR 5 BLOCK", "PAIR 6 BLOCK"}));
}

TEST(Iges, OfAnAssemblyHasEachSolidInPlace) {
  ExpectMachine(ReadBack<IGESControl_Reader>(Bytes("iges", Machine())));
}

TEST(Stl, OfAnAssemblyHasEachSolidInPlace) {
  const std::string bytes = Bytes("stl", Machine());
  ASSERT_EQ(FacetCount(bytes), 6 * 12u);
  ExpectClose(FacetVolume(bytes, 72), 6 * 6000);
  for (std::uint32_t solid = 0; solid < 6; ++solid) {
    Bounds bounds;
    for (std::uint32_t corner = 0; corner < 36; ++corner) {
      const std::size_t at = 84 + 50 * (12 * solid + corner / 3) + 12 + 12 * (corner % 3);
      bounds.Add({Number(bytes, at), Number(bytes, at + 4), Number(bytes, at + 8)});
    }
    ExpectClose(json(Numbers(bounds)), kMachineBoxes[solid]);
  }
}

TEST(Scene, ThatMakesNoSenseIsAnError) {
  const json block = PartModel("BLOCK", {});
  const struct {
    Models models;
    const char* error;
  } cases[] = {
      {{}, "'root'"},
      {{block, {{"name", "A"}, {"components", Entities{Component(1, 1, ShiftedTo(0, 0, 0))}}}}, "before"},
      {{block, {{"name", "A"}, {"components", Entities{Component(1, 0, {1, 0, 0, 0})}}}}, "twelve"},
      {{block,
        {{"name", "A"}, {"components", Entities{Component(1, 0, {2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0})}}}},
       "rigid"},
      // A mirror: the third column is not the product of the others.
      {{block,
        {{"name", "A"}, {"components", Entities{Component(1, 0, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0})}}}},
       "rigid"},
  };
  for (const auto& each : cases) {
    const json answer = Export("step", each.models);
    EXPECT_NE(answer.value("error", "").find(each.error), std::string::npos) << answer;
  }
}

}  // namespace
}  // namespace bench::kernel::testing
