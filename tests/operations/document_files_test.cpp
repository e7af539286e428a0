// Documents and the disk: open, save under a new name, close.
#include <gtest/gtest.h>

#include <fstream>

#include "addin/server/json_writer.h"
#include "bench/host/storage/model_file.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

class DocumentFiles : public support::OperationTest {
 protected:
  std::wstring Argument(const wchar_t* key, const std::wstring& text) const {
    return std::wstring(L"{\"") + key + L"\":\"" + JsonEscape(text) + L"\"}";
  }
  std::wstring FilePath(const std::wstring& file) const { return Argument(L"file_path", Full(file)); }
};

TEST_F(DocumentFiles, KeepFeaturesIdsAndGeometryFromSaveToOpen) {
  NewPart();
  Block(20, 30, 40);
  std::vector<std::pair<int, std::wstring>> before;
  for (const auto& feature : Current().features) before.emplace_back(feature->id, feature->name);
  const auto faces = Current().topology.faces.size();

  ExpectAnswer(L"api_document_save_as", FilePath(L"sub\\deep\\bracket.prt"),
               L"Document saved as '" + Full(L"sub\\deep\\bracket.prt") + L"'.",
               L"{\"file_path\":\"" + JsonPath(L"sub\\deep\\BRACKET.prt") + L"\"}");
  EXPECT_EQ(host().session.All().size(), 1u);  // renamed, not copied
  EXPECT_FALSE(Current().modified);
  EXPECT_TRUE(std::filesystem::exists(directory() / "sub/deep/bracket.prt.1"));

  EXPECT_EQ(Run(L"api_document_close", LR"({"name_or_path":"bracket"})").message,
            L"Document 'BRACKET' closed.");
  EXPECT_TRUE(host().session.All().empty());

  const std::wstring home = bench::WorkingDirectory();
  ExpectAnswer(L"api_document_open", FilePath(L"sub\\deep\\bracket.prt.1"),
               L"Document 'BRACKET' opened and activated.",
               L"{\"name\":\"BRACKET\",\"full_path\":\"" + JsonPath(L"sub\\deep\\BRACKET.prt") +
                   L"\",\"document_type\":\"part\"}");
  EXPECT_EQ(bench::WorkingDirectory(), home);

  std::vector<std::pair<int, std::wstring>> after;
  for (const auto& feature : Current().features) after.emplace_back(feature->id, feature->name);
  EXPECT_EQ(after, before);
  EXPECT_NEAR(Volume(), 20 * 30 * 40, 1e-6);
  EXPECT_EQ(Current().topology.faces.size(), faces);
}

TEST_F(DocumentFiles, AlreadyInSessionNeedNoFile) {
  AddModel(L"BRACKET", PRO_MDL_PART);
  ExpectAnswer(L"api_document_open", LR"({"file_path":"C:\\nowhere\\bracket.prt.4"})",
               L"Document 'BRACKET' was already open and is now active.",
               LR"({"name":"BRACKET","full_path":"BRACKET.prt","document_type":"part"})");
}

TEST_F(DocumentFiles, ThatCanNotBeOpenedTellWhy) {
  const std::wstring open = L"api_document_open";
  ExpectFailure(open, FilePath(L"none.prt"), L"File not found: '" + Full(L"none.prt") + L"'.");
  ExpectFailure(open, FilePath(L""), L"Unable to parse file_path into a Creo model name.");

  std::ofstream(directory() / L"mesh.stp") << "ISO-10303-21;";
  ExpectFailure(open, FilePath(L"mesh.stp"), L"Unsupported Creo file type. Expected .prt, .asm, or .drw.");

  std::ofstream(directory() / L"bracket.prt.1") << "torn";
  ExpectFailure(open, FilePath(L"bracket.prt.1"),
                L"Failed to open '" + Full(L"bracket.prt.1") + L"' (status=-16).");
}

TEST_F(DocumentFiles, AreNotSavedUnderAnImpossibleName) {
  const std::wstring save = L"api_document_save_as";
  NewPart();
  ExpectFailure(save, FilePath(L""), L"Unable to parse file_path for save-as.");
  ExpectFailure(save, FilePath(L"bracket"), L"'file_path' must include a .prt, .asm, or .drw extension.");
  ExpectFailure(save, FilePath(L"bracket.Asm"),
                L"file_path extension '.Asm' does not match active document type 'part' (expected '.prt').");

  const std::wstring long_name(200, L'a');
  ExpectFailure(save, Argument(L"file_path", long_name + L".prt"),
                L"Failed to rename active document to '" + long_name + L"' (status=-2).");

  bench::Model& layout = AddModel(L"LAYOUT", static_cast<ProMdlType>(3));
  host().windows.Activate(*host().windows.Create(layout));
  ExpectFailure(save, FilePath(L"layout.prt"), L"Unsupported active document type for save-as.");
}

TEST_F(DocumentFiles, StayRenamedWhenTheSaveFails) {
  const std::wstring before = NewPart().name;
  const std::wstring save = L"api_document_save_as";
  std::ofstream(directory() / L"file") << "in the way";
  ExpectFailure(save, FilePath(L"file\\sub\\bracket.prt"),
                L"Failed to create destination directory '" + Full(L"file\\sub") + L"'.");
  EXPECT_EQ(Current().name, before);
  faults().Fail("ProMdlSave", -17);
  ExpectFailure(save, FilePath(L"sub\\bracket.prt"),
                L"SaveAs failed for '" + Full(L"sub\\bracket.prt") + L"' (status=-17).");
  EXPECT_EQ(Current().name, L"BRACKET");
}

TEST_F(DocumentFiles, KeepTheirNameWhenOnlyItsCaseDiffers) {
  NewPart();
  Succeed(L"api_document_save_as", FilePath(L"bracket.prt"));
  const auto mark = host().journal.Mark();
  Succeed(L"api_document_save_as", FilePath(L"BrackeT.PRT"));
  EXPECT_EQ(CallsSince(mark, {"ProMdlnameRename", "ProMdlDisplay", "ProMdlSave"}),
            std::vector<std::string>{"ProMdlSave"});
  EXPECT_TRUE(std::filesystem::exists(directory() / "bracket.prt.2"));
}

TEST_F(DocumentFiles, AreDisplayedBeforeASaveWhenTheyAreDrawings) {
  AddModel(L"SHEET", PRO_MDL_DRAWING);
  Succeed(L"api_document_activate", LR"({"name_or_path":"sheet"})");
  auto mark = host().journal.Mark();
  Succeed(L"api_document_save_as", FilePath(L"sheet.drw"));
  const std::vector<std::string> order = {"ProMdlDisplay", "ProMdlSave"};
  EXPECT_EQ(CallsSince(mark, order), order);

  mark = host().journal.Mark();
  Succeed(L"api_document_close", LR"({"name_or_path":"sheet","save_changes":true})");
  EXPECT_EQ(CallsSince(mark, order), order);
}

TEST_F(DocumentFiles, AreClosedWithTheirWindowFirstAndCountAsClosedForFourStatuses) {
  const std::vector<std::string> order = {"ProWindowDelete", "ProMdlErase"};
  for (const int status : {0, -4, -8, -19}) {
    const std::wstring name = NewPart().name;
    const auto mark = host().journal.Mark();
    if (status != 0) faults().Fail("ProMdlErase", status);
    EXPECT_EQ(Run(L"api_document_close", Argument(L"name_or_path", name)).message,
              L"Document '" + name + L"' closed.");
    EXPECT_EQ(CallsSince(mark, {"ProMdlSave", "ProMdlDisplay", "ProWindowDelete", "ProMdlErase"}), order);
  }
  bench::Model& part = NewPart();
  faults().Fail("ProMdlErase", -1);
  ExpectFailure(L"api_document_close", Argument(L"name_or_path", part.name),
                L"Failed to close '" + part.name + L"' (status=-1).");
  EXPECT_FALSE(host().windows.WindowOf(part).has_value());  // gone, and not made again
}

TEST_F(DocumentFiles, StayOpenWhenTheyCanNotBeSavedBeforeAClose) {
  const std::wstring close = L"api_document_close";
  ExpectFailure(close, LR"({"name_or_path":"gear"})",
                L"No open document matches 'gear'. Use api_document_list_open to see open documents.");

  bench::Model& part = NewPart();
  const std::wstring arguments = L"{\"save_changes\":true,\"name_or_path\":\"" + part.name + L"\"}";
  faults().Fail("ProMdlSave", -17);
  ExpectFailure(close, arguments, L"Failed to save '" + part.name + L"' before close (status=-17).");
  EXPECT_EQ(&Current(), &part);
}

}  // namespace
}  // namespace vek
