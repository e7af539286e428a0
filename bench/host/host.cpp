#include "bench/host/host.h"

namespace bench {

Host::Host() : main_thread_(std::this_thread::get_id()) {}

bool Host::OnMainThread() const {
  return std::this_thread::get_id() == main_thread_;
}

void Host::Reset() {
  main_thread_ = std::this_thread::get_id();
  ledger.Clear();
  journal.Clear();
  faults.Clear();
  windows.Clear();
  session.Clear();
  ui.Clear();
  menus = {};
  picks.Clear();
  announcements.Clear();
  macros.clear();
}

Host& TheHost() {
  // Never destroyed: threads of the add-in may still call in while the process ends.
  static Host& host = *new Host;
  return host;
}

void Complain(const std::string& what) {
  TheHost().announcements.Complain(what);
}

}  // namespace bench
