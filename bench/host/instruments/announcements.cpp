#include "bench/host/instruments/announcements.h"

namespace bench {

void Announcements::Say(const std::string& line) {
  lines_.push_back(line);
  if (lines_.size() > kCapacity) lines_.pop_front();
  if (sink_) sink_(line);
}

}  // namespace bench
