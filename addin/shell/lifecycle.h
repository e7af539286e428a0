// The life of the add-in inside the host: its start, its timer and its stop. All of it on the host's main
// thread.
#pragma once

#include <ProUI.h>

// Called when the host has loaded the add-in. Gives back 0 in every case: what fails on the way is logged at
// most, and the add-in goes on without it.
extern "C" int AddinInitialize(int argc, char** argv, char* version, char* build, wchar_t* errbuf);

// Called before the host unloads the add-in. Blocks until a batch in flight has been given up and the helper
// has installed a pending update.
extern "C" void AddinTerminate();

namespace vek {

// The timer's action: the work, and only then the timer once more, so that ticks never overlap.
void TimerTick(char* dialog, ProUITimer timer, ProAppData data);

// The work of one tick.
void PollTick();

}  // namespace vek
