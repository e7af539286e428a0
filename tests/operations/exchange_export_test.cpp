#include <gtest/gtest.h>

#include <fstream>
#include <tuple>

#include "addin/ops/exchange/export_text.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

class Export : public support::OperationTest {
 protected:
  // What the export is told, and what it tells.
  std::wstring Arguments(const std::wstring& file, const std::wstring& format) const {
    return L"{\"output_path\":\"" + JsonPath(file) + L"\",\"format\":\"" + format + L"\"}";
  }
  std::wstring Taken(const std::wstring& file) const {
    return L"File already exists: '" + Full(file) + L"'. Choose another path (overwrite is not allowed).";
  }

  bool Exists(const std::wstring& file) const { return std::filesystem::is_regular_file(directory() / file); }
  void Write(const std::wstring& file) { std::ofstream(directory() / file) << "in the way"; }
};

TEST_F(Export, WritesStepInMillimetresForAModelInInches) {
  NewPart().length_unit = bench::LengthUnit::kInch;
  Block(20, 30, 40);
  ExpectAnswer(L"api_export_file", Arguments(L"sub\\deep\\block.step", L""),
               L"Exported active model as STEP to '" + Full(L"sub\\deep\\block.step") + L"'.",
               Arguments(L"sub\\deep\\block.step", L"STEP"));
  // The writer puts its own extension on.
  const std::string step = Bytes(L"sub\\deep\\block.stp");
  EXPECT_TRUE(step.starts_with("ISO-10303-21;"));
  EXPECT_NE(step.find("SI_UNIT(.MILLI.,.METRE.)"), std::string::npos);
}

TEST_F(Export, WritesIgesAndCompletesAPathWithoutExtension) {
  NewPart();
  Block(20, 30, 40);
  ExpectAnswer(L"api_export_file", Arguments(L"new\\block", L"igs"),
               L"Exported active model as IGES to '" + Full(L"new\\block.igs") + L"'.",
               Arguments(L"new\\block.igs", L"IGES"));
  const std::string iges = Bytes(L"new\\block.igs");
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
  EXPECT_EQ(Bytes(L"d.stl").size(), 84u + 12 * 50);  // a binary head, and six faces of two triangles
}

TEST_F(Export, OverwritesNothing) {
  NewPart();
  Block(20, 30, 40);
  Succeed(L"api_export_file", Arguments(L"block.stp", L"step"));
  ExpectFailure(L"api_export_file", Arguments(L"block.stp", L"step"), Taken(L"block.stp"));
  ExpectFailure(L"api_export_file", Arguments(L"block", L"step"), Taken(L"block.stp"));
}

TEST_F(Export, NeedsAPartOrAnAssembly) {
  AddModel(L"SHEET", PRO_MDL_DRAWING);
  Succeed(L"api_document_activate", LR"({"name_or_path":"sheet"})");
  for (const wchar_t* operation : {L"api_export_file", L"api_export_batch"})
    ExpectFailure(operation, Arguments(L"a.stp", L"step"),
                  L"Export is currently supported for active parts and assemblies only.");
}

TEST_F(Export, RefusesWhatItCanNotWriteTo) {
  NewPart();
  const std::wstring file = L"api_export_file";
  // The format is looked at before the path.
  ExpectFailure(file, LR"({"format":"obj"})",
                L"Unsupported export format. Expected STEP, IGES, SAT, or STL.");
  ExpectFailure(file, Arguments(L"a.Prt.3", L"stl"),
                L"output_path extension '.Prt' does not match requested export format 'STL'.");
  Write(L"file");
  ExpectFailure(file, Arguments(L"file\\sub\\a.stp", L"step"),
                L"Failed to create destination directory '" + Full(L"file\\sub") + L"'.");
}

TEST_F(Export, PassesTheWritersRefusalOn) {
  NewPart();
  Block(20, 30, 40);
  // The bench can't write this one.
  const auto sat = Run(L"api_export_file", Arguments(L"a.sat", L"sat"));
  EXPECT_FALSE(sat.success);
  EXPECT_TRUE(sat.message.starts_with(L"Failed to export active model as SAT (status=-"));
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
  ExpectAnswer(L"api_export_batch", Into(L"new\\out", L",\"configuration_names\":[]"),
               L"Exported 1 file to '" + Full(L"new\\out") + L"'.",
               L"{\"exported_count\":1,\"files\":[\"" + JsonPath(L"new\\out\\BRACKET_1.stp") + L"\"]}");
  EXPECT_TRUE(Exists(L"new\\out\\BRACKET_1.stp"));
  ExpectFailure(L"api_export_batch", Into(L"new\\out"), Taken(L"new\\out\\BRACKET_1.stp"));
}

TEST_F(BatchExport, RefusesTheAssemblyThatASingleExportWrites) {
  NewAssembly().name = L"FRAME";
  Succeed(L"api_export_file", Arguments(L"frame.stp", L"step"));
  // Without components it is a product of no solid.
  const std::string step = Bytes(L"frame.stp");
  EXPECT_NE(step.find("PRODUCT('FRAME'"), std::string::npos);
  EXPECT_EQ(step.find("MANIFOLD_SOLID_BREP"), std::string::npos);

  ExpectFailure(L"api_export_batch", Into(L"out"), L"Batch export currently supports part documents only.");
  EXPECT_FALSE(std::filesystem::exists(directory() / "out"));
}

TEST_F(BatchExport, TellsWhatItDoesNotTake) {
  const std::wstring batch = L"api_export_batch";
  NewPart();
  Write(L"file");
  ExpectFailure(batch, Into(L"file\\sub"),
                L"Failed to create output directory '" + Full(L"file\\sub") + L"'.");

  // The directory is made before the format is looked at.
  ExpectFailure(batch, Into(L"out", L",\"format\":\"obj\""),
                L"Unsupported export format. Expected STEP, IGES, SAT, or STL.");
  EXPECT_TRUE(std::filesystem::is_directory(directory() / "out"));

  ExpectFailure(batch, Into(L"out", L",\"configuration_names\":[1]"),
                L"'configuration_names' must be a JSON array of strings.");
  ExpectFailure(
      batch, Into(L"out", L",\"configuration_names\":[\"A\"]"),
      L"'configuration_names' is not supported for Creo yet. Omit it to export the active model once.");
  faults().Fail("ProIntf3DFileWriteWithDefaultProfile", -17);
  ExpectFailure(batch, Into(L"out"), L"Batch export failed (status=-17).");
}

TEST(ExportText, KnowsFourFormatsUnderSeveralWords) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L" \t", L"STEP"}, {L" Stp\n", L"STEP"}, {L"IGES", L"IGES"}, {L"igs", L"IGES"}, {L"sat", L"SAT"}};
  for (const auto& [text, name] : cases) EXPECT_STREQ(exchange::FindExportFormat(text)->name, name);
  for (const wchar_t* other : {L"obj", L"STEP AP214", L".stp"})
    EXPECT_EQ(exchange::FindExportFormat(other), nullptr);
}

TEST(ExportText, MakesFileNamesOfWhatAFileNameCanHold) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"BRACKET 1", L"BRACKET_1"}, {L"a-Z_09", L"a-Z_09"}, {L"a.b\\c:d\te", L"abcde"},
      {L"\u00c4\u00df", L"export"}, {L"", L"export"},       {L"  ", L"__"},
  };
  for (const auto& [text, name] : cases) EXPECT_EQ(exchange::SanitizeExportName(text), name);
}

}  // namespace
}  // namespace vek
