// The bench as a user starts it: a process with a console, and an add-in that answers on port 4001.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vek::endtoend {

class BenchProcess {
 public:
  // Starts the bench and waits until it says that it is ready; throws std::runtime_error with what it said
  // when it does not. `environment` is added to the process's own.
  explicit BenchProcess(const std::map<std::string, std::string>& environment = {});
  // Quits the bench, or kills it when it doesn't go.
  ~BenchProcess();
  BenchProcess(const BenchProcess&) = delete;
  BenchProcess& operator=(const BenchProcess&) = delete;

  // Sends a line to the console and gives the lines of its answer, without the closing one; throws when the
  // console calls it an error.
  std::vector<std::string> Console(const std::string& line);

  // Lines that the bench prints until one holds `text`; throws after `limit` without it.
  std::vector<std::string> LinesUntil(const std::string& text, std::chrono::milliseconds limit);

  // Ends the bench by its console, or by the end of its input, and gives its exit status.
  int Quit();
  int EndInput();

 private:
  std::string ReadLine(std::chrono::milliseconds limit);
  void Write(const std::string& text);

  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string unread_;
};

// The add-in installed in a folder of its own, emptied first, with a helper beside it that notes how it is
// called.
class InstalledAddin {
 public:
  explicit InstalledAddin(const std::filesystem::path& folder);

  std::map<std::string, std::string> Environment() const;
  std::filesystem::path Helper() const { return folder_ / "VekAI.Creo.AddinHelper.exe"; }
  // The arguments that the helper was called with, in their order.
  std::vector<std::string> HelperCalls() const;

 private:
  std::filesystem::path folder_;
};

// The processes of that name that came of this test program's benches: kernels, companions, and the benches
// themselves.
std::vector<pid_t> ProcessesOfBenches(const std::string& name);

// The folder that the bench keeps everything in, its drive D among it.
std::string BenchHome();

// A file as lines and as bytes; empty when it can't be read.
std::vector<std::string> LinesOf(const std::filesystem::path& file);
std::string BytesOf(const std::filesystem::path& file);

// The log of the add-in, whole, and without its time stamps line by line.
std::string LogText();
std::vector<std::string> LogLines();
void RemoveLog();

}  // namespace vek::endtoend
