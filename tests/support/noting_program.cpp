#include "tests/support/noting_program.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

#include "addin/text/utf8.h"

namespace vek::support {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 10s;

template <typename Condition>
bool WaitUntil(Condition&& condition) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(5ms);
  }
  return true;
}

}  // namespace

std::wstring TestProgramFolder() {
  wchar_t path[MAX_PATH] = L"";
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path().wstring();
}

std::string ReadBytes(const std::wstring& path) {
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void RemoveNotingProgram(const std::wstring& path) {
  ::DeleteFileW((path + L".hold").c_str());
  // A program that runs can't be deleted, and the last one may still be on its way out.
  WaitUntil([&] { return ::DeleteFileW(path.c_str()) || ::GetLastError() == ERROR_FILE_NOT_FOUND; });
  ::DeleteFileW((path + L".noted").c_str());
}

NotingProgram::NotingProgram(std::wstring path) : path_(std::move(path)) {
  RemoveNotingProgram(path_);
  const std::wstring original = TestProgramFolder() + L"\\note_arguments.exe";
  if (!::CopyFileW(original.c_str(), path_.c_str(), FALSE))
    throw std::runtime_error("the noting program could not be copied");
}

NotingProgram::~NotingProgram() {
  RemoveNotingProgram(path_);
}

void NotingProgram::Hold() {
  std::ofstream(std::filesystem::path(path_ + L".hold")) << "hold";
}

void NotingProgram::Release() {
  ::DeleteFileW((path_ + L".hold").c_str());
}

std::vector<NotingProgram::Run> NotingProgram::Runs() const {
  std::istringstream noted(ReadBytes(path_ + L".noted"));
  std::vector<Run> runs;
  std::string command_line;
  std::string directory;
  while (std::getline(noted, command_line) && std::getline(noted, directory))
    runs.push_back({DecodeUtf8(command_line), DecodeUtf8(directory)});
  return runs;
}

std::vector<NotingProgram::Run> NotingProgram::WaitForRuns(std::size_t count) const {
  WaitUntil([&] { return Runs().size() >= count; });
  return Runs();
}

}  // namespace vek::support
