// Clients that mean harm or are broken, in waves of one kind each. A wave gives the honest client's turn to
// `honest` while its own clients are still connected, and then checks what they were answered.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <random>
#include <span>

namespace vek::soak {

using Random = std::mt19937;

struct Wave {
  const char* name;
  void (*run)(Random& random, const std::function<void()>& honest);
  // What the server's own limits allow the honest request to wait: two seconds for each client in
  // front of it that sends less than a whole request, and some for a busy machine.
  std::chrono::milliseconds allowed;
};

std::span<const Wave> Waves();

}  // namespace vek::soak
