#include <ProSolid.h>
#include <gmock/gmock.h>

#include <set>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using support::MdlNameBuffer;
using testing::ElementsAre;

class ModelsTest : public support::BenchTest {
 protected:
  ProError Create(std::wstring_view name, ProMdlfileType type = PRO_MDLFILE_PART) {
    MdlNameBuffer buffer(name);
    ProSolid solid = nullptr;
    return ProSolidMdlnameCreate(buffer, type, &solid);
  }
};

TEST_F(ModelsTest, ANewPartHasThreePlanesACoordinateSystemAndMillimetres) {
  Model& part = NewPart(L"bolt");
  EXPECT_EQ(part.name, L"BOLT");
  EXPECT_EQ(part.length_unit, LengthUnit::kMillimetre);
  EXPECT_TRUE(part.modified);
  ASSERT_EQ(part.features.size(), 4u);
  std::vector<std::wstring> names;
  std::set<int> ids;
  for (const auto& feature : part.features) {
    names.push_back(feature->name);
    ids.insert(feature->id);
    for (const GeometryItem& item : feature->items) ids.insert(item.id);
  }
  EXPECT_THAT(names, ElementsAre(L"RIGHT", L"TOP", L"FRONT", L"PRT_CSYS_DEF"));
  // Four features and four pieces of geometry, a plane's two faces being one.
  EXPECT_EQ(ids.size(), 8u);
  EXPECT_EQ(NewAssembly(L"FRAME").features.back()->name, L"ASM_DEF_CSYS");
}

TEST_F(ModelsTest, NamesThatNoModelCanBearAreRefused) {
  EXPECT_EQ(Create(std::wstring(31, L'a')), PRO_TK_NO_ERROR);
  EXPECT_EQ(Create(std::wstring(32, L'a')), PRO_TK_LINE_TOO_LONG);
  EXPECT_EQ(Create(L""), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Create(L"a\\b"), PRO_TK_INVALID_NAME);
  EXPECT_EQ(Create(L"a.prt"), PRO_TK_INVALID_NAME);
  EXPECT_EQ(Create(L"with blank"), PRO_TK_NO_ERROR);
  EXPECT_EQ(Create(L"DRAWING", PRO_MDLFILE_DRAWING), PRO_TK_INVALID_TYPE);
}

TEST_F(ModelsTest, ANameInSessionOrInTheWorkingDirectoryIsTaken) {
  NewPart(L"BOLT");
  WriteFile(L"nut.prt.3", "");
  WriteFile(L"frame.asm", "");
  EXPECT_EQ(Create(L"bolt"), PRO_TK_E_FOUND);
  EXPECT_EQ(Create(L"NUT"), PRO_TK_E_FOUND);
  EXPECT_EQ(Create(L"FRAME", PRO_MDLFILE_ASSEMBLY), PRO_TK_E_FOUND);
  EXPECT_EQ(Create(L"BOLT", PRO_MDLFILE_ASSEMBLY), PRO_TK_NO_ERROR);
  EXPECT_EQ(Create(L"FRAME"), PRO_TK_NO_ERROR);
}

TEST_F(ModelsTest, AnErasedModelIsDeadForEveryCallAndItsHandleIsNotGivenAgain) {
  const ProMdl dead = Handle(NewPart(L"BOLT"));
  ASSERT_EQ(ProMdlErase(dead), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProMdlErase(dead), PRO_TK_INVALID_PTR);
  ProMdlType type = PRO_MDL_UNUSED;
  EXPECT_EQ(ProMdlTypeGet(dead, &type), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProMdlSave(dead), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProMdlSave(nullptr), PRO_TK_BAD_INPUTS);
  for (int i = 0; i < 50; ++i) EXPECT_NE(Handle(NewPart(L"P" + std::to_wstring(i))), dead);
}

TEST_F(ModelsTest, RenamingKeepsTheHandleAndRefusesATakenName) {
  Model& part = NewPart(L"BOLT");
  NewPart(L"NUT");
  NewAssembly(L"SCREW");
  MdlNameBuffer nut(L"nut");
  MdlNameBuffer screw(L"screw");
  part.modified = false;
  EXPECT_EQ(ProMdlnameRename(Handle(part), nut), PRO_TK_E_FOUND);
  EXPECT_FALSE(part.modified);
  EXPECT_EQ(ProMdlnameRename(Handle(part), screw), PRO_TK_NO_ERROR);
  EXPECT_EQ(part.name, L"SCREW");
  EXPECT_TRUE(part.modified);
  MdlNameBuffer name;
  EXPECT_EQ(ProMdlMdlnameGet(Handle(part), name), PRO_TK_NO_ERROR);
  EXPECT_EQ(name.text(), L"SCREW");
}

}  // namespace
}  // namespace bench
