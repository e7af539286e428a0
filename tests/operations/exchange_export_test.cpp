#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <regex>
#include <tuple>

#include "addin/ops/exchange/export_text.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

class Export : public support::OperationTest {
 protected:
  CreoMcpOperationResult ExportFile(const std::wstring& file, const std::wstring& format) {
    return Run(L"api_export_file", Arguments(file, format));
  }
  std::wstring Arguments(const std::wstring& file, const std::wstring& format) const {
    return L"{\"output_path\":\"" + JsonPath(file) + L"\",\"format\":\"" + format + L"\"}";
  }
  std::wstring Full(const std::wstring& file) const { return (directory() / file).wstring(); }
  std::wstring Taken(const std::wstring& file) const {
    return L"File already exists: '" + Full(file) + L"'. Choose another path (overwrite is not allowed).";
  }

  bool Exists(const std::wstring& file) const { return std::filesystem::is_regular_file(directory() / file); }
  std::string Read(const std::wstring& file) const {
    std::ifstream stream(directory() / file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
  }
  void Write(const std::wstring& file) { std::ofstream(directory() / file) << "in the way"; }

  // The largest coordinates of the points that a STEP file tells.
  static std::array<double, 3> HighestPoint(const std::string& step) {
    std::array<double, 3> highest{-1e9, -1e9, -1e9};
    const std::regex pattern(R"(CARTESIAN_POINT\('[^']*',\(([-+.0-9E]+),([-+.0-9E]+),([-+.0-9E]+)\)\))");
    for (std::sregex_iterator match(step.begin(), step.end(), pattern), end; match != end; ++match)
      for (int axis = 0; axis < 3; ++axis)
        highest[axis] = std::max(highest[axis], std::stod((*match)[axis + 1]));
    return highest;
  }
};

TEST_F(Export, WritesStepInMillimetresForAModelInInches) {
  NewPart().length_unit = bench::LengthUnit::kInch;
  Block(20, 30, 40);
  EXPECT_NEAR(Volume(), 24'000, 1e-3);
  const auto result = ExportFile(L"sub\\deep\\block.step", L"");
  EXPECT_EQ(result.message, L"Exported active model as STEP to '" + Full(L"sub\\deep\\block.step") + L"'.");
  EXPECT_EQ(result.dataJson,
            L"{\"output_path\":\"" + JsonPath(L"sub\\deep\\block.step") + L"\",\"format\":\"STEP\"}");
  // The writer puts its own extension on.
  const std::string step = Read(L"sub\\deep\\block.stp");
  EXPECT_TRUE(step.starts_with("ISO-10303-21;"));
  EXPECT_NE(step.find("SI_UNIT(.MILLI.,.METRE.)"), std::string::npos);
  const auto highest = HighestPoint(step);
  EXPECT_NEAR(highest[0], 20, 1e-6);
  EXPECT_NEAR(highest[1], 30, 1e-6);
  EXPECT_NEAR(highest[2], 40, 1e-6);
}

TEST_F(Export, WritesIgesAndCompletesAPathWithoutExtension) {
  NewPart();
  Block(20, 30, 40);
  const auto result = ExportFile(L"new\\block", L"igs");
  EXPECT_EQ(result.message, L"Exported active model as IGES to '" + Full(L"new\\block.igs") + L"'.");
  EXPECT_EQ(result.dataJson,
            L"{\"output_path\":\"" + JsonPath(L"new\\block.igs") + L"\",\"format\":\"IGES\"}");
  const std::string iges = Read(L"new\\block.igs");
  ASSERT_GT(iges.size(), 80u);
  EXPECT_EQ(iges[72], 'S');  // the column that names a line's section; a file opens with its start section
}

TEST_F(Export, WritesStlAndHandsTheWritersWhatTheyTake) {
  NewPart().name = L"BLOCK";
  Block(20, 30, 40);
  // The model, the number of the format and the path; the solid writer's without its suffix.
  const std::tuple<const wchar_t*, const wchar_t*, const char*, const char*> cases[] = {
      {L"a.Step", L"step", "ProIntf3DFileWriteWithDefaultProfile", R"(BLOCK, 1, "a")"},
      {L"b.iges", L"iges", "ProIntf3DFileWriteWithDefaultProfile", R"(BLOCK, 4, "b")"},
      {L"c.sat", L"sat", "ProIntf3DFileWriteWithDefaultProfile", R"(BLOCK, 7, "c")"},
      {L"d.stl", L"stl", "ProIntfSliceFileExport", R"(BLOCK, "d.stl", 12, 0)"},
  };
  for (const auto& [file, format, call, arguments] : cases) {
    Run(L"api_export_file",
        std::wstring(L"{\"output_path\":\"") + file + L"\",\"format\":\"" + format + L"\"}");
    const auto last = host().journal.Last(1).front();
    EXPECT_EQ(last.name, call);
    EXPECT_EQ(last.arguments, arguments);
  }
  EXPECT_EQ(Read(L"d.stl").size(), 84u + 12 * 50);  // a binary head, and six faces of two triangles
}

TEST_F(Export, OverwritesNothing) {
  NewPart();
  Block(20, 30, 40);
  EXPECT_TRUE(ExportFile(L"block.stp", L"step").success);
  const auto mark = host().journal.Mark();
  ExpectFailure(L"api_export_file", Arguments(L"block.stp", L"step"), Taken(L"block.stp"));
  ExpectFailure(L"api_export_file", Arguments(L"block", L"step"), Taken(L"block.stp"));
  EXPECT_TRUE(CallsSince(mark, {"ProIntf3DFileWriteWithDefaultProfile"}).empty());
}

TEST_F(Export, NeedsAPartOrAnAssembly) {
  const auto expect_refusal = [&](const std::wstring& message, bool type_unreadable = false) {
    for (const wchar_t* operation : {L"api_export_file", L"api_export_batch"}) {
      if (type_unreadable) faults().Fail("ProMdlTypeGet", -1);
      ExpectFailure(operation, Arguments(L"a.stp", L"step"), message);
    }
  };
  expect_refusal(L"No active document.");
  NewPart();
  expect_refusal(L"Failed to read active document type.", true);
  AddModel(L"SHEET", PRO_MDL_DRAWING);
  Succeed(L"api_document_activate", LR"({"name_or_path":"sheet"})");
  expect_refusal(L"Export is currently supported for active parts and assemblies only.");
}

TEST_F(Export, RefusesWhatItCanNotWriteTo) {
  NewPart();
  const std::wstring file = L"api_export_file";
  // The format is looked at before the path.
  ExpectFailure(file, LR"({"format":"obj"})",
                L"Unsupported export format. Expected STEP, IGES, SAT, or STL.");
  ExpectFailure(file, L"{}", L"'output_path' argument is required.");
  ExpectFailure(file, Arguments(L"a.igs", L"step"),
                L"output_path extension '.igs' does not match requested export format 'STEP'.");
  ExpectFailure(file, Arguments(L"a.Prt.3", L"stl"),
                L"output_path extension '.Prt' does not match requested export format 'STL'.");
  Write(L"file");
  ExpectFailure(file, Arguments(L"file\\sub\\a.stp", L"step"),
                L"Failed to create destination directory '" + Full(L"file\\sub") + L"'.");
}

TEST_F(Export, PassesTheWritersStatusOn) {
  NewPart();
  Block(20, 30, 40);
  const std::wstring file = L"api_export_file";
  faults().Fail("ProIntf3DFileWriteWithDefaultProfile", -17);
  ExpectFailure(file, Arguments(L"a.stp", L"step"), L"Failed to export active model as STEP (status=-17).");
  faults().Fail("ProIntfSliceFileExport", -3);
  ExpectFailure(file, Arguments(L"a.stl", L"stl"), L"Failed to export active model as STL (status=-3).");

  const auto sat = ExportFile(L"a.sat", L"sat");
  EXPECT_FALSE(sat.success);
  EXPECT_TRUE(std::regex_match(sat.message,
                               std::wregex(LR"(Failed to export active model as SAT \(status=-\d+\)\.)")));
  EXPECT_FALSE(Exists(L"a.sat"));
}

class BatchExport : public Export {
 protected:
  std::wstring Into(const std::wstring& folder, const std::wstring& more = L"") const {
    return L"{\"output_dir\":\"" + JsonPath(folder) + L"\"" + more + L"}";
  }
};

TEST_F(BatchExport, NamesTheFileAfterThePart) {
  NewPart().name = L"BRACKET 1";
  Block(20, 30, 40);
  const auto result = Run(L"api_export_batch", Into(L"new\\out", L",\"configuration_names\":[]"));
  EXPECT_EQ(result.message, L"Exported 1 file to '" + Full(L"new\\out") + L"'.");
  EXPECT_EQ(result.dataJson,
            L"{\"exported_count\":1,\"files\":[\"" + JsonPath(L"new\\out\\BRACKET_1.stp") + L"\"]}");
  EXPECT_TRUE(Exists(L"new\\out\\BRACKET_1.stp"));
  ExpectFailure(L"api_export_batch", Into(L"new\\out"), Taken(L"new\\out\\BRACKET_1.stp"));
}

TEST_F(BatchExport, RefusesTheAssemblyThatASingleExportWrites) {
  NewAssembly().name = L"FRAME";
  EXPECT_TRUE(ExportFile(L"frame.stp", L"step").success);
  // Without components it is a product of no solid.
  const std::string step = Read(L"frame.stp");
  EXPECT_NE(step.find("PRODUCT('FRAME'"), std::string::npos);
  EXPECT_EQ(step.find("MANIFOLD_SOLID_BREP"), std::string::npos);

  ExpectFailure(L"api_export_batch", Into(L"out"), L"Batch export currently supports part documents only.");
  EXPECT_FALSE(std::filesystem::exists(directory() / "out"));
}

TEST_F(BatchExport, TellsWhatItDoesNotTake) {
  const std::wstring batch = L"api_export_batch";
  NewPart();
  faults().Fail("ProMdlTypeGet", -1, 2);
  ExpectFailure(batch, Into(L"out"), L"Failed to read active document type.");
  ExpectFailure(batch, L"{}", L"'output_dir' argument is required.");
  Write(L"file");
  ExpectFailure(batch, Into(L"file\\sub"),
                L"Failed to create output directory '" + Full(L"file\\sub") + L"'.");

  // The directory is made before the format is looked at.
  ExpectFailure(batch, Into(L"out", L",\"format\":\"obj\""),
                L"Unsupported export format. Expected STEP, IGES, SAT, or STL.");
  EXPECT_TRUE(std::filesystem::is_directory(directory() / "out"));

  for (const wchar_t* names : {L"[1]", L"\"a\"", L"{}", L"null"})
    ExpectFailure(batch, Into(L"out", std::wstring(L",\"configuration_names\":") + names),
                  L"'configuration_names' must be a JSON array of strings.");
  ExpectFailure(
      batch, Into(L"out", L",\"configuration_names\":[\"A\"]"),
      L"'configuration_names' is not supported for Creo yet. Omit it to export the active model once.");
  faults().Fail("ProIntf3DFileWriteWithDefaultProfile", -17);
  ExpectFailure(batch, Into(L"out"), L"Batch export failed (status=-17).");
}

// What the writers are handed for each format is seen where they are called.
TEST(ExportText, KnowsFourFormatsUnderSeveralWords) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L" \t", L"STEP"}, {L"step", L"STEP"}, {L" Stp\n", L"STEP"}, {L"IGES", L"IGES"},
      {L"igs", L"IGES"}, {L"sat", L"SAT"},   {L"stl", L"STL"},
  };
  for (const auto& [text, name] : cases) {
    const exchange::ExportFormat* const format = exchange::FindExportFormat(text);
    ASSERT_NE(format, nullptr) << text;
    EXPECT_STREQ(format->name, name);
  }
  for (const wchar_t* other : {L"obj", L"STEP AP214", L".stp"})
    EXPECT_EQ(exchange::FindExportFormat(other), nullptr);
}

TEST(ExportText, TakesOneSuffixOffAPath) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"C:\\a.STEP", L"C:\\a"}, {L"a.stp.igs", L"a.stp"},     {L"a.Iges", L"a"}, {L"a.sat", L"a"},
      {L"a.stl", L"a"},          {L"a.stp.txt", L"a.stp.txt"}, {L".stp", L""},    {L"astp", L"astp"},
  };
  for (const auto& [path, cut] : cases) EXPECT_EQ(exchange::WithoutExportSuffix(path), cut);
}

TEST(ExportText, MakesFileNamesOfWhatAFileNameCanHold) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"BRACKET 1", L"BRACKET_1"}, {L"a-Z_09", L"a-Z_09"}, {L"a.b\\c:d\te", L"abcde"},
      {L"\u00c4\u00df", L"export"}, {L"", L"export"},       {L"  ", L"__"},
  };
  for (const auto& [text, name] : cases) EXPECT_EQ(exchange::SanitizeExportName(text), name);
}

TEST(ExportText, ReadsListsOfStringsOnly) {
  const std::tuple<const wchar_t*, bool, std::vector<std::wstring>> cases[] = {
      {L"[]", true, {}},
      {LR"(["a" "b",])", true, {L"a", L"b"}},
      {LR"(["a\"]\n\\"])", true, {L"a\"]n\\"}},  // an escape is the character itself
      {LR"([""])", true, {L""}},
      {LR"(["a",1])", false, {L"a"}},
      {LR"("a")", false, {}},
      {L"null", false, {}},
  };
  for (const auto& [value, is_list, strings] : cases) {
    std::vector<std::wstring> list = {L"before"};
    EXPECT_EQ(exchange::ReadStringList(std::wstring(L"{\"k\":") + value + L"}", L"k", list), is_list)
        << value;
    EXPECT_EQ(list, strings) << value;
  }
  std::vector<std::wstring> list = {L"before"};
  EXPECT_FALSE(exchange::ReadStringList(L"{}", L"k", list));
  EXPECT_TRUE(list.empty());
}

}  // namespace
}  // namespace vek
