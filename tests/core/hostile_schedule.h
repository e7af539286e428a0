// A schedule that wants threads to meet where it hurts: at each lock and unlock, at each call on a socket and
// wherever a test asks for it, a thread goes on at once, gives way, or is held up, as a seeded generator
// says.
//
// The program is linked so that its calls of pthread_mutex_lock and pthread_mutex_unlock come through here,
// and with them those of the product's own locks.
#pragma once

#include <cstdint>
#include <string>

namespace vek::support {

// How many rounds a test makes, VEK_SCHEDULE_TIMES times as many as `rounds` when that is set.
int ScheduledRounds(int rounds);

// The seed of this run: VEK_SCHEDULE_SEED, or a new one, which is printed.
std::uint32_t ScheduleSeed();

// A round's own schedule, made of the run's seed and the round. Each thread draws from a generator of its
// own. One at a time.
class HostileSchedule {
 public:
  explicit HostileSchedule(int round);
  ~HostileSchedule();
  HostileSchedule(const HostileSchedule&) = delete;
  HostileSchedule& operator=(const HostileSchedule&) = delete;

  // What a failure is to be told with.
  std::string Name() const;

 private:
  const int round_;
};

// A place where threads meet.
void MeetingPoint();

// A number below `limit` from the calling thread's generator.
unsigned Drawn(unsigned limit);

}  // namespace vek::support
