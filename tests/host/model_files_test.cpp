#include <ProUtil.h>
#include <gmock/gmock.h>

#include <filesystem>

#include "bench/host/storage/model_file.h"
#include "bench/host/storage/model_json.h"
#include "bench/host/text.h"
#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using support::MdlNameBuffer;
using support::PathBuffer;
using testing::ElementsAre;

class ModelFilesTest : public support::BenchTest {
 protected:
  // The model that retrieving gives, or null.
  Model* Retrieve(std::wstring_view name, ProError expected = PRO_TK_NO_ERROR,
                  ProMdlfileType type = PRO_MDLFILE_PART) {
    MdlNameBuffer buffer(name);
    ProMdl model = nullptr;
    EXPECT_EQ(ProMdlnameRetrieve(buffer, type, &model), expected);
    return host().session.Find(model);
  }
  // A model file of a part whose first plane bears `mark` for a name.
  std::string PartText(const std::wstring& mark) {
    Model part;
    part.name = L"ANY";
    part.features.push_back(std::make_unique<Feature>());
    part.features[0]->id = part.next_id++;
    part.features[0]->type = 923;
    part.features[0]->name = mark;
    return ModelToText(part);
  }
  void GoTo(const std::wstring& directory) {
    PathBuffer path(directory);
    ASSERT_EQ(ProDirectoryChange(path), PRO_TK_NO_ERROR);
  }
};

TEST_F(ModelFilesTest, TheNextVersionComesBehindTheHighestThereIs) {
  WriteFile(L"frame.asm", "");
  Model& assembly = NewAssembly(L"OTHER");
  assembly.name = L"FRAME";
  ASSERT_EQ(ProMdlSave(Handle(assembly)), PRO_TK_NO_ERROR);
  WriteFile(L"FRAME.ASM.9", "");
  ASSERT_EQ(ProMdlSave(Handle(assembly)), PRO_TK_NO_ERROR);
  EXPECT_THAT(FilesHere(), testing::IsSupersetOf({L"frame.asm.1", L"frame.asm.10"}));
}

TEST_F(ModelFilesTest, RetrievingPrefersTheSessionThenTheHighestVersionOfThatNameAndType) {
  WriteFile(L"bolt2.prt.1", PartText(L"A"));
  WriteFile(L"bolt.prt.1.bak", PartText(L"A"));
  WriteFile(L"bolt.asm.1", PartText(L"A"));
  EXPECT_EQ(Retrieve(L"BOLT", PRO_TK_E_NOT_FOUND), nullptr);
  EXPECT_EQ(Retrieve(L"BOLT", PRO_TK_INVALID_TYPE, PRO_MDLFILE_UNUSED), nullptr);
  WriteFile(L"bolt.prt", PartText(L"NONE"));
  EXPECT_EQ(Retrieve(L"BOLT")->features[0]->name, L"NONE");
  EXPECT_EQ(ProMdlErase(Handle(*host().session.FindByName(L"BOLT", PRO_MDL_PART))), PRO_TK_NO_ERROR);

  WriteFile(L"bolt.prt.2", PartText(L"TWO"));
  WriteFile(L"bolt.prt.10", PartText(L"TEN"));
  Model* const retrieved = Retrieve(L"bolt.PRT");
  ASSERT_NE(retrieved, nullptr);
  EXPECT_EQ(retrieved->features[0]->name, L"TEN");
  EXPECT_EQ(retrieved->name, L"BOLT");
  EXPECT_EQ(retrieved->directory, directory());
  ProBoolean modified = PRO_B_TRUE;
  EXPECT_EQ(ProMdlModificationVerify(Handle(*retrieved), &modified), PRO_TK_NO_ERROR);
  EXPECT_EQ(modified, PRO_B_FALSE);

  WriteFile(L"bolt.prt.11", PartText(L"ELEVEN"));
  EXPECT_EQ(Retrieve(L"Bolt"), retrieved);
}

TEST_F(ModelFilesTest, AFileThatMakesNoSenseIsRefusedWithAComplaint) {
  const std::string good = PartText(L"A");
  Model assembly;
  assembly.type = PRO_MDL_ASSEMBLY;
  const std::string cases[] = {ModelToText(assembly),
                               "",
                               "{",
                               "[]",
                               "{\"format\": \"something else\"}",
                               good.substr(0, good.size() / 2),
                               std::string("\0\xff\x80", 3)};
  int number = 0;
  for (const std::string& text : cases) {
    const std::wstring name = L"broken" + std::to_wstring(++number);
    WriteFile(name + L".prt.1", text);
    EXPECT_EQ(Retrieve(name, PRO_TK_INVALID_FILE), nullptr);
    EXPECT_TRUE(Complained(ToUtf8(name) + ".prt.1 is refused")) << text;
  }
  EXPECT_TRUE(Complained("it holds no part"));
  EXPECT_TRUE(host().session.All().empty());
}

TEST_F(ModelFilesTest, AModelWhoseGeometryCantBeMadeAgainComesIntoSessionWithItsRecipes) {
  Model part;
  part.features.push_back(std::make_unique<Feature>());
  part.features[0]->id = part.next_id++;
  part.features[0]->type = 917;
  part.features[0]->tree = std::make_unique<ElementNode>();
  part.features[0]->tree->id = 386;
  WriteFile(L"bolt.prt.1", ModelToText(part));
  Model* const retrieved = Retrieve(L"BOLT");
  ASSERT_NE(retrieved, nullptr);
  EXPECT_EQ(retrieved->features[0]->tree->id, 386);
  EXPECT_FALSE(retrieved->modified);
  EXPECT_TRUE(Complained("the geometry of BOLT could not be made again"));
}

TEST_F(ModelFilesTest, SavingGoesToTheModelsDirectoryUntilItIsRenamed) {
  std::filesystem::create_directory(PathOf(L"other"));
  Model& part = NewPart(L"BOLT");
  PathBuffer where;
  EXPECT_EQ(ProMdlDirectoryPathGet(Handle(part), where), PRO_TK_E_NOT_FOUND);
  ASSERT_EQ(ProMdlSave(Handle(part)), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProMdlDirectoryPathGet(Handle(part), where), PRO_TK_NO_ERROR);
  EXPECT_EQ(where.text(), directory());

  GoTo(PathOf(L"other"));
  EXPECT_EQ(std::filesystem::current_path().wstring(), PathOf(L"other"));
  EXPECT_EQ(ProDirectoryChange(PathBuffer(PathOf(L"missing"))), PRO_TK_INVALID_DIR);
  ASSERT_EQ(ProMdlSave(Handle(part)), PRO_TK_NO_ERROR);
  EXPECT_TRUE(FileExists(PathOf(L"bolt.prt.2")));

  MdlNameBuffer nut(L"NUT");
  ASSERT_EQ(ProMdlnameRename(Handle(part), nut), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlSave(Handle(part)), PRO_TK_NO_ERROR);
  EXPECT_TRUE(FileExists(PathOf(L"other\\nut.prt.1")));
  EXPECT_EQ(ProMdlDirectoryPathGet(Handle(part), where), PRO_TK_NO_ERROR);
  EXPECT_EQ(where.text(), PathOf(L"other"));
}

TEST_F(ModelFilesTest, AFailedWriteLeavesTheOlderVersionsAndTheModelAsTheyWere) {
  Model& part = NewPart(L"BOLT");
  ASSERT_EQ(ProMdlSave(Handle(part)), PRO_TK_NO_ERROR);
  const auto before = ReadWholeFile(PathOf(L"bolt.prt.1"));
  part.modified = true;
  // A folder where the unfinished file would go: it can't be created.
  std::filesystem::create_directory(PathOf(L"bolt.prt.2.unfinished"));
  EXPECT_EQ(ProMdlSave(Handle(part)), PRO_TK_CANT_WRITE);
  EXPECT_TRUE(Complained("bolt.prt.2 can't be written"));
  EXPECT_TRUE(part.modified);
  EXPECT_FALSE(FileExists(PathOf(L"bolt.prt.2")));
  EXPECT_EQ(ReadWholeFile(PathOf(L"bolt.prt.1")), before);

  std::filesystem::remove(PathOf(L"bolt.prt.2.unfinished"));
  EXPECT_EQ(ProMdlSave(Handle(part)), PRO_TK_NO_ERROR);
  EXPECT_FALSE(part.modified);
  EXPECT_THAT(FilesHere(), ElementsAre(L"bolt.prt.1", L"bolt.prt.2"));

  part.directory = PathOf(L"gone");
  EXPECT_EQ(ProMdlSave(Handle(part)), PRO_TK_CANT_WRITE);
}

TEST_F(ModelFilesTest, AFilesTypeComesFromItsTextOrElseItsExtension) {
  Model assembly;
  assembly.type = PRO_MDL_ASSEMBLY;
  WriteFile(L"frame.old", ModelToText(assembly));
  WriteFile(L"sheet.DRW.4", "not ours");
  WriteFile(L"notes.txt", "nothing of the kind");
  const struct {
    const wchar_t* file;
    ProError status;
    int type;
  } cases[] = {{L"frame.old", PRO_TK_NO_ERROR, PRO_MDL_ASSEMBLY},
               {L"sheet.DRW.4", PRO_TK_NO_ERROR, PRO_MDL_DRAWING},
               {L"notes.txt", PRO_TK_GENERAL_ERROR, PRO_MDL_UNUSED},
               {L"missing.prt", PRO_TK_E_NOT_FOUND, PRO_MDL_UNUSED}};
  for (const auto& each : cases) {
    PathBuffer path(PathOf(each.file));
    ProMdlfileType type = PRO_MDLFILE_UNUSED;
    ProMdlsubtype subtype = PROMDLSTYPE_NONE;
    EXPECT_EQ(ProFileSubtypeGet(path, &type, &subtype), each.status) << ToUtf8(each.file);
    EXPECT_EQ(static_cast<int>(type), each.type) << ToUtf8(each.file);
  }
}

}  // namespace
}  // namespace bench
