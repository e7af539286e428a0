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

#include "bench/kernel/base64.h"
#include "bench/kernel/bounds.h"
#include "bench/kernel/measures.h"
#include "tests/kernel/scenes.h"

namespace bench::kernel::testing {
namespace {

using Models = std::vector<json>;

json Export(const std::string& format, const Models& models) {
  return Ask("export", models, {{"format", format}});
}

std::string Bytes(const std::string& format, const Models& models) {
  const json answer = Export(format, models);
  EXPECT_TRUE(answer.contains("ok") && answer["ok"].contains("bytes")) << answer;
  return FromBase64(answer["ok"].value("bytes", "")).value_or("");
}

std::string Bytes(const std::string& format, const Recipes& recipes, const std::string& name) {
  return Bytes(format, {PartOf(recipes, name)});
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
  EXPECT_EQ(Export("stl", {PartOf({}, "EMPTY")})["ok"]["refused"], "There is no solid to write as STL.");
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
  const json write = {{"id", 1},
                      {"do", "export"},
                      {"format", "stl"},
                      {"models", json::array({PartOf(Plate())})},
                      {"root", 0}};
  const std::string before = requests.Answer(regenerate.dump());
  requests.Answer(write.dump());
  EXPECT_EQ(requests.Answer(regenerate.dump()), before);
  EXPECT_EQ(requests.regenerator().features_built(), 2);
}

std::vector<double> TurnedTo(double x, double y, double z) {
  return Turned(90, x, y, z);
}

// Two like parts of 20 · 30 · 10, a pair of the first turned and shifted, and a machine of the pair twice,
// the copy in place, twins of it, what is empty, and the pair again at a quarter turn.
Models Machine() {
  const Recipes block = {Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30))};
  return {PartOf(block, "BLOCK"),
          PartOf(block, "COPY"),
          PartOf({}, "NOTHING"),
          AssemblyOf({Placed(5, 0, Shift(0, 0, 0)), Placed(6, 0, TurnedTo(100, 0, 5))}, "PAIR"),
          AssemblyOf({}, "BARE"),
          AssemblyOf({Placed(11, 3, Shift(0, 0, 50)), Placed(12, 1, Shift(0, 0, 0)),
                      Placed(13, 1, Shift(0, 0, 0)), Placed(14, 2, Shift(9, 9, 9)),
                      Placed(15, 3, TurnedTo(0, 200, 0)), Placed(16, 4, Shift(1, 1, 1))},
                     "MACHINE")};
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
  const auto placed = [](int model, const std::vector<double>& place) {
    return Models{PartOf({}), AssemblyOf({Placed(1, model, place)})};
  };
  const struct {
    Models models;
    const char* error;
  } cases[] = {
      {{}, "'root'"},
      {placed(1, Shift(0, 0, 0)), "before"},
      {placed(0, {1, 0, 0, 0}), "twelve"},
      {placed(0, {2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0}), "rigid"},
      // A mirror: the third column is not the product of the others.
      {placed(0, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0}), "rigid"},
  };
  for (const auto& each : cases) {
    const json answer = Export("step", each.models);
    EXPECT_NE(answer.value("error", "").find(each.error), std::string::npos) << answer;
  }
}

}  // namespace
}  // namespace bench::kernel::testing
