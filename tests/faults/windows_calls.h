// The Windows calls of addin/platform, counted and failed. The program links that folder's objects with each
// of these calls renamed, so that it goes through here; all other code of the process calls Windows itself.
// Any thread.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace vek::support {

// A call of that name, the nth since the last reset.
struct WindowsCall {
  std::string name;
  int nth = 0;
};

// Forgets the calls made and the one to be failed; what is out stays known.
void ResetWindowsCalls();

// The calls made that can fail and haven't by themselves, in their order.
std::vector<WindowsCall> WindowsCallsMade();

// That call fails, as the list has it.
void FailWindowsCall(const WindowsCall& call);
// Whether it has been made and failed.
bool WindowsCallFailed();

// For what stands in a call's place: counts it; whether it is the one to be failed.
bool IsToFail(const char* name);

// What the calls have given out and not got back, by kind.
std::map<std::string, int> OutstandingOfWindows();

}  // namespace vek::support
