// The companion application is killed before it answers, in the middle of its answer, and before it is asked:
// the command ends at once, the log tells why, and the next one works.

#include <signal.h>

#include <algorithm>
#include <fstream>
#include <future>

#include "tests/endtoend/companion_ground.h"

namespace vek::endtoend {
namespace {

using namespace std::chrono_literals;

const char kUnsent[] =
    "Error sending measurement data: HTTP request exception: Failed to receive HTTP response. Error: ";

class CompanionKills : public BenchTest {
 protected:
  static void SetUpTestSuite() {
    ForgetEarlierCompanions();
    BenchTest::SetUpTestSuite();
    Succeed(BlockOf(10, 10, 10, "FACE"));
    const std::string face = Bench().Console("faces").at(0);
    Bench().Console("select " + face.substr(0, face.find(',')));
  }
  static void TearDownTestSuite() {
    for (const pid_t companion : ProcessesOfBenches("Vek.exe")) kill(companion, SIGKILL);
    BenchTest::TearDownTestSuite();
    EXPECT_TRUE(ComesTrue([] { return ProcessesOfBenches("Vek.exe").empty(); }, 30s));
  }
  void SetUp() override { RemoveLog(); }

  // A new companion, with the answer to its first request.
  static void Start(const std::string& answer) {
    std::ofstream(AnswersFile()) << answer << '\n';
    EXPECT_TRUE(Bench().Console("command OpenVekApp_Act").empty());
  }
  static void Kill() {
    const auto companions = ProcessesOfBenches("Vek.exe");
    ASSERT_EQ(companions.size(), 1u);
    kill(companions[0], SIGKILL);
  }
  // Sends what is measured on the face, and kills the companion once it has received that.
  static void MeasureAndKill() {
    const std::size_t received = LinesOf(ReceivedFile()).size();
    auto command =
        std::async(std::launch::async, [] { return Bench().Console("command FindVekComponent_Act"); });
    ASSERT_TRUE(ComesTrue([&] { return LinesOf(ReceivedFile()).size() > received; }));
    EXPECT_EQ(command.wait_for(200ms), std::future_status::timeout) << "it waits for the rest of the answer";
    // Another request comes in the meantime, and is served behind the command.
    EXPECT_EQ(Request("POST", "/", R"({"downloadPath":"B-456.prt"})").status, 200);
    Kill();
    EXPECT_EQ(command.wait_for(2s), std::future_status::ready) << "the companion's end is its end";
    EXPECT_TRUE(command.get().empty());
    Bench().LinesUntil("message: Could not open the Windchill object.", 20s);
  }
};

TEST_F(CompanionKills, BeforeItsAnswerAndInTheMiddleOfItsHeadersAndOfItsBody) {
  Start("stall");
  MeasureAndKill();
  AwaitLogged(kUnsent);
  RemoveLog();
  // Half of an answer without a body lies within its headers. Wine takes what has come of them.
  Start("half");
  MeasureAndKill();
  EXPECT_TRUE(ComesTrue([] { return IsLogged("Measurement data sent successfully") || IsLogged(kUnsent); }))
      << LogText();
  // Head, and a part of 200 characters.
  Start("half " + std::string(200, 'x'));
  MeasureAndKill();
  AwaitLogged("Measurement data sent successfully");
}

TEST_F(CompanionKills, BeforeItIsAsked) {
  Start("");
  Kill();
  ASSERT_TRUE(ComesTrue([] { return ProcessesOfBenches("Vek.exe").empty(); }));
  EXPECT_EQ(Bench().Console("command FindVekComponent_Act"),
            std::vector<std::string>{"message: Turning on the Vek app, try again after Vek is running"});
  RemoveLog();
  EXPECT_TRUE(Bench().Console("command FindVekComponent_Act").empty());
  EXPECT_TRUE(IsLogged("Measurement data sent successfully"));
}

}  // namespace
}  // namespace vek::endtoend
