#include "bench/kernel/isolated.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

constexpr rlim_t kSeconds = 120;

struct Pipe {
  int from = -1, to = -1;

  Pipe() {
    int ends[2];
    if (pipe(ends) != 0) throw Refusal("There is no room for another process.");
    from = ends[0];
    to = ends[1];
  }
  ~Pipe() {
    close(from);
    CloseEntry();
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void CloseEntry() {
    if (to >= 0) close(to);
    to = -1;
  }
};

bool WriteAll(int to, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(to, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

std::string ReadAll(int from) {
  std::string bytes;
  std::array<char, 65536> chunk;
  for (;;) {
    const ssize_t count = read(from, chunk.data(), chunk.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return bytes;
    bytes.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

// The other process's whole life. It leaves without destructors and handlers, which are its parent's.
[[noreturn]] void Work(const std::function<json()>& work, int to) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const rlimit time{kSeconds, kSeconds};
  setrlimit(RLIMIT_CPU, &time);
  const rlimit no_dump{0, 0};
  setrlimit(RLIMIT_CORE, &no_dump);
  // A crash shall end it, rather than become an exception in the midst of what is broken already.
  for (const int crash : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) std::signal(crash, SIG_DFL);
  bool done = false;
  try {
    json answer;
    try {
      answer["ok"] = work();
    } catch (const Refusal& refusal) {
      answer["refused"] = refusal.what();
    }
    constexpr int kOneLine = -1;
    done = WriteAll(to, answer.dump(kOneLine, ' ', false, json::error_handler_t::replace));
  } catch (...) {
    // Its exit tells.
  }
  _exit(done ? 0 : 1);
}

bool EndedWell(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0)
    if (errno != EINTR) return false;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

json InIsolation(const std::function<json()>& work, const std::string& otherwise) {
  Pipe pipe;
  const pid_t process = fork();
  if (process < 0) throw Refusal("There is no room for another process.");
  if (process == 0) Work(work, pipe.to);
  pipe.CloseEntry();
  const std::string text = ReadAll(pipe.from);
  if (!EndedWell(process)) throw Refusal(otherwise);
  json answer = json::parse(text);
  if (answer.contains("refused")) throw Refusal(answer["refused"].get<std::string>());
  return std::move(answer["ok"]);
}

}  // namespace bench::kernel
