#include "tests/endtoend/bench_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace vek::endtoend {
namespace {

constexpr std::chrono::seconds kStartLimit{120};
constexpr std::chrono::seconds kConsoleLimit{60};

std::string LogPath() {
  return BenchHome() + "/drive_d/VekCreoAddin.log";
}

}  // namespace

std::vector<pid_t> ProcessesOfBenches(const std::string& name) {
  const std::string mark = "VEK_ENDTOEND=" + std::to_string(getpid());
  std::vector<pid_t> processes;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    if (BytesOf(entry.path() / "comm") == name + "\n" &&
        BytesOf(entry.path() / "environ").find(mark) != std::string::npos)
      processes.push_back(std::stoi(entry.path().filename().string()));
  }
  return processes;
}

std::string BenchHome() {
  const char* home = std::getenv("VEK_BENCH_HOME");
  return home != nullptr ? home : std::string(VEK_SOURCE_DIR) + "/build/bench";
}

std::vector<std::string> LinesOf(const std::filesystem::path& file) {
  std::vector<std::string> lines;
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string LogText() {
  return BytesOf(LogPath());
}

std::vector<std::string> LogLines() {
  std::vector<std::string> lines = LinesOf(LogPath());
  for (std::string& line : lines)
    if (const auto stamp_end = line.find("] "); stamp_end != std::string::npos) line.erase(0, stamp_end + 2);
  return lines;
}

void RemoveLog() {
  std::filesystem::remove(LogPath());
}

InstalledAddin::InstalledAddin(const std::filesystem::path& folder) : folder_(folder) {
  const std::filesystem::path root(VEK_SOURCE_DIR);
  std::filesystem::remove_all(folder_);
  std::filesystem::create_directories(folder_);
  std::filesystem::copy(root / "build/windows/addin/VekCreoAddin.dll", folder_);
  std::filesystem::copy(root / "deploy/welcome.html", folder_);
  std::filesystem::copy(root / "build/windows/tests/platform/note_arguments.exe", Helper());
}

std::map<std::string, std::string> InstalledAddin::Environment() const {
  return {{"VEK_BENCH_ADDIN", (folder_ / "VekCreoAddin.dll").string()}};
}

std::vector<std::string> InstalledAddin::HelperCalls() const {
  std::vector<std::string> calls;
  for (const std::string& line : LinesOf(Helper().string() + ".noted"))
    if (const auto argument = line.find(" --"); argument != std::string::npos)
      calls.push_back(line.substr(argument + 1, line.find_last_not_of('\r') - argument));
  return calls;
}

BenchProcess::BenchProcess(const std::map<std::string, std::string>& environment) {
  int input[2], output[2];
  if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) throw std::runtime_error("no pipes");
  process_ = fork();
  if (process_ == 0) {
    setpgid(0, 0);
    dup2(input[0], STDIN_FILENO);
    dup2(output[1], STDOUT_FILENO);
    // Marks what this bench starts as its own.
    setenv("VEK_ENDTOEND", std::to_string(getppid()).c_str(), 1);
    for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
    const std::string script = std::string(VEK_SOURCE_DIR) + "/cmake/start_bench.sh";
    execl(script.c_str(), script.c_str(), nullptr);
    _exit(127);
  }
  close(input[0]);
  close(output[1]);
  input_ = input[1];
  output_ = output[0];
  LinesUntil("ready", kStartLimit);
}

BenchProcess::~BenchProcess() {
  try {
    Quit();
  } catch (const std::exception&) {
    kill(-process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  if (output_ >= 0) close(output_);
}

int BenchProcess::Quit() {
  if (process_ < 0) return 0;
  Write("quit\n");
  return EndInput();
}

int BenchProcess::EndInput() {
  close(input_);
  input_ = -1;
  // The end of the output comes with the end of the process; what is still printed has to be taken away.
  try {
    for (;;) ReadLine(kConsoleLimit);
  } catch (const std::runtime_error& end) {
    if (std::string(end.what()) != "end of output") throw;
  }
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::vector<std::string> BenchProcess::Console(const std::string& line) {
  Write(line + "\n");
  std::vector<std::string> answer;
  for (;;) {
    std::string next = ReadLine(kConsoleLimit);
    if (next == "ok") return answer;
    if (next.rfind("error:", 0) == 0) throw std::runtime_error(next);
    answer.push_back(std::move(next));
  }
}

std::vector<std::string> BenchProcess::LinesUntil(const std::string& text, std::chrono::milliseconds limit) {
  std::vector<std::string> lines;
  const auto end = std::chrono::steady_clock::now() + limit;
  for (;;) {
    const auto left = end - std::chrono::steady_clock::now();
    lines.push_back(ReadLine(std::chrono::duration_cast<std::chrono::milliseconds>(left)));
    if (lines.back().find(text) != std::string::npos) return lines;
  }
}

std::string BenchProcess::ReadLine(std::chrono::milliseconds limit) {
  for (;;) {
    if (const auto end = unread_.find('\n'); end != std::string::npos) {
      std::string line = unread_.substr(0, end);
      unread_.erase(0, end + 1);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      return line;
    }
    pollfd wait{output_, POLLIN, 0};
    if (limit.count() <= 0 || poll(&wait, 1, static_cast<int>(limit.count())) <= 0)
      throw std::runtime_error("the bench says nothing; the last was: " + unread_);
    char bytes[4096];
    const ssize_t count = read(output_, bytes, sizeof bytes);
    if (count <= 0) throw std::runtime_error("end of output");
    unread_.append(bytes, static_cast<std::size_t>(count));
  }
}

void BenchProcess::Write(const std::string& text) {
  if (write(input_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
    throw std::runtime_error("the bench takes no input");
}

}  // namespace vek::endtoend
