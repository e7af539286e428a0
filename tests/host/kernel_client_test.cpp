#include "bench/host/kernel_link/kernel_client.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "bench/host/features/section_solver.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSoon{30'000};
constexpr milliseconds kAtOnce{300};

// Each script is a kernel that goes wrong in its own way.
class KernelClientTest : public support::FeatureTest {
 protected:
  static std::wstring Script(const wchar_t* name) {
    return std::filesystem::path(VEK_TEST_KERNELS).wstring() + L"/" + name;
  }
  bool Answers() { return client_.Ask("regenerate", R"("recipes":[])").has_value(); }

  KernelClient client_;
};

TEST_F(KernelClientTest, KernelThatNeverAnswersIsLetGo) {
  client_.SetProgram(Script(L"never_answers.sh"));
  client_.SetTimeouts(kSoon, kAtOnce);
  EXPECT_FALSE(Answers());
  EXPECT_TRUE(Complained("doesn't answer"));
}

TEST_F(KernelClientTest, KernelsThatDieOfEveryRequestOrTalkNonsenseAreGivenUp) {
  const std::pair<const wchar_t*, const char*> cases[] = {
      {L"dies_when_asked.sh", "died before it answered"},
      {L"talks_nonsense.sh", "answered what no one asked"},
      {L"answers_nobody.sh", "answered what no one asked"},
      {L"answers_beside_the_point.sh", "rejects a request"},
  };
  for (const auto& [script, complaint] : cases) {
    host().announcements.Clear();
    client_.SetProgram(Script(script));
    EXPECT_FALSE(Answers()) << complaint;
    EXPECT_TRUE(Complained(complaint)) << complaint;
  }
  client_.SetProgram(KernelProgram());
  EXPECT_TRUE(Answers()) << "the next request works";
}

TEST_F(KernelClientTest, ASectionThatIsAnotherOneIsNoAnswer) {
  host().kernel.SetProgram(Script(L"answers_beside_the_point.sh"));
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
