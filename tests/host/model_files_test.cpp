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

class FileNamesTest : public support::BenchTest {
 protected:
  ProError Parse(const std::wstring& text) {
    support::Buffer<300> path(text);
    return ProFileMdlnameParse(path, directory, name, extension, &version);
  }
  support::PathBuffer directory;
  support::MdlNameBuffer name;
  support::Buffer<PRO_EXTENSION_SIZE> extension;
  int version = 0;
};

TEST_F(FileNamesTest, PathsAreTakenApart) {
  const struct {
    const wchar_t* path;
    const wchar_t* directory;
    const wchar_t* name;
    const wchar_t* extension;
    int version;
  } cases[] = {
      {L"bolt.prt", L"", L"bolt", L"prt", -1},
      {L"bolt.PRT.12", L"", L"bolt", L"PRT", 12},
      {L"bolt.prt.3.5", L"", L"bolt", L"prt", 5},
      {L"bolt.7", L"", L"bolt", L"", 7},
      {L"a.b.asm.1", L"", L"a.b", L"asm", 1},
      {L"C:\\parts\\bolt.prt", L"C:\\parts", L"bolt", L"prt", -1},
      {L"C:/parts/sub/bolt.prt.2", L"C:/parts/sub", L"bolt", L"prt", 2},
      {L"D:\\bolt.prt", L"D:\\", L"bolt", L"prt", -1},
      {L"\\bolt.prt", L"\\", L"bolt", L"prt", -1},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(ToUtf8(each.path));
    ASSERT_EQ(Parse(each.path), PRO_TK_NO_ERROR);
    EXPECT_EQ(directory.text(), each.directory);
    EXPECT_EQ(name.text(), each.name);
    EXPECT_EQ(extension.text(), each.extension);
    EXPECT_EQ(version, each.version);
  }
}

TEST_F(FileNamesTest, PathsWithoutANameOrWithoutRoomAreRefused) {
  const struct {
    std::wstring path;
    ProError status;
  } cases[] = {{L"", PRO_TK_INVALID_NAME},
               {L"C:\\parts\\", PRO_TK_INVALID_NAME},
               {L".prt", PRO_TK_INVALID_NAME},
               {L"bolt.prt.12345678901", PRO_TK_INVALID_NAME},
               {std::wstring(180, L'a') + L".prt", PRO_TK_LINE_TOO_LONG},
               {L"a." + std::wstring(32, L'e'), PRO_TK_LINE_TOO_LONG},
               {std::wstring(260, L'a'), PRO_TK_LINE_TOO_LONG}};
  for (const auto& each : cases) EXPECT_EQ(Parse(each.path), each.status) << ToUtf8(each.path);
}

}  // namespace
}  // namespace bench
