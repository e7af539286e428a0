#include "addin/host/show_message.h"

#include <gtest/gtest.h>

#include "bench/host/host.h"
#include "tests/shell/lifecycle_fixture.h"

namespace vek {
namespace {

using bench::TheHost;
using Names = std::vector<std::string>;

class Message : public Lifecycle {};

TEST_F(Message, IsInformationWithAnOkButton) {
  ShowMessage(L"Could not open\nthe caf\u00e9.");
  ASSERT_EQ(TheHost().ui.Messages().size(), 1u);
  EXPECT_EQ(TheHost().ui.Messages()[0].title, L"Information");
  EXPECT_EQ(TheHost().ui.Messages()[0].text, L"Could not open\nthe caf\u00e9.");

  const auto calls = CallsSince(0);
  ASSERT_EQ(NamesSince(0), (Names{"ProArrayAlloc", "ProUIMessageDialogDisplay", "ProArrayFree"}));
  EXPECT_TRUE(calls[1].arguments.starts_with("2, \"Information\", ")) << calls[1].arguments;
  // The host refuses a default button that is not among those of the array.
  EXPECT_EQ(calls[1].status, 0);
}

TEST_F(Message, GivesItsButtonsBackWhenItCouldNotBeShown) {
  TheHost().faults.Fail("ProUIMessageDialogDisplay", -1);
  ShowMessage(L"unseen");
  EXPECT_TRUE(TheHost().ui.Messages().empty());
  EXPECT_EQ(NamesSince(0).back(), "ProArrayFree");
}

TEST_F(Message, IsNotShownWithoutButtons) {
  TheHost().faults.Fail("ProArrayAlloc", -1);
  ShowMessage(L"unseen");
  EXPECT_EQ(NamesSince(0), Names{"ProArrayAlloc"});

  // Nor with an array that isn't there although its allocation succeeded.
  TheHost().faults.NoEffect("ProArrayAlloc");
  ShowMessage(L"unseen");
  EXPECT_EQ(NamesSince(0), (Names{"ProArrayAlloc", "ProArrayAlloc"}));
}

}  // namespace
}  // namespace vek
