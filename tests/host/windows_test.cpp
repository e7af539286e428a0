#include <ProWindows.h>
#include <gmock/gmock.h>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using support::MdlNameBuffer;

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

TEST_F(WindowsTest, OnlyActivatingMakesAModelCurrent) {
  Model& part = NewPart(L"BOLT");
  EXPECT_EQ(ProMdlDisplay(Handle(part)), PRO_TK_NO_ERROR);
  int none = -1;
  EXPECT_EQ(ProMdlWindowGet(Handle(part), &none), PRO_TK_E_NOT_FOUND) << "display opens no window";
  const int window = Open(part);
  EXPECT_EQ(ProMdlDisplay(Handle(part)), PRO_TK_NO_ERROR);
  EXPECT_EQ(Current(), nullptr);
  ASSERT_EQ(ProWindowActivate(window), PRO_TK_NO_ERROR);
  EXPECT_EQ(Current(), Handle(part));
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

TEST_F(WindowsTest, ErasingAModelTakesItsWindowAlong) {
  Model& a = NewPart(L"A");
  Model& b = NewPart(L"B");
  OpenAndActivate(a);
  const int of_b = OpenAndActivate(b);
  ASSERT_EQ(ProMdlErase(Handle(b)), PRO_TK_NO_ERROR);
  EXPECT_EQ(Current(), Handle(a));
  EXPECT_EQ(ProWindowActivate(of_b), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProWindowDelete(of_b), PRO_TK_BAD_INPUTS);
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
