// Notes with what it was started, one line a start, in sessions.log of the bench's home, and ends.
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <string>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR parameters, int) {
  const char* home = std::getenv("CREO_BENCH_HOME");
  std::ofstream log(home ? std::string(home) + "\\sessions.log" : "sessions.log",
                    std::ios::binary | std::ios::app);
  log << parameters << '\n';
  return log.flush() ? 0 : 1;
}
