#include "bench/host/kernel_link/kernel_client.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "bench/host/features/section_solver.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using std::chrono::milliseconds;

constexpr auto kNothing = R"("recipes":[])";
constexpr milliseconds kSoon{30'000};
constexpr milliseconds kAtOnce{300};

// Each script is a kernel that goes wrong in its own way.
class KernelClientTest : public support::FeatureTest {
 protected:
  void UseScript(const char* name) {
    client_.SetProgram(std::filesystem::path(VEK_TEST_KERNELS).wstring() + L"/" +
                       std::wstring(name, name + strlen(name)));
  }
  bool Answers() { return client_.Ask("regenerate", kNothing).has_value(); }

  KernelClient client_;
};

TEST_F(KernelClientTest, KernelIsStartedAtTheFirstRequestAndAnswersEveryOneThatMakesSense) {
  client_.SetProgram(KernelProgram());
  const auto first = client_.Ask("regenerate", kNothing);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->at("bodies"), 0);
  EXPECT_FALSE(client_.Ask("dance", ""));
  EXPECT_TRUE(Complained("rejects a request"));
  EXPECT_TRUE(Answers());
}

TEST_F(KernelClientTest, KernelThatDiesOfARequestIsAskedOnceMoreAndThenGivenUp) {
  UseScript("dies_when_asked.sh");
  EXPECT_FALSE(Answers());
  EXPECT_TRUE(Complained("died before it answered"));
  client_.SetProgram(KernelProgram());
  EXPECT_TRUE(Answers()) << "the next request works";
}

TEST_F(KernelClientTest, KernelThatNeverAnswersIsLetGo) {
  UseScript("never_answers.sh");
  client_.SetTimeouts(kSoon, kAtOnce);
  EXPECT_FALSE(Answers());
  EXPECT_TRUE(Complained("doesn't answer"));
}

TEST_F(KernelClientTest, KernelThatTalksNonsenseIsNotBelieved) {
  for (const char* script : {"talks_nonsense.sh", "answers_nobody.sh"}) {
    host().announcements.Clear();
    UseScript(script);
    EXPECT_FALSE(Answers()) << script;
    EXPECT_TRUE(Complained("answered what no one asked")) << script;
  }
}

TEST_F(KernelClientTest, AnswersThatDontBelongToTheirRequestsAreNoAnswers) {
  UseScript("answers_beside_the_point.sh");
  EXPECT_FALSE(Answers());
  EXPECT_TRUE(Complained("rejects a request"));

  host().kernel.SetProgram(std::filesystem::path(VEK_TEST_KERNELS).wstring() +
                           L"/answers_beside_the_point.sh");
  const SolvedSection solved = SolveSection({});
  host().kernel.SetProgram(KernelProgram());
  EXPECT_FALSE(solved.section);
  EXPECT_TRUE(solved.no_kernel);
  EXPECT_TRUE(Complained("can't be read"));
}

TEST_F(KernelClientTest, ProgramThatCantRunIsAClearComplaint) {
  EXPECT_FALSE(Answers());
  EXPECT_TRUE(Complained("--kernel"));
  client_.SetProgram(L"/nowhere/creokernel");
  EXPECT_FALSE(Answers());
  EXPECT_TRUE(Complained("/nowhere/creokernel"));
  client_.SetProgram(L"/bin/true");
  client_.SetTimeouts(kAtOnce, kSoon);
  EXPECT_FALSE(Answers());
  EXPECT_TRUE(Complained("doesn't connect"));
}

}  // namespace
}  // namespace bench
