// What the user and the companion application can ask of the add-in, each by itself.

#include "tests/endtoend/companion_ground.h"

namespace vek::endtoend {
namespace {

using namespace std::chrono_literals;

TEST_F(CompanionCircle, MeasuresAFaceThatIsSelectedOrPicked) {
  Activate("BOLT");
  // The face on top, 10 x 10, is picked in its middle.
  std::string top;
  for (const std::string& face : Bench().Console("faces"))
    if (face.find("at 5 5 10 mm") != std::string::npos) top = face.substr(0, face.find(','));
  const std::string measured =
      R"(/receive-data {"Area":"100.000000mm","Perimeter":"0.0","Radius":"0.0","Diameter":"0.0",)"
      R"("CenterPoint":{"X":"5.000000mm","Y":"5.000000mm","Z":"10.000000mm"},)"
      R"("Normal":"0.000000, 0.000000, 1.000000","IsHole":false,"surfaceType":"Plane","SelectedHoleInfo":null})";
  const auto received = [] { return LinesOf(ReceivedFile()).size(); };
  const std::size_t before = received();
  Bench().Console("select " + top);
  EXPECT_TRUE(Bench().Console("command FindVekComponent_Act").empty());
  EXPECT_EQ(LastReceived(), measured);
  Bench().Console("select none");
  Bench().Console("pick " + top);
  const std::string prompt = "pick: datum,surface,sldface,qltface,csys";
  EXPECT_EQ(Bench().Console("command FindVekComponent_Act"), std::vector<std::string>{prompt});
  EXPECT_EQ(received(), before + 2);
  EXPECT_EQ(LastReceived(), measured);
  EXPECT_TRUE(IsLogged("No current face selection found, prompting user to select face"));
  Bench().Console("pick none");
  EXPECT_EQ(Bench().Console("command FindVekComponent_Act"),
            (std::vector<std::string>{prompt, "message: No faces selected"}));
  EXPECT_EQ(received(), before + 2);
}

TEST_F(CompanionCircle, OpensAFileOverAPartInASecondSession) {
  Activate("BOLT");
  EXPECT_EQ(Post(R"({"downloadPath":")" + InJson("screw.prt.1") + "\"}").status, 200);
  AwaitLogged("SUCCESS: OpenFileInCreoNewWindow - New session created for imported part");
  ASSERT_TRUE(ComesTrue([] { return !LinesOf(SessionsFile()).empty(); }));
  // Escapes stay as they came.
  EXPECT_EQ(LinesOf(SessionsFile()).back(), InJson("screw.prt.1"));
}

TEST_F(CompanionCircle, ShowsTextsForAllKeysOfItsMenus) {
  int buttons = 0;
  for (const std::string& line : Bench().Console("menus")) {
    EXPECT_EQ(line.find("MenuItem"), std::string::npos) << "a key that the message file lacks: " << line;
    if (line.find("_Act, ") != std::string::npos) ++buttons;
  }
  EXPECT_EQ(buttons, 7) << "five in the add-in's own menu, two in the tree's";
  EXPECT_EQ(Bench().Console("popup Graphics").size(), 3u);
}

TEST(CompanionProcess, IsStartedByTheFirstCommandAndEndsWithTheBench) {
  ForgetEarlierCompanions();
  BenchProcess bench;
  bench.Console("command OpenVekApp_Act");
  EXPECT_EQ(ProcessesOfBenches("Vek.exe").size(), 1u);
  EXPECT_EQ(bench.Console("command OpenVekApp_Act"),
            std::vector<std::string>{"message: Vek app is already running."});
  EXPECT_EQ(bench.Quit(), 0);
  for (const char* program : {"Vek.exe", "creobench.exe", "creokernel", "parametric.exe"})
    EXPECT_TRUE(ComesTrue([&] { return ProcessesOfBenches(program).empty(); }, 15s))
        << program << " is still there";
}

}  // namespace
}  // namespace vek::endtoend
