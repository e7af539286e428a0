// STEP files that travel as base64: the names and temporary files on the way, and the model that comes of it.
#include <gmock/gmock.h>
#include <windows.h>

#include <numbers>
#include <tuple>

#include "addin/platform/temporary_file.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/kernel_link/base64.h"
#include "tests/support/operation_fixture.h"
#include "tests/support/scoped_environment.h"

namespace vek::support {
namespace {

using testing::HasSubstr;

constexpr const wchar_t* kImport = L"api_import_step_base64";
constexpr const char* kCreate = "ProIntfimportModelWithOptionsMdlnameCreate";

class StepImport : public OperationTest {
 protected:
  void SetUp() override {
    OperationTest::SetUp();
    temporary_files_ = TemporaryFiles();
  }
  // However an import ends, it leaves no file behind.
  void TearDown() override {
    EXPECT_EQ(TemporaryFiles(), temporary_files_);
    OperationTest::TearDown();
  }
  static std::size_t TemporaryFiles() {
    std::wstring directory;
    EXPECT_TRUE(TemporaryDirectory(directory));
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
      count += entry.path().filename().wstring().starts_with(L"vek") && entry.is_regular_file();
    return count;
  }

  static std::wstring WithLineBreaks(std::string base64) {
    for (std::size_t at = 64; at < base64.size(); at += 66) base64.insert(at, "\r\n");
    return DecodeUtf8(base64);
  }
  static std::wstring Arguments(const std::string& bytes, const std::wstring& filename) {
    return Format(LR"({"data_base64":"%s","filename":"%s"})",
                  JsonEscape(WithLineBreaks(bench::EncodeBase64(bytes))), JsonEscape(filename));
  }
  // A part in inches as the exporter writes it, 40 by 20 by 10 mm.
  std::string BlockFile() {
    NewPart().length_unit = bench::LengthUnit::kInch;
    Block(40, 20, 10);
    Succeed(L"api_export_file", Format(LR"({"output_path":"%s"})", JsonPath(L"block.stp")));
    return Bytes(L"block.stp");
  }
  std::vector<std::string> Creations(std::uint64_t mark) {
    std::vector<std::string> creations;
    for (const auto& entry : host().journal.Since(mark))
      if (entry.name == kCreate) creations.push_back(entry.arguments);
    return creations;
  }

 private:
  std::size_t temporary_files_ = 0;
};

TEST_F(StepImport, BringsBackWhatWasExportedUnderAFreeName) {
  const std::string file = BlockFile();
  const std::size_t models = host().session.All().size();
  for (const wchar_t* name : {L"BRACKET", L"BRACKET_1"}) {
    const auto result = Run(kImport, Arguments(file, L"Bracket.STP"));
    EXPECT_EQ(result.message, Format(L"Imported STEP data from 'Bracket.STP' as '%s'.", name));
    const auto data = nlohmann::json::parse(EncodeUtf8(result.dataJson));
    EXPECT_EQ(data.at("feature_name"), EncodeUtf8(name));
    EXPECT_EQ(data.at("filename"), "Bracket.STP");
    EXPECT_EQ(data.at("document_type"), "part");
    EXPECT_EQ(data.size(), 4u);
    EXPECT_EQ(Current().name, name);
    EXPECT_NEAR(Volume(), 8000, 8000 * 1e-6);
  }
  EXPECT_EQ(host().session.All().size(), models + 2);
}

// See tests/data/README.md. The bore takes 25 * pi mm² of each of the two large sides, and has a wall of 10 *
// pi * 10.
TEST_F(StepImport, TakesInWhatOtherSoftwareWrote) {
  const std::string file = Bytes(DecodeUtf8(VEK_TEST_DATA "/plate_with_bore.step"));
  ASSERT_FALSE(file.empty());
  EXPECT_EQ(Succeed(kImport, Arguments(file, L"plate.step")).at("feature_name"), "PLATE");
  constexpr double kBore = 25 * std::numbers::pi;
  EXPECT_NEAR(Volume(), (800 - kBore) * 10, 8000 * 1e-6);
  EXPECT_NEAR(Area(), 2 * (800 - kBore) + 120 * 10 + 100 * std::numbers::pi, 3000 * 1e-6);
  EXPECT_EQ(Current().topology.faces.size(), 10u);
}

TEST_F(StepImport, TellsTheHostWhatItTakes) {
  const std::string file = BlockFile();
  const std::tuple<std::wstring, const char*, const char*> cases[] = {
      {L"", R"(.step", 6, 2, 0, "import")", "IMPORT"},
      {LR"(C:\in\My Part.v2.stp)", R"(.stp", 6, 2, 0, "c__in_my_part_v2")", "C__IN_MY_PART_V2"}};
  for (const auto& [filename, ending, name] : cases) {
    const std::uint64_t mark = host().journal.Mark();
    EXPECT_EQ(Succeed(kImport, Arguments(file, filename)).at("feature_name"), name);
    EXPECT_THAT(Creations(mark), testing::ElementsAre(testing::EndsWith(ending)));
  }
  // A type that can't be had is none.
  faults().Fail("ProIntfimportSourceTypeGet", -1);
  faults().Fail(kCreate, -5, 1, 7);
  const std::uint64_t mark = host().journal.Mark();
  EXPECT_EQ(Succeed(kImport, Arguments(file, L"x.stp")).at("feature_name"), "X_7");
  const auto creations = Creations(mark);
  ASSERT_EQ(creations.size(), 8u);
  EXPECT_THAT(creations.front(), HasSubstr(R"(", 6, -1, 0, "x")"));
  EXPECT_THAT(creations.back(), HasSubstr(R"(", 6, -1, 0, "x_7")"));
}

TEST_F(StepImport, WhatFailsIsToldAndLeavesNoModel) {
  const std::string file = BlockFile();
  const std::size_t models = host().session.All().size();
  ExpectFailure(kImport, Arguments(file, L"a.b\\c"),
                L"'filename' extension must not contain path separators.");
  ExpectFailure(kImport, Arguments(file, L"a." + std::wstring(260, L'x')),
                L"Temporary STEP import path is too long.");
  ExpectFailure(kImport, Arguments(file, L"a.b?c"), L"Failed to write temporary STEP file.");
  {
    const ScopedEnvironment nowhere(L"TMP", (directory() / L"nowhere").wstring());
    ExpectFailure(kImport, Arguments(file, L"a.step"), L"Failed to allocate temporary STEP import path.");
  }
  for (const std::string& broken : {std::string("no STEP file"), file.substr(0, file.size() / 2)})
    ExpectFailure(kImport, Arguments(broken, L"a.step"), L"STEP import failed (status=-16).");
  ExpectFailure(kImport, LR"({"data_base64":"!!"})", L"STEP import failed (status=-16).");

  faults().Fail(kCreate, -5, 1, 100);
  const std::uint64_t mark = host().journal.Mark();
  ExpectFailure(kImport, Arguments(file, L"a.step"), L"STEP import failed (status=-5).");
  EXPECT_EQ(Creations(mark).size(), 100u);
  faults().NoEffect(kCreate);
  ExpectFailure(kImport, Arguments(file, L"a.step"), L"STEP import failed (status=0).");
  EXPECT_EQ(host().session.All().size(), models);

  // A model that can't be shown has come in all the same.
  faults().Fail("ProObjectwindowMdlnameCreate", -1);
  faults().Fail("ProMdlDisplay", -3);
  ExpectFailure(kImport, Arguments(file, L"a.step"), L"Failed to display model (status=-3).");
  EXPECT_EQ(host().session.All().size(), models + 1);
}

}  // namespace
}  // namespace vek::support
