// Other programs, and where our own module lies.
#pragma once

#include <string>
#include <string_view>

namespace vek {

// The folder of the loaded module that holds `address`, without a trailing backslash; empty when there is
// none, or when its path takes 260 characters or more.
std::wstring ModuleDirectory(const void* address);

// A program, the text behind its name on the command line, and the folder that it starts in.
struct ProgramCall {
  std::wstring program;
  std::wstring arguments;
  std::wstring directory;
};

// Starts the program and blocks until it ends. False when it could not be started.
bool RunAndWait(const ProgramCall& call);

// Starts the program without a window and leaves it to itself. False when it could not be started.
bool RunDetached(const ProgramCall& call);

// Whether a program runs whose file name up to its first dot is `name`, without regard to case and folder.
bool IsProgramRunning(std::wstring_view name);

// Opens the program at `path` the way a double click does. False when that fails.
bool OpenProgram(const std::wstring& path);

// The same with a text as its parameters, which nothing quotes.
bool OpenProgram(const std::wstring& path, const std::wstring& parameters);

}  // namespace vek
