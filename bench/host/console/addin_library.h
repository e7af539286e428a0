// An add-in's library, loaded into the host.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

namespace bench {

// The library or one of its entry points is missing, or the add-in refused to start.
class AddinFailure : public std::runtime_error {
 public:
  AddinFailure(const std::string& what, int exit_status)
      : std::runtime_error(what), exit_status(exit_status) {}
  int exit_status;
};

class AddinLibrary {
 public:
  // Throws AddinFailure when the library can't be loaded or lacks an entry point.
  explicit AddinLibrary(const std::wstring& path);

  // Calls the entry points, on the calling thread. Start throws AddinFailure when the add-in answers other
  // than 0.
  void Start();
  void Stop();

 private:
  using Initialize = int (*)(int argc, char** argv, char* version, char* build, wchar_t* errbuf);
  using Terminate = void (*)();

  Initialize initialize_;
  Terminate terminate_;
};

}  // namespace bench
