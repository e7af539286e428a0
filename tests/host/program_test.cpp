#include "bench/host/console/program.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using testing::HasSubstr;

class ProgramTest : public support::BenchTest {
 protected:
  // The exit status; what was printed as an error is in `said`.
  int Run(std::vector<std::wstring> arguments) {
    arguments.insert(arguments.begin(), L"creobench.exe");
    std::vector<wchar_t*> pointers;
    for (std::wstring& argument : arguments) pointers.push_back(argument.data());
    testing::internal::CaptureStderr();
    const int status = BenchMain(static_cast<int>(pointers.size()), pointers.data());
    said = testing::internal::GetCapturedStderr();
    host().announcements.SetSink(nullptr);
    return status;
  }
  std::string said;
};

TEST_F(ProgramTest, ArgumentsWithoutSenseAreExplained) {
  EXPECT_EQ(Run({}), 1);
  EXPECT_THAT(said, HasSubstr("usage: creobench.exe"));
  EXPECT_EQ(Run({L"--addin", L"a.dll", L"--kernel", L"k", L"--wrok", L"."}), 1);
  EXPECT_THAT(said, HasSubstr("there is no option --wrok"));
  EXPECT_EQ(Run({L"--addin", L"a.dll", L"--kernel", L"k", L"--work"}), 1);
  EXPECT_THAT(said, HasSubstr("the option --work needs a value"));
  WriteFile(L"file", "");
  EXPECT_EQ(Run({L"--addin", L"missing.dll", L"--kernel", L"k", L"--work", PathOf(L"file")}), 1);
  EXPECT_THAT(said, HasSubstr("file can't be entered")) << "before the add-in loads";
}

TEST_F(ProgramTest, AnAddinThatCantBeLoadedIsStatusTwo) {
  EXPECT_EQ(Run({L"--addin", PathOf(L"missing.dll"), L"--kernel", L"k", L"--work", directory()}), 2);
  EXPECT_THAT(said, HasSubstr("missing.dll can't be loaded"));
  EXPECT_EQ(
      Run({L"--addin", L"C:\\windows\\system32\\kernel32.dll", L"--kernel", L"k", L"--work", directory()}),
      2);
  EXPECT_THAT(said, HasSubstr("the add-in has no entry point user_initialize_plus"));
}

TEST_F(ProgramTest, AnAddinThatRefusesToStartIsStatusThreeWithItsReason) {
  const std::wstring addin = L"Z:" + std::filesystem::path(VEK_TEST_REFUSING_ADDIN).wstring();
  EXPECT_EQ(Run({L"--addin", addin, L"--kernel", L"k", L"--work", directory()}), 3);
  EXPECT_THAT(said, HasSubstr("refused to start (status -1): no licence"));
}

}  // namespace
}  // namespace bench
