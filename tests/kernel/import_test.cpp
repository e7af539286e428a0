#include <gtest/gtest.h>

#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <STEPControl_Writer.hxx>
#include <TopoDS.hxx>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gp_Pln.hxx>
#include <sstream>
#include <stdexcept>

#include "bench/kernel/base64.h"
#include "bench/kernel/isolated.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/shape_text.h"
#include "tests/kernel/scenes.h"

namespace bench::kernel::testing {
namespace {

json ImportWith(Requests& requests, const std::string& bytes) {
  const json request = {{"id", 1}, {"do", "import"}, {"bytes", Base64(bytes)}};
  return json::parse(requests.Answer(request.dump()));
}

json Import(const std::string& bytes) {
  Requests requests;
  const json answer = ImportWith(requests, bytes);
  EXPECT_TRUE(answer.contains("ok")) << answer;
  return answer.value("ok", json::object());
}

json Imported(int feature, const json& shape) {
  return {{"feature", feature}, {"kind", "import"}, {"shape", shape}};
}

// The part that the shapes of a model make.
json PartOfShapes(const json& model) {
  Recipes recipes;
  for (const json& shape : model.at("shapes"))
    recipes.push_back(Imported(static_cast<int>(recipes.size()) + 1, shape));
  return Built(recipes);
}

std::string StepOf(const std::vector<json>& models) {
  const json answer = Ask("export", models, {{"format", "step"}});
  return FromBase64(answer.at("ok").at("bytes").get<std::string>()).value_or("");
}

// What another writer makes of a shape.
std::string StepOf(const TopoDS_Shape& shape) {
  STEPControl_Writer writer;
  writer.Transfer(shape, STEPControl_AsIs);
  const auto file = std::filesystem::path(::testing::TempDir()) / "kernel_import_test.stp";
  writer.Write(file.c_str());
  std::ostringstream bytes;
  bytes << std::ifstream(file, std::ios::binary).rdbuf();
  std::filesystem::remove(file);
  return bytes.str();
}

TEST(Import, GivesProductsWithTheirNamesAndPlaces) {
  Recipes two = Plate();
  two.push_back(Extrude(3, Front(), Rectangle(1, 50, 0, 5, 5)));
  const std::string step =
      StepOf({PartOf(Plate(), "PLATE"), PartOf(two, "TWO"),
              AssemblyOf({Placed(5, 0, Shift(1, 2, 3)), Placed(6, 0, Turned(90, 0, 40, 0))}, "SUB"),
              AssemblyOf({Placed(7, 2, Shift(0, 0, 50)), Placed(8, 1, Shift(0, 0, 0)),
                          Placed(9, 2, Shift(0, 0, 70))},
                         "TOP")});
  const json answer = Import(step);
  const json& models = answer.at("models");
  ASSERT_EQ(models.size(), 4u);
  EXPECT_EQ(models[0]["name"], "PLATE");
  EXPECT_EQ(models[1]["name"], "SUB");
  EXPECT_EQ(models[2]["name"], "TWO");
  EXPECT_EQ(models[3]["name"], "TOP");
  EXPECT_EQ(answer["root"], 3);
  ExpectClose(models[1]["components"][0]["place"], Shift(1, 2, 3));
  ExpectClose(models[1]["components"][1]["place"], Turned(90, 0, 40, 0));
  ExpectClose(models[3]["components"][2]["place"], Shift(0, 0, 70));
  EXPECT_EQ(models[3]["components"][1]["model"], 2);
  ExpectClose(Volume(PartOfShapes(models[0])), kPlate);
  const json part = PartOfShapes(models[2]);
  EXPECT_EQ(part["bodies"], 2);
  ExpectClose(Volume(part), kPlate + 250);
}

TEST(Import, TurnsTheUnitOfAForeignFileIntoMillimetres) {
  std::ostringstream bytes;
  bytes << std::ifstream(std::string(TEST_DATA) + "/inch_block.stp", std::ios::binary).rdbuf();
  const json answer = Import(bytes.str());
  const json& model = answer.at("models").at(0);
  EXPECT_EQ(model["name"], "inch block");
  const json part = PartOfShapes(model);
  ExpectClose(Volume(part), 25.4 * 50.8 * 76.2);
  const std::vector<double> box = Box(part["outline"]);
  for (std::size_t i = 0; i < 6; ++i)
    EXPECT_NEAR(box[i], (std::vector<double>{0, 0, 0, 25.4, 50.8, 76.2})[i], 1e-9);
}

TEST(Import, OfFacesWithoutSolidsGivesQuilts) {
  const TopoDS_Face face = BRepBuilderAPI_MakeFace(gp_Pln(), 0, 4, 0, 3);
  const json answer = Import(StepOf(face));
  const json part = PartOfShapes(answer.at("models").at(0));
  EXPECT_EQ(part["bodies"], 0);
  ASSERT_EQ(part["quilts"].size(), 1u);
  ExpectClose(part["quilts"][0]["area"].get<double>(), 12);
}

TEST(Import, RefusesEveryFileThatBreaksOff) {
  const std::string step = StepOf({PartOf(Plate(), "PLATE")});
  Requests requests;
  const std::size_t end = step.rfind("END-ISO-10303-21;") + 17;
  for (std::size_t size = 0; size < end; size += size + 40 < end ? 97 : 1)
    ASSERT_TRUE(ImportWith(requests, step.substr(0, size))["ok"].contains("refused"))
        << size << " of " << step.size();
  EXPECT_FALSE(ImportWith(requests, step)["ok"].contains("refused"));
  EXPECT_TRUE(ImportWith(requests, StepOf({PartOf({}, "EMPTY")}))["ok"].contains("refused")) << "no geometry";
}

TEST(Import, OutlivesFilesWithHolesInThem) {
  const std::string step = StepOf({PartOf(Plate(), "PLATE")});
  const json regenerate = {{"id", 1}, {"do", "regenerate"}, {"recipes", Plate()}};
  Requests requests;
  const std::string before = requests.Answer(regenerate.dump());
  int refused = 0;
  for (std::size_t from = 100; from + 400 < step.size(); from += 311) {
    std::string torn = step;
    torn.erase(from, 150);
    const json answer = ImportWith(requests, torn);
    ASSERT_TRUE(answer.contains("ok")) << answer;
    if (answer["ok"].contains("refused"))
      ++refused;
    else  // nothing of the solid was lost
      ExpectClose(Volume(PartOfShapes(answer["ok"]["models"].at(0))), kPlate, std::to_string(from));
  }
  EXPECT_GT(refused, 20);
  EXPECT_EQ(requests.Answer(regenerate.dump()), before);
  EXPECT_FALSE(ImportWith(requests, step)["ok"].contains("refused"));
}

TEST(ImportRecipe, JoinsTheBodyAndNamesItsFaces) {
  const json box = TextOf(BRepPrimAPI_MakeBox(gp_Pnt(20, 0, 0), 10, 30, 10).Shape());
  const json plate = Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30));
  // It goes on where the plate ends: one body, whose upper faces stay two.
  const json joined = Built({plate, Imported(2, box)});
  EXPECT_EQ(joined["bodies"], 1);
  ExpectClose(Volume(joined), 6000 + 3000);
  EXPECT_EQ(joined["faces"].size(), 5u + 5u);
  // Two millimetres further on it is a body of its own, with all six faces.
  const json apart =
      Built({plate, Imported(2, TextOf(BRepPrimAPI_MakeBox(gp_Pnt(22, 0, 0), 10, 30, 10).Shape()))});
  EXPECT_EQ(apart["bodies"], 2);
  for (int number = 1; number <= 6; ++number) FaceNamed(apart, "2:face:" + std::to_string(number));
  // Later features find it and may be patterned with it.
  const json drilled = Built({Imported(2, box), Extrude(3, Front(), {Circle(1, 25, 10, 2)},
                                                        {.operation = "cut", .mode = "through_all"})});
  ExpectClose(Volume(drilled), 3000 - 40 * kPi);
  const json row =
      Built({plate,
             Imported(2, box),
             {{"feature", 4}, {"kind", "pattern"}, {"members", {2}}, {"motions", {Shift(40, 0, 0)}}}});
  ExpectClose(Volume(row), 6000 + 2 * 3000);
}

TEST(ImportRecipe, RefusesWhatIsNoShape) {
  EXPECT_NE(Reason({Imported(1, "")}), "");
  EXPECT_NE(Reason({Imported(1, "no base64")}), "");
  EXPECT_NE(Reason({Imported(1, Base64("Open CASCADE Topology V3"))}), "");
}

TEST(Isolation, LetsAnswersAndRefusalsThroughAndNothingElse) {
  const std::string large(1 << 20, 'x');
  EXPECT_EQ(InIsolation([&] { return json(large); }, "lost"), large);
  const std::function<json()> kFailures[] = {
      []() -> json { throw Refusal("told"); },
      []() -> json { throw std::runtime_error("untold"); },
      []() -> json {
        raise(SIGSEGV);
        return {};
      },
      []() -> json { std::abort(); },
  };
  std::vector<std::string> reasons;
  for (const auto& work : kFailures) {
    try {
      InIsolation(work, "lost");
    } catch (const Refusal& refusal) {
      reasons.emplace_back(refusal.what());
    }
  }
  EXPECT_EQ(reasons, (std::vector<std::string>{"told", "lost", "lost", "lost"}));
}

}  // namespace
}  // namespace bench::kernel::testing
