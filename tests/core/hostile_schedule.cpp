#include "tests/core/hostile_schedule.h"

#include <pthread.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>

namespace vek::support {
namespace {

// Both are read and written without order: the schedule may give threads no view of one another that the
// product doesn't give them, or races would go unseen.
constexpr auto kUnordered = std::memory_order_relaxed;

// 0 while no schedule is in force.
std::atomic<std::uint32_t> roundSeed{0};
std::atomic<std::uint32_t> nextThread{0};

// Small and without locks: it runs within lock and unlock.
struct Generator {
  std::uint32_t seed = 0;
  std::uint32_t state = 0;

  std::uint32_t Next() {
    state ^= state << 13;
    state ^= state >> 17;
    return state ^= state << 5;
  }
};
thread_local Generator generator;

std::uint32_t Mixed(std::uint32_t a, std::uint32_t b) {
  std::uint32_t mixed = (a + 0x9E3779B9u) ^ (b * 0x85EBCA6Bu);
  mixed = (mixed ^ (mixed >> 15)) * 0xC2B2AE35u;
  mixed ^= mixed >> 13;
  return mixed != 0 ? mixed : 1;
}

// The calling thread's generator for the present round; null while there is none.
Generator* TheGenerator() {
  const std::uint32_t seed = roundSeed.load(kUnordered);
  if (seed == 0) return nullptr;
  if (generator.seed != seed) generator = {seed, Mixed(seed, nextThread.fetch_add(1, kUnordered))};
  return &generator;
}

void HoldUp(std::chrono::nanoseconds span) {
  const auto end = std::chrono::steady_clock::now() + span;
  while (std::chrono::steady_clock::now() < end) continue;
}

std::uint32_t NumberFrom(const char* variable, std::uint32_t otherwise) {
  const char* const text = std::getenv(variable);
  return text != nullptr ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

}  // namespace

int ScheduledRounds(int rounds) {
  return rounds * static_cast<int>(NumberFrom("VEK_SCHEDULE_TIMES", 1));
}

std::uint32_t ScheduleSeed() {
  static const std::uint32_t seed = [] {
    const std::uint32_t chosen = NumberFrom("VEK_SCHEDULE_SEED", std::random_device()());
    std::printf("VEK_SCHEDULE_SEED=%u\n", chosen);
    return chosen;
  }();
  return seed;
}

HostileSchedule::HostileSchedule(int round) : round_(round) {
  nextThread.store(0, kUnordered);
  roundSeed.store(Mixed(ScheduleSeed(), static_cast<std::uint32_t>(round)), kUnordered);
}

HostileSchedule::~HostileSchedule() {
  roundSeed.store(0, kUnordered);
}

std::string HostileSchedule::Name() const {
  return "VEK_SCHEDULE_SEED=" + std::to_string(ScheduleSeed()) + ", round " + std::to_string(round_);
}

void MeetingPoint() {
  Generator* const drawing = TheGenerator();
  if (!drawing) return;
  const std::uint32_t drawn = drawing->Next(), way = drawn % 16;
  if (way < 3) return std::this_thread::yield();
  if (way < 5) return HoldUp(std::chrono::nanoseconds(drawn >> 17));                        // up to 33 µs
  if (way < 6) return std::this_thread::sleep_for(std::chrono::microseconds(drawn >> 24));  // up to 255 µs
}

unsigned Drawn(unsigned limit) {
  Generator* const drawing = TheGenerator();
  return drawing ? drawing->Next() % limit : 0;
}

}  // namespace vek::support

extern "C" {
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __real_pthread_mutex_unlock(pthread_mutex_t* mutex);

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
  vek::support::MeetingPoint();
  return __real_pthread_mutex_lock(mutex);
}

int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex) {
  // Held up before and behind: who waits for the lock gets it late, who doesn't gets in between.
  vek::support::MeetingPoint();
  const int status = __real_pthread_mutex_unlock(mutex);
  vek::support::MeetingPoint();
  return status;
}
}
