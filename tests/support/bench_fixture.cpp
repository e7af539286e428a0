#include "tests/support/bench_fixture.h"

#include <ProSolid.h>
#include <ProUtil.h>
#include <ProWindows.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "bench/host/text.h"

namespace bench::support {
namespace {

const char* KernelOfEnvironment() {
  return std::getenv("VEK_BENCH_KERNEL");
}

// A kernel serves all tests of the process: it keeps nothing between two requests but a cache.
void UseKernelOfEnvironment() {
  static bool done = false;
  if (done || !KernelOfEnvironment()) return;
  TheHost().kernel.SetProgram(FromUtf8(KernelOfEnvironment()));
  done = true;
}

}  // namespace

void BenchTest::SetUp() {
  host().Reset();
  UseKernelOfEnvironment();
  folder_.emplace();
  PathBuffer path(directory());
  ASSERT_EQ(ProDirectoryChange(path), PRO_TK_NO_ERROR);
}

void BenchTest::TearDown() {
  for (const auto& [kind, count] : host().ledger.Outstanding())
    ADD_FAILURE() << count << " outstanding of kind " << Name(kind);
  for (const std::string& violation : host().ledger.Violations()) ADD_FAILURE() << violation;
  if (HasFailure())
    for (const std::string& line : host().announcements.Lines()) std::cerr << "host: " << line << '\n';
  host().Reset();
  // A folder that a process works in can't be removed.
  std::filesystem::current_path(std::filesystem::temp_directory_path());
  folder_.reset();
}

void BenchTest::RequireKernel() {
  ASSERT_NE(KernelOfEnvironment(), nullptr) << "VEK_BENCH_KERNEL must name the geometry kernel's program";
}

Model& BenchTest::NewPart(std::wstring_view name) {
  MdlNameBuffer buffer(name);
  ProSolid solid = nullptr;
  EXPECT_EQ(ProSolidMdlnameCreate(buffer, PRO_MDLFILE_PART, &solid), PRO_TK_NO_ERROR);
  return *host().session.Find(solid);
}

Model& BenchTest::NewAssembly(std::wstring_view name) {
  MdlNameBuffer buffer(name);
  ProSolid solid = nullptr;
  EXPECT_EQ(ProSolidMdlnameCreate(buffer, PRO_MDLFILE_ASSEMBLY, &solid), PRO_TK_NO_ERROR);
  return *host().session.Find(solid);
}

Model& BenchTest::NewCurrentPart(std::wstring_view name) {
  Model& part = NewPart(name);
  MdlNameBuffer buffer(name);
  int window = -1;
  EXPECT_EQ(ProObjectwindowMdlnameCreate(buffer, PRO_PART, &window), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProWindowActivate(window), PRO_TK_NO_ERROR);
  return part;
}

std::vector<std::string> BenchTest::TakeViolations() {
  auto violations = host().ledger.Violations();
  host().ledger.Clear();
  return violations;
}

void BenchTest::WriteFile(const std::wstring& file, std::string_view text) {
  std::ofstream(std::filesystem::path(PathOf(file)), std::ios::binary) << text;
}

std::vector<std::wstring> BenchTest::FilesHere() const {
  std::vector<std::wstring> files;
  for (const auto& entry : std::filesystem::directory_iterator(directory()))
    files.push_back(entry.path().filename().wstring());
  std::ranges::sort(files);
  return files;
}

bool BenchTest::Complained(std::string_view text) const {
  return std::ranges::any_of(TheHost().announcements.Lines(), [text](const std::string& line) {
    return line.starts_with("complaint: ") && line.find(text) != std::string::npos;
  });
}

}  // namespace bench::support
