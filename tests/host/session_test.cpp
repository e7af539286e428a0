#include <ProSolid.h>
#include <ProWindows.h>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using support::MdlNameBuffer;

class ModelsTest : public support::BenchTest {
 protected:
  ProError Create(std::wstring_view name, ProMdlfileType type = PRO_MDLFILE_PART) {
    MdlNameBuffer buffer(name);
    ProSolid solid = nullptr;
    return ProSolidMdlnameCreate(buffer, type, &solid);
  }
};

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
  part.modified = false;
  EXPECT_EQ(ProMdlnameRename(Handle(part), MdlNameBuffer(L"nut")), PRO_TK_E_FOUND);
  EXPECT_FALSE(part.modified);
  EXPECT_EQ(ProMdlnameRename(Handle(part), MdlNameBuffer(L"screw")), PRO_TK_NO_ERROR);
  EXPECT_EQ(part.name, L"SCREW");
  EXPECT_TRUE(part.modified);
}

class WindowsTest : public support::BenchTest {
 protected:
  int Open(Model& model) {
    MdlNameBuffer name(model.name);
    int window = -1;
    EXPECT_EQ(ProObjectwindowMdlnameCreate(name, static_cast<ProType>(model.type), &window), PRO_TK_NO_ERROR);
    return window;
  }
  int OpenAndActivate(Model& model) {
    const int window = Open(model);
    EXPECT_EQ(ProWindowActivate(window), PRO_TK_NO_ERROR);
    return window;
  }
  ProMdl Current() {
    ProMdl model = nullptr;
    ProMdlCurrentGet(&model);
    return model;
  }
};

TEST_F(WindowsTest, AWindowNeedsAModelInSessionThatHasNone) {
  Model& part = NewPart(L"BOLT");
  const int window = Open(part);
  MdlNameBuffer bolt(L"bolt"), nut(L"NUT");
  int second = -1;
  EXPECT_EQ(ProObjectwindowMdlnameCreate(bolt, PRO_PART, &second), PRO_TK_E_FOUND);
  EXPECT_EQ(ProObjectwindowMdlnameCreate(nut, PRO_PART, &second), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProObjectwindowMdlnameCreate(bolt, PRO_ASSEMBLY, &second), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProObjectwindowMdlnameCreate(bolt, PRO_FEATURE, &second), PRO_TK_INVALID_TYPE);
  EXPECT_EQ(second, -1);
  int found = -1;
  EXPECT_EQ(ProMdlWindowGet(Handle(part), &found), PRO_TK_NO_ERROR);
  EXPECT_EQ(found, window);
  EXPECT_EQ(ProWindowDelete(window), PRO_TK_NO_ERROR);
  EXPECT_NE(Open(part), window) << "ids are not reused";
}

TEST_F(WindowsTest, AfterACloseTheLastActiveOtherModelIsCurrent) {
  Model& a = NewPart(L"A");
  Model& b = NewPart(L"B");
  Model& c = NewPart(L"C");
  Open(NewPart(L"NEVER_ACTIVE"));
  const int of_a = OpenAndActivate(a);
  const int of_b = OpenAndActivate(b);
  const int of_c = OpenAndActivate(c);
  ProWindowActivate(of_a);
  ProWindowActivate(of_c);
  EXPECT_EQ(ProWindowDelete(Open(NewPart(L"INACTIVE"))), PRO_TK_NO_ERROR);
  EXPECT_EQ(Current(), Handle(c));
  EXPECT_EQ(ProWindowDelete(of_c), PRO_TK_NO_ERROR);
  EXPECT_EQ(Current(), Handle(a));
  EXPECT_EQ(ProWindowDelete(of_a), PRO_TK_NO_ERROR);
  EXPECT_EQ(Current(), Handle(b));
  EXPECT_EQ(ProWindowDelete(of_b), PRO_TK_NO_ERROR);
  EXPECT_EQ(Current(), nullptr);
  EXPECT_NE(host().session.Find(Handle(c)), nullptr);
}

TEST_F(WindowsTest, CallsOfAWindowTakeOnlyAnExistingOne) {
  EXPECT_EQ(ProWindowRepaint(-1), PRO_TK_NO_ERROR) << "the current one";
  EXPECT_EQ(ProWindowRepaint(0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProWindowRepaint(77), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProWindowDelete(0), PRO_TK_BAD_CONTEXT) << "the base window";
  EXPECT_EQ(ProWindowBrowserSizeSet(0, 100.0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProWindowBrowserSizeSet(0, 100.5), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProWindowBrowserSizeSet(9, 50.0), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(host().windows.browser_percent, 100.0);
}

}  // namespace
}  // namespace bench
