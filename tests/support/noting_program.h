// A copy of the program that notes how it was called, under a name and at a place of the test's choice.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace vek::support {

// The folder of the test program, where the original of the noting program lies too.
std::wstring TestProgramFolder();

// Everything in a file, as bytes; empty for none.
std::string ReadBytes(const std::wstring& path);

// Takes a copy of the noting program away with what it has written, for instance what a broken-off run has
// left.
void RemoveNotingProgram(const std::wstring& path);

class NotingProgram {
 public:
  struct Run {
    std::wstring command_line;
    std::wstring directory;
  };

  // Puts the copy at `path`, whose folder must be there, or throws.
  explicit NotingProgram(std::wstring path);
  // Lets it go if it is held, waits for it to end, and takes it away with what it has written.
  ~NotingProgram();
  NotingProgram(const NotingProgram&) = delete;
  NotingProgram& operator=(const NotingProgram&) = delete;

  const std::wstring& path() const { return path_; }

  // From now on it stays until Release, half a minute at most, and notes its call only then.
  void Hold();
  void Release();

  // The calls noted so far.
  std::vector<Run> Runs() const;
  // The same, as soon as there are `count` of them or ten seconds have passed.
  std::vector<Run> WaitForRuns(std::size_t count) const;

 private:
  std::wstring path_;
};

}  // namespace vek::support
