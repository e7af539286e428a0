#include <ProArray.h>
#include <ProUI.h>
#include <gmock/gmock.h>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using support::Buffer;
using testing::ElementsAre;

class DialogsTest : public support::BenchTest {
 protected:
  ProError ShowMessage(std::wstring_view text, ProUIMessageButton default_button = PRO_UI_MESSAGE_OK) {
    Buffer<32> title(L"Information");
    Buffer<200> buffer(text);
    ProArray buttons = nullptr;
    EXPECT_EQ(ProArrayAlloc(1, sizeof(ProUIMessageButton), 1, &buttons), PRO_TK_NO_ERROR);
    *static_cast<ProUIMessageButton*>(buttons) = PRO_UI_MESSAGE_OK;
    const ProError status = ProUIMessageDialogDisplay(
        PROUIMESSAGE_INFO, title, buffer, static_cast<ProUIMessageButton*>(buttons), default_button, &answer);
    EXPECT_EQ(ProArrayFree(&buttons), PRO_TK_NO_ERROR);
    return status;
  }
  ProUIMessageButton answer{};
};

TEST_F(DialogsTest, AMessageIsSaidOnOneLineAndAnswersItsDefault) {
  EXPECT_EQ(ShowMessage(L"first\nsecond\r\nÄ"), PRO_TK_NO_ERROR);
  EXPECT_EQ(answer, PRO_UI_MESSAGE_OK);
  EXPECT_THAT(host().announcements.Lines(), ElementsAre("message: first\\nsecond\\nÄ"));
  ASSERT_EQ(host().ui.Messages().size(), 1u);
  EXPECT_EQ(host().ui.Messages()[0].title, L"Information");
}

TEST_F(DialogsTest, ScriptedAnswersAreGivenInTheirOrder) {
  host().ui.AnswerNext(L"cancel");
  host().ui.AnswerNext(L"ok");
  EXPECT_EQ(ShowMessage(L"one"), PRO_TK_USER_ABORT);
  EXPECT_EQ(ShowMessage(L"two"), PRO_TK_NO_ERROR);
  EXPECT_EQ(ShowMessage(L"three"), PRO_TK_NO_ERROR);
}

TEST_F(DialogsTest, TheDefaultMustBeAmongTheButtons) {
  EXPECT_EQ(ShowMessage(L"text", static_cast<ProUIMessageButton>(7)), PRO_TK_BAD_INPUTS);
  EXPECT_TRUE(host().ui.Messages().empty());
}

TEST_F(DialogsTest, ADialogIsMadeOnceAndDestroyedOnce) {
  char name[] = "DIALOG";
  EXPECT_EQ(ProUIDialogCreate(nullptr, nullptr), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProUIDialogCreate(name, nullptr), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProUIDialogCreate(name, nullptr), PRO_TK_E_FOUND);
  EXPECT_EQ(ProUIDialogDestroy(name), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProUIDialogDestroy(name), PRO_TK_E_NOT_FOUND);
}

}  // namespace
}  // namespace bench
