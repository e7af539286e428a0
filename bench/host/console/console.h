// The console: commands of one line each, answers in lines that end with `ok` or with `error: …`.
#pragma once

#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

// What makes an answer end with `error: ` and this text.
class ConsoleError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using ConsoleWords = std::span<const std::string>;
using ConsoleSay = std::function<void(const std::string& line)>;

struct ConsoleCommand {
  const char* usage;  // begins with the command's name
  const char* does;
  void (*run)(ConsoleWords arguments, const ConsoleSay& say);
  std::size_t least = 0;  // how many arguments it takes
  std::size_t most = 0;
};

// Those that show and change models: models, tree, faces, units.
std::span<const ConsoleCommand> ModelCommands();

// Those that do what a user does: select, pick, answer, menus, command, popup.
std::span<const ConsoleCommand> UserCommands();

// Draws the sheet at hand of the current drawing into a file.
void PlotCurrentDrawing(ConsoleWords arguments, const ConsoleSay& say);

// Tells how many handles and threads the process has, and how much memory.
void ShowResources(ConsoleWords arguments, const ConsoleSay& say);

class Console {
 public:
  explicit Console(ConsoleSay say) : say_(std::move(say)) {}

  // Whether the line is a command that a macro may give: one of those on models.
  static bool IsForMacros(const std::string& line);

  // Runs one line and says its answer; false when the line asks the host to end.
  bool Run(const std::string& line);

 private:
  ConsoleSay say_;
};

}  // namespace bench
