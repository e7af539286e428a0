// The host as a program.
#pragma once

#include <ProToolkit.h>

// creobench.exe --addin PATH.dll --kernel PATH --work DIR [--serve]
//
// Loads the add-in, starts it, and runs the main loop until the console is told to quit or standard input
// ends; then stops the add-in. With --serve it greets its user. Exit status: 0; 1 for arguments or a working
// directory that make no sense; 2 for an add-in that can't be loaded; 3 for one that refused to start.
PRO_TOOLKIT_CALL int BenchMain(int argc, wchar_t** argv);
