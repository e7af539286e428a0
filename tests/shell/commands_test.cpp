// The menu, the popup menus, the commands and the messages, as the user meets them.
#include <gtest/gtest.h>

#include <algorithm>

#include "addin/host/show_message.h"
#include "addin/shell/helper_process.h"
#include "bench/host/host.h"
#include "tests/shell/lifecycle_fixture.h"
#include "tests/support/noting_program.h"

namespace vek {
namespace {

using bench::Menus;
using bench::TheHost;
using Names = std::vector<std::string>;

class Commands : public Lifecycle {
 protected:
  static Names ButtonsOf(const std::string& menu) {
    Names names;
    const Menus::Menu* found = TheHost().menus.FindMenu(menu);
    if (!found) return {"no menu " + menu};
    for (const Menus::Button& button : found->buttons)
      names.push_back(button.name + " " + TheHost().menus.Find(button.command)->name);
    return names;
  }
  static std::vector<std::wstring> Messages() {
    std::vector<std::wstring> texts;
    for (const auto& message : TheHost().ui.Messages()) texts.push_back(message.text);
    return texts;
  }
};

TEST_F(Commands, StandInTheirOwnMenuBehindHelpAndInTheTrees) {
  Start();
  const auto& menus = TheHost().menus.All();
  const auto help = std::ranges::find(menus, "Help", &Menus::Menu::name);
  ASSERT_NE(help, menus.end());
  EXPECT_EQ((help + 1)->name, "VekCreoAddin");
  EXPECT_EQ(ButtonsOf("VekCreoAddin"),
            (Names{"OpenVekMenuItem OpenVekApp_Act", "FindComponentMenuItem FindVekComponent_Act",
                   "ReplaceVekPartMenuItem ReplaceVekPart_Act", "InspectAssemblyMenuItem InspectAssembly_Act",
                   "AboutVekMenuItem AboutVek_Act"}));
  EXPECT_EQ(ButtonsOf("ActionMenu"), (Names{"ReplaceVekPartMenuItemTreeView ReplaceVekPart_Act",
                                            "InspectAssemblyMenuItemTreeView InspectAssembly_Act"}));
  const std::pair<const char*, const char*> icons[] = {{"OpenVekApp_Act", "vekApp.png"},
                                                       {"FindVekComponent_Act", "findComponent.png"},
                                                       {"ReplaceVekPart_Act", "partReplacer.png"},
                                                       {"InspectAssembly_Act", "assemblyInspector.png"},
                                                       {"AboutVek_Act", "about.png"}};
  for (const auto& [name, icon] : icons) {
    const Menus::Command* command = TheHost().menus.Find(name);
    ASSERT_NE(command, nullptr) << name;
    EXPECT_EQ(command->icon, icon);
    EXPECT_TRUE(command->designated) << name;
    EXPECT_TRUE(Menus::IsAvailable(command->access)) << name;
  }
}

TEST_F(Commands, AreAddedToEveryPopupMenuThatIsBuilt) {
  Start();
  for (const wchar_t* menu : {L"Graphics", L"Tree"}) {
    Names entries;
    for (const auto& entry : TheHost().menus.BuildPopup(menu))
      entries.push_back(TheHost().menus.Find(entry.command)->name + ": " +
                        std::string(entry.label.begin(), entry.label.end()) + ", " +
                        std::string(entry.help.begin(), entry.help.end()));
    EXPECT_EQ(entries, (Names{"FindVekComponent_Act: Find Component, Find Component in Assembly",
                              "ReplaceVekPart_Act: Replace Part, Replace Part",
                              "InspectAssembly_Act: Inspect Assembly, Inspect Assembly"}));
  }
  Stop();
  EXPECT_TRUE(TheHost().menus.BuildPopup(L"Tree").empty()) << "nothing is called once the add-in is gone";
}

TEST_F(Commands, ThatFailToRegisterAreNotThereAndTheRestIs) {
  TheHost().faults.Fail("ProCmdActionAdd", -1, 3);
  TheHost().faults.Fail("ProMenubarMenuAdd", -1);
  TheHost().faults.Fail("ProCmdIconSet", -1);
  Start();
  EXPECT_EQ(TheHost().menus.Find("ReplaceVekPart_Act"), nullptr);
  EXPECT_NE(TheHost().menus.Find("InspectAssembly_Act"), nullptr);
  EXPECT_TRUE(Logged(L"ERROR: Failed to find ReplaceVekPart_Act command"));
  EXPECT_TRUE(Logged(L"WARNING: Failed to create Find Component toolbar button"));
  EXPECT_TRUE(Logged(L"Server status: ACTIVE"));
  EXPECT_EQ(TheHost().menus.BuildPopup(L"Tree").size(), 2u);
}

TEST_F(Commands, AboutWaitsForTheHelperAndMissesIt) {
  Start();
  EXPECT_TRUE(TheHost().menus.Run("AboutVek_Act"));
  EXPECT_EQ(Messages(), std::vector<std::wstring>{L"Could not open About dialog."});
  const support::NotingProgram helper(HelperPath());
  TheHost().menus.Run("AboutVek_Act");
  const auto runs = helper.Runs();
  ASSERT_EQ(runs.size(), 1u) << "it has ended before the command has";
  EXPECT_EQ(runs[0].command_line, L"\"" + HelperPath() + L"\" --about");
  EXPECT_EQ(Messages().size(), 1u);
  EXPECT_FALSE(RunHelper(nullptr, true));
  EXPECT_FALSE(RunHelper(L"", true));
  EXPECT_EQ(helper.Runs().size(), 1u);
}

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

TEST_F(Message, IsNotShownWithButtonsThatAreNotThere) {
  TheHost().faults.NoEffect("ProArrayAlloc");
  ShowMessage(L"unseen");
  EXPECT_EQ(NamesSince(0), Names{"ProArrayAlloc"});
}

}  // namespace
}  // namespace vek
