#include "bench/host/console/program.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/host/console/addin_library.h"
#include "bench/host/console/console.h"
#include "bench/host/console/input_lines.h"
#include "bench/host/host.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/text.h"
#include "bench/running_mark.h"

namespace bench {
namespace {

constexpr int kExitBadArguments = 1;
constexpr const char* kUsage = "usage: creobench.exe --addin PATH.dll --kernel PATH --work DIR [--serve]";

struct Options {
  std::wstring addin;
  std::wstring kernel;
  std::wstring work;
  bool serve = false;
};

class BadArguments : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

Options ReadOptions(int argc, wchar_t** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::wstring_view option = argv[i];
    if (option == L"--serve") {
      options.serve = true;
      continue;
    }
    std::wstring* const value = option == L"--addin"    ? &options.addin
                                : option == L"--kernel" ? &options.kernel
                                : option == L"--work"   ? &options.work
                                                        : nullptr;
    if (!value) throw BadArguments("there is no option " + ToUtf8(option) + "\n" + kUsage);
    if (++i == argc) throw BadArguments("the option " + ToUtf8(option) + " needs a value\n" + kUsage);
    *value = argv[i];
  }
  if (options.addin.empty() || options.kernel.empty() || options.work.empty()) throw BadArguments(kUsage);
  return options;
}

void Print(const std::string& line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

std::wstring FullPath(const std::wstring& path) {
  wchar_t full[MAX_PATH];
  const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr);
  return length > 0 && length < MAX_PATH ? std::wstring(full, length) : path;
}

void EnterWorkingDirectory(const std::wstring& directory) {
  if (!DirectoryExists(directory)) CreateDirectoryW(directory.c_str(), nullptr);
  if (!SetCurrentDirectoryW(directory.c_str()))
    throw BadArguments("the working directory " + ToUtf8(directory) + " can't be entered");
}

// Fires timers and runs commands as they come; between the two it sleeps.
void RunLoop(InputLines& input, Console& console) {
  UserInterface& ui = TheHost().ui;
  for (;;) {
    for (const std::string& line : input.Take())
      if (!console.Run(line)) return;
    if (input.Ended()) return;
    ui.FireDue(UserInterface::Clock::now());
    input.Wait(ui.NextDue());
  }
}

// What other programs of the bench see of this one for as long as it runs.
class RunningMark {
 public:
  RunningMark() : mutex_(CreateMutexW(nullptr, FALSE, kRunningMark)) {}
  ~RunningMark() {
    if (mutex_) CloseHandle(mutex_);
  }
  RunningMark(const RunningMark&) = delete;
  RunningMark& operator=(const RunningMark&) = delete;

 private:
  HANDLE mutex_;
};

void Run(const Options& options) {
  const RunningMark mark;
  Host& host = TheHost();
  host.Reset();
  host.announcements.SetSink(Print);
  host.kernel.SetProgram(options.kernel);
  const std::wstring addin_path = FullPath(options.addin);
  EnterWorkingDirectory(options.work);

  AddinLibrary addin(addin_path);
  addin.Start();
  Print("creobench is ready, working in " + ToUtf8(WorkingDirectory()));
  if (options.serve) Print("one command a line; help lists them");

  host.restart_addin = [&addin] {
    addin.Stop();
    addin.Start();
  };
  InputLines input;
  Console console(Print);
  RunLoop(input, console);
  host.restart_addin = nullptr;
  addin.Stop();
  host.kernel.Stop();
}

}  // namespace
}  // namespace bench

int BenchMain(int argc, wchar_t** argv) {
  using namespace bench;
  // Lines end as they do for the scripts on the other side, whatever the platform's way.
  _setmode(_fileno(stdout), _O_BINARY);
  try {
    Run(ReadOptions(argc, argv));
    return 0;
  } catch (const AddinFailure& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return failure.exit_status;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return kExitBadArguments;
  }
}
