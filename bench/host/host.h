// The host as one object: what the toolkit calls work on.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <thread>

#include "bench/host/instruments/announcements.h"
#include "bench/host/instruments/fault_plan.h"
#include "bench/host/instruments/journal.h"
#include "bench/host/instruments/ledger.h"
#include "bench/host/kernel_link/kernel_client.h"
#include "bench/host/menus.h"
#include "bench/host/picks.h"
#include "bench/host/session.h"
#include "bench/host/user_interface.h"
#include "bench/host/window_list.h"

namespace bench {

struct Host {
  Ledger ledger;
  Journal journal;
  FaultPlan faults;
  Session session;
  WindowList windows;
  UserInterface ui;
  Menus menus;
  Picks picks;
  Announcements announcements;
  KernelClient kernel;
  std::deque<std::string> macros;  // commands that a macro has queued

  // Stops the add-in and starts it again, on the main thread; empty without an add-in.
  std::function<void()> restart_addin;

  // An empty session with nothing given out, nothing scripted and nothing recorded; the thread that calls it
  // is the main one from now on. The working directory and the kernel stay as they are.
  void Reset();

  // The model of the active window, or null.
  Model* CurrentModel() { return windows.CurrentModel(); }

  // Whether the calling thread is the one on which calls may be made.
  bool OnMainThread() const;

 private:
  friend Host& TheHost();
  Host();
  std::thread::id main_thread_;
};

// The one host of the process. The thread that asks first is the main one.
Host& TheHost();

// A line `complaint: …` on the console: what went wrong in the host's own surroundings (disk, kernel, files).
void Complain(const std::string& what);

}  // namespace bench
