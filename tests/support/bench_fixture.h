// The ground on which the bench host itself is tested: an empty session, an empty working directory of the
// test's own, and at the end nothing outstanding but private sections and no violation.
#pragma once

#include <ProMdl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bench/host/host.h"
#include "tests/support/scratch_folder.h"

namespace bench::support {

// A text in a buffer of the toolkit, which takes no constants.
template <std::size_t N>
class Buffer {
 public:
  Buffer() = default;
  Buffer(std::wstring_view text) {
    if (text.size() >= N) throw std::length_error("the text does not fit its buffer");
    text.copy(text_, text.size());
  }
  operator wchar_t*() { return text_; }
  std::wstring text() const { return text_; }

 private:
  wchar_t text_[N] = {};
};
using NameBuffer = Buffer<PRO_NAME_SIZE>;
using MdlNameBuffer = Buffer<PRO_MDLNAME_SIZE>;
using PathBuffer = Buffer<PRO_PATH_SIZE>;

class BenchTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  Host& host() { return TheHost(); }
  // For tests that want geometry: the test fails at once when the environment names no kernel.
  void RequireKernel();

  // A new part or assembly, made by the toolkit's call; no window shows it.
  Model& NewPart(std::wstring_view name);
  Model& NewAssembly(std::wstring_view name);
  // The same with a window, active.
  Model& NewCurrentPart(std::wstring_view name);

  // For tests of violations: they are looked at, and are no fault of the test.
  std::vector<std::string> TakeViolations();

  // The test's working directory.
  std::wstring directory() const { return folder_->path(); }
  std::wstring PathOf(const std::wstring& file) const { return *folder_ / file; }
  void WriteFile(const std::wstring& file, std::string_view text);
  std::vector<std::wstring> FilesHere() const;
  // Whether the host complained in words that hold this text.
  bool Complained(std::string_view text) const;

 private:
  std::optional<vek::support::ScratchFolder> folder_;
};

}  // namespace bench::support
